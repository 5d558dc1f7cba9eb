#include "picture/PictureHead.h"

#include <algorithm>
#include <utility>

namespace picture {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kExif = "Exif\0\0"sv;

Size Turned(Size size, unsigned orientation) {
    constexpr unsigned kFirstOnItsSide = 5;
    return orientation >= kFirstOnItsSide ? Size{size.height, size.width} : size;
}

/// Of the segments that begin a JPEG's pixels, and tell how many there are.
bool IsFrame(unsigned char marker) {
    constexpr unsigned kKinds = 0xc0;
    return (marker & 0xf0U) == kKinds && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

std::optional<Size> SizeOfJpeg(const Read& read) {
    constexpr std::size_t kHead = 9;
    constexpr unsigned kMostSegments = 1000;
    constexpr unsigned char kFilling = 0xff;
    constexpr unsigned char kScan = 0xda;
    constexpr unsigned char kCamera = 0xe1;
    unsigned orientation = 1;
    std::size_t place = 2;
    for (unsigned segment = 0; segment < kMostSegments; ++segment) {
        const std::string head = read(place, kHead);
        if (head.size() < kHead || head[0] != '\xff')
            return std::nullopt;
        const auto marker = static_cast<unsigned char>(head[1]);
        const std::size_t size = Number(head, 2, 2);
        if (marker == kFilling) {
            ++place;
            continue;
        }
        if (marker == kScan || size < 2)
            return std::nullopt;
        if (IsFrame(marker))
            return Turned({Number(head, 7, 2), Number(head, 5, 2)}, orientation);
        if (marker == kCamera && orientation == 1)
            orientation = OrientationIn(read(place + 4, size - 2));
        place += 2 + size;
    }
    return std::nullopt;
}

std::optional<Size> SizeOfWebP(std::string_view head) {
    constexpr std::uint32_t kFourteenBits = 0x3fff;
    const std::string_view kind = head.substr(12, 4);
    if (kind == "VP8X"sv)
        return Size{Number(head, 24, 3, false) + 1, Number(head, 27, 3, false) + 1};
    if (kind == "VP8 "sv)
        return Size{Number(head, 26, 2, false) & kFourteenBits, Number(head, 28, 2, false) & kFourteenBits};
    if (kind != "VP8L"sv)
        return std::nullopt;
    const std::uint32_t sides = Number(head, 21, 4, false);
    return Size{(sides & kFourteenBits) + 1, (sides >> 14U & kFourteenBits) + 1};
}

} // namespace

std::uint32_t Number(std::string_view text, std::size_t place, std::size_t bytes, bool isBigEndian) noexcept {
    std::uint32_t number = 0;
    for (std::size_t index = 0; index < bytes && place + index < text.size(); ++index) {
        const std::uint32_t byte = static_cast<unsigned char>(text[place + index]);
        number = isBigEndian ? number << 8U | byte : number | byte << (8 * index);
    }
    return number;
}

Type TypeOf(std::string_view content) noexcept {
    if (content.substr(0, 8) == "\x89PNG\r\n\x1a\n"sv)
        return Type::Png;
    if (content.substr(0, 3) == "\xff\xd8\xff"sv)
        return Type::Jpeg;
    if (content.substr(0, 6) == "GIF87a"sv || content.substr(0, 6) == "GIF89a"sv)
        return Type::Gif;
    const bool isWebP =
        content.substr(0, 4) == "RIFF"sv && content.size() >= 12 && content.substr(8, 4) == "WEBP"sv;
    return isWebP ? Type::WebP : Type::None;
}

std::string_view MediaTypeOf(Type type) noexcept {
    constexpr std::string_view kTypes[] = {"", "image/png", "image/jpeg", "image/gif", "image/webp"};
    return kTypes[static_cast<std::size_t>(type)];
}

unsigned OrientationIn(std::string_view exif) {
    constexpr std::size_t kEntry = 12;
    constexpr std::uint32_t kOrientation = 0x0112;
    // JPEG puts a name in front of it; PNG and WebP do not, though not every program knows that.
    const std::string_view tiff = exif.substr(exif.substr(0, kExif.size()) == kExif ? kExif.size() : 0);
    const bool isBig = tiff.substr(0, 2) == "MM"sv;
    if (!isBig && tiff.substr(0, 2) != "II"sv)
        return 1;
    const std::size_t directory = Number(tiff, 4, 4, isBig);
    const std::size_t count = Number(tiff, directory, 2, isBig);
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t entry = directory + 2 + index * kEntry;
        if (entry + kEntry > tiff.size())
            break;
        if (Number(tiff, entry, 2, isBig) == kOrientation)
            return std::clamp(Number(tiff, entry + 8, 2, isBig), 1U, 8U);
    }
    return 1;
}

std::optional<Size> SizeOf(const Read& read) {
    constexpr std::size_t kHead = 30;
    constexpr std::size_t kGifHead = 10;
    constexpr std::size_t kPngHead = 24;
    const std::string head = read(0, kHead);
    switch (TypeOf(head)) {
    case Type::Jpeg:
        return SizeOfJpeg(read);
    case Type::Png:
        return head.size() < kPngHead ? std::nullopt
                                      : std::optional(Size{Number(head, 16, 4), Number(head, 20, 4)});
    case Type::Gif:
        return head.size() < kGifHead
                   ? std::nullopt
                   : std::optional(Size{Number(head, 6, 2, false), Number(head, 8, 2, false)});
    case Type::WebP:
        return head.size() < kHead ? std::nullopt : SizeOfWebP(head);
    case Type::None:
        break;
    }
    return std::nullopt;
}

std::optional<Size> SizeOf(std::string_view content) {
    return SizeOf([content](std::size_t place, std::size_t count) {
        return std::string(content.substr(std::min(place, content.size()), count));
    });
}

} // namespace picture
