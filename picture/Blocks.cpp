#include "picture/Blocks.h"

#include <algorithm>

namespace picture {

namespace {

using namespace std::string_view_literals;

using Blocks = std::optional<std::vector<Block>>;

/// The byte, as a text of its own.
std::string_view At(std::string_view text, std::size_t place) {
    return text.substr(place, 1);
}

/// Where the next marker stands behind what a scan holds; the end when there is none.
std::size_t EndOfScan(std::string_view text, std::size_t place) {
    for (place = text.find('\xff', place); place + 1 < text.size(); place = text.find('\xff', place + 1)) {
        const auto next = static_cast<unsigned char>(text[place + 1]);
        const bool isWithin = next == 0 || next == 0xff || (next >= 0xd0 && next <= 0xd7);
        if (!isWithin)
            return place;
    }
    return text.size();
}

Blocks BlocksOfJpeg(std::string_view text) {
    std::vector<Block> blocks{{"head", {}, text.substr(0, 2)}};
    std::size_t place = 2;
    while (place + 1 < text.size() && text[place] == '\xff') {
        const std::string_view marker = At(text, place + 1);
        if (marker == "\xff"sv) { // it may be filled up with any number of them
            ++place;
            continue;
        }
        if (marker == "\xd9"sv) {
            blocks.push_back({marker, {}, text.substr(place, 2)});
            return blocks;
        }
        const std::size_t size = Number(text, place + 2, 2);
        std::size_t end = place + 2 + size;
        if (size < 2 || end > text.size())
            return std::nullopt;
        const std::string_view body = text.substr(place + 4, size - 2);
        if (marker == "\xda"sv)
            end = EndOfScan(text, end);
        blocks.push_back({marker, body, text.substr(place, end - place)});
        place = end;
    }
    return std::nullopt;
}

Blocks BlocksOfPng(std::string_view text) {
    constexpr std::size_t kSignature = 8;
    constexpr std::size_t kAround = 12; // length, name, checksum
    std::vector<Block> blocks{{"head", {}, text.substr(0, kSignature)}};
    for (std::size_t place = kSignature; place + kAround <= text.size();) {
        const std::size_t size = Number(text, place, 4);
        if (size > text.size() - place - kAround)
            return std::nullopt;
        blocks.push_back(
            {text.substr(place + 4, 4), text.substr(place + 8, size), text.substr(place, size + kAround)});
        if (blocks.back().kind == "IEND"sv)
            return blocks;
        place += size + kAround;
    }
    return std::nullopt;
}

Blocks BlocksOfWebP(std::string_view text) {
    constexpr std::size_t kHead = 12;
    constexpr std::size_t kAround = 8; // name, length
    const std::size_t end = Number(text, 4, 4, false) + kAround;
    if (end > text.size())
        return std::nullopt;
    std::vector<Block> blocks{{"head", {}, text.substr(0, kHead)}};
    for (std::size_t place = kHead; place + kAround <= end;) {
        const std::size_t size = Number(text, place + 4, 4, false);
        if (size > end - place - kAround)
            return std::nullopt;
        const std::size_t whole = std::min(kAround + size + size % 2, end - place);
        blocks.push_back(
            {text.substr(place, 4), text.substr(place + kAround, size), text.substr(place, whole)});
        place += whole;
    }
    return blocks;
}

/// Behind the pieces of data of a GIF, the last of which is empty; behind the end when they are cut short.
std::size_t EndOfData(std::string_view text, std::size_t place) {
    while (place < text.size() && text[place] != '\0')
        place += 1 + Number(text, place, 1);
    return place + 1;
}

std::size_t BytesOfColours(std::string_view text, std::size_t flags) {
    constexpr std::uint32_t kHasColours = 0x80;
    const std::uint32_t bits = Number(text, flags, 1);
    return (bits & kHasColours) != 0 ? std::size_t{3} << ((bits & 7U) + 1) : 0;
}

Blocks BlocksOfGif(std::string_view text) {
    constexpr std::size_t kHead = 13;
    constexpr std::size_t kImageHead = 10;
    std::size_t place = kHead + BytesOfColours(text, 10);
    if (place > text.size())
        return std::nullopt;
    std::vector<Block> blocks{{"head", {}, text.substr(0, place)}};
    while (place + 1 < text.size() && (text[place] == '!' || text[place] == ',')) {
        const bool isImage = text[place] == ',';
        const std::size_t head =
            isImage ? kImageHead + BytesOfColours(text, place + 9) + 1 : 2; // with how its data begin
        const std::size_t end = EndOfData(text, place + head);
        if (end > text.size())
            return std::nullopt;
        blocks.push_back({At(text, isImage ? place : place + 1),
                          text.substr(place + (isImage ? 1 : 2), end - place - (isImage ? 1 : 2)),
                          text.substr(place, end - place)});
        place = end;
    }
    // Many programs leave out the byte that ends it.
    if (place < text.size() && text[place] != ';')
        return std::nullopt;
    blocks.push_back({";", {}, ";"});
    return blocks;
}

std::string_view BodyOf(const std::vector<Block>& blocks, std::string_view kind) {
    const auto place =
        std::find_if(blocks.begin(), blocks.end(), [kind](const Block& one) { return one.kind == kind; });
    return place != blocks.end() ? place->body : std::string_view();
}

} // namespace

std::optional<std::vector<Block>> BlocksOf(Type type, std::string_view content) {
    switch (type) {
    case Type::Jpeg:
        return BlocksOfJpeg(content);
    case Type::Png:
        return BlocksOfPng(content);
    case Type::WebP:
        return BlocksOfWebP(content);
    case Type::Gif:
        return BlocksOfGif(content);
    case Type::None:
        break;
    }
    return std::nullopt;
}

unsigned OrientationOf(Type type, const std::vector<Block>& blocks) {
    if (type != Type::Jpeg)
        return OrientationIn(BodyOf(blocks, type == Type::Png ? "eXIf"sv : "EXIF"sv));
    unsigned orientation = 1;
    for (const Block& block : blocks)
        if (block.kind == "\xe1"sv && orientation == 1)
            orientation = OrientationIn(block.body);
    return orientation;
}

bool IsAnimated(Type type, const std::vector<Block>& blocks) {
    const std::string_view kind = type == Type::Png ? "acTL"sv : type == Type::Gif ? ","sv : "ANMF"sv;
    const auto count =
        std::count_if(blocks.begin(), blocks.end(), [kind](const Block& one) { return one.kind == kind; });
    return count > (type == Type::Gif ? 1 : 0);
}

} // namespace picture
