#include "convert/Lzw.h"
#include "convert/PictureFormats.h"
#include "convert/Report.h"
#include "convert/Shrinker.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace picture_formats {

namespace {

using namespace std::string_view_literals;
using picture::Number;

constexpr std::size_t kColour = 3;

[[noreturn]] void RefuseGif() {
    throw report::Refusal(report::kDamaged, "is damaged: it holds no whole picture");
}

/// Colours that stand behind their flags; none when the flags say so.
std::string_view ColoursIn(std::string_view text, std::size_t flags, std::size_t place) {
    const std::uint32_t bits = Number(text, flags, 1);
    const std::size_t count = (bits & 0x80U) != 0 ? std::size_t{2} << (bits & 7U) : 0;
    return text.substr(std::min(place, text.size()), count * kColour);
}

/// What stands in the first picture of a file, and how.
struct GifImage {
    picture::Size at;
    picture::Size size;
    bool isInterlaced = false;
    std::string_view colours;
    std::optional<std::uint32_t> clear; ///< the colour that is none
    unsigned bits = 0;
    std::string_view pieces;
};

GifImage ImageIn(const std::vector<picture::Block>& blocks) {
    constexpr std::size_t kHead = 9;
    GifImage image;
    for (const picture::Block& block : blocks) {
        if (block.kind == "\xf9"sv && (Number(block.body, 1, 1) & 1U) != 0)
            image.clear = Number(block.body, 4, 1);
        if (block.kind != ","sv)
            continue;
        const std::string_view body = block.body;
        image.at = {Number(body, 0, 2, false), Number(body, 2, 2, false)};
        image.size = {Number(body, 4, 2, false), Number(body, 6, 2, false)};
        image.isInterlaced = (Number(body, 8, 1) & 0x40U) != 0;
        const std::string_view own = ColoursIn(body, 8, kHead);
        image.colours = own.empty() ? ColoursIn(blocks.front().whole, 10, 13) : own;
        image.bits = Number(body, kHead + own.size(), 1);
        image.pieces = body.substr(std::min(kHead + own.size() + 1, body.size()));
        return image;
    }
    RefuseGif();
}

/// The pieces without their lengths.
std::string Joined(std::string_view pieces) {
    std::string data;
    for (std::size_t place = 0; place < pieces.size() && pieces[place] != '\0';) {
        const std::size_t size = Number(pieces, place, 1);
        data += pieces.substr(place + 1, size);
        place += 1 + size;
    }
    return data;
}

/// Where the lines stand, in the order in which they come.
std::vector<std::uint32_t> LinesOf(const GifImage& image) {
    std::vector<std::uint32_t> lines;
    lines.reserve(image.size.height);
    const auto add = [&](std::uint32_t first, std::uint32_t step) {
        for (std::uint32_t line = first; line < image.size.height; line += step)
            lines.push_back(line);
    };
    if (!image.isInterlaced) {
        add(0, 1);
        return lines;
    }
    add(0, 8);
    add(4, 8);
    add(2, 4);
    add(1, 2);
    return lines;
}

void Paint(const GifImage& image, const std::uint8_t* points, std::uint8_t* line) {
    for (std::uint32_t x = 0; x < image.size.width; ++x, line += Pixels::kBytes) {
        const std::size_t colour = points[x] * kColour;
        if (image.clear == points[x] || colour + kColour > image.colours.size())
            continue;
        std::memcpy(line, image.colours.data() + colour, kColour);
        line[kColour] = 255;
    }
}

} // namespace

Pixels ReadGif(const std::vector<picture::Block>& blocks, std::uint32_t most) {
    const std::string_view head = blocks.front().whole;
    const GifImage image = ImageIn(blocks);
    Pixels whole({Number(head, 6, 2, false), Number(head, 8, 2, false)});
    const bool isWithin = image.size.width > 0 && image.size.height > 0 &&
                          image.at.width + image.size.width <= whole.size.width &&
                          image.at.height + image.size.height <= whole.size.height;
    if (!isWithin)
        RefuseGif();
    const std::vector<std::uint8_t> points =
        UnpackLzw(Joined(image.pieces), image.bits, std::size_t{image.size.width} * image.size.height);
    const std::uint8_t* from = points.data();
    for (const std::uint32_t line : LinesOf(image)) {
        Paint(image, from, whole.Line(image.at.height + line) + image.at.width * Pixels::kBytes);
        from += image.size.width;
    }
    const picture::Size to = Within(whole.size, most);
    return Shrunk(std::move(whole), to);
}

} // namespace picture_formats
