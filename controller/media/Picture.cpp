#include "controller/media/Picture.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace controller::picture {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kPng = "\x89PNG\r\n\x1a\n"sv;

std::uint32_t Number(std::string_view text, std::size_t place, std::size_t bytes, bool isBigEndian = true) {
    std::uint32_t number = 0;
    for (std::size_t index = 0; index < bytes && place + index < text.size(); ++index) {
        const std::uint32_t byte = static_cast<unsigned char>(text[place + index]);
        number = isBigEndian ? number << 8U | byte : number | byte << (8 * index);
    }
    return number;
}

/// 1 to 8, as the camera was held; 1 where that is not told.
std::uint32_t OrientationIn(std::string_view exif) {
    constexpr std::size_t kHead = 6;
    constexpr std::size_t kEntry = 12;
    constexpr std::uint32_t kOrientation = 0x0112;
    if (exif.substr(0, kHead) != "Exif\0\0"sv || exif.size() < kHead + 10)
        return 1;
    const std::string_view tiff = exif.substr(kHead);
    const bool isBig = tiff.substr(0, 2) == "MM"sv;
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

/// A segment that says nothing but how the camera was held.
std::string ExifOf(std::uint32_t orientation) {
    std::string segment("\xff\xe1\0\x22"
                        "Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\0\0\0\0\0\0\0"sv);
    segment[29] = static_cast<char>(orientation);
    return segment;
}

/// Of what applications put into a JPEG: the file's own head, colour profiles, and how its colours are coded.
bool IsKept(unsigned char marker) {
    constexpr unsigned kFirst = 0xe0;
    constexpr unsigned kLast = 0xef;
    constexpr unsigned kComment = 0xfe;
    const bool isOfApplications = marker >= kFirst && marker <= kLast;
    return marker != kComment && (!isOfApplications || marker == 0xe0 || marker == 0xe2 || marker == 0xee);
}

std::string CleanJpeg(const std::string& content) {
    constexpr unsigned char kScan = 0xda;
    constexpr unsigned char kCamera = 0xe1;
    const std::string_view text = content;
    std::string segments;
    std::uint32_t orientation = 1;
    std::size_t place = 2;
    for (;;) {
        const std::size_t size = Number(text, place + 2, 2);
        if (place + 4 > text.size() || text[place] != '\xff' || size < 2 || place + 2 + size > text.size())
            return content;
        const auto marker = static_cast<unsigned char>(text[place + 1]);
        if (marker == kScan)
            break;
        if (IsKept(marker))
            segments += text.substr(place, 2 + size);
        if (marker == kCamera && orientation == 1)
            orientation = OrientationIn(text.substr(place + 4, size - 2));
        place += 2 + size;
    }
    return content.substr(0, 2) + (orientation != 1 ? ExifOf(orientation) : "") + segments +
           content.substr(place);
}

std::string CleanPng(const std::string& content) {
    constexpr std::array<std::string_view, 5> kPrivate{"eXIf", "tEXt", "iTXt", "zTXt", "tIME"};
    constexpr std::size_t kAround = 12; // length, name, checksum
    const std::string_view text = content;
    std::string clean(kPng);
    for (std::size_t place = kPng.size(); place < text.size();) {
        const std::size_t size = std::size_t{Number(text, place, 4)} + kAround;
        if (size > text.size() - place)
            return content;
        if (std::find(kPrivate.begin(), kPrivate.end(), text.substr(place + 4, 4)) == kPrivate.end())
            clean += text.substr(place, size);
        place += size;
    }
    return clean;
}

} // namespace

std::optional<Size> SizeOf(std::string_view content) {
    constexpr std::size_t kPngHead = 24;
    constexpr std::size_t kGifHead = 10;
    if (content.substr(0, kPng.size()) == kPng && content.size() >= kPngHead)
        return Size{Number(content, 16, 4), Number(content, 20, 4)};
    if (content.substr(0, 4) == "GIF8"sv && content.size() >= kGifHead)
        return Size{Number(content, 6, 2, false), Number(content, 8, 2, false)};
    return std::nullopt;
}

std::string WithoutPrivateData(const std::string& content) {
    if (std::string_view(content).substr(0, 3) == "\xff\xd8\xff"sv)
        return CleanJpeg(content);
    if (std::string_view(content).substr(0, kPng.size()) == kPng)
        return CleanPng(content);
    return content;
}

} // namespace controller::picture
