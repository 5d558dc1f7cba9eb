#include "picture/PrivateData.h"

#include <algorithm>
#include <array>

namespace picture {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kProfile = "ICC_PROFILE\0"sv;

bool BeginsWith(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

template <std::size_t Count>
bool IsAmong(std::string_view kind, const std::array<std::string_view, Count>& kinds) {
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

/// Of what applications put into a JPEG: its own head, colour profiles, and how its colours are coded.
bool IsShownOfJpeg(const Block& block) {
    const auto marker = static_cast<unsigned char>(block.kind.front());
    if (marker == 0xfe)
        return false;
    const bool isOfApplications = marker >= 0xe0 && marker <= 0xef;
    return !isOfApplications || (marker == 0xe0 && BeginsWith(block.body, "JFIF\0"sv)) ||
           (marker == 0xe2 && BeginsWith(block.body, kProfile)) ||
           (marker == 0xee && BeginsWith(block.body, "Adobe"sv));
}

bool IsShownOfPng(const Block& block) {
    constexpr std::array kShown{"IHDR"sv, "PLTE"sv, "IDAT"sv, "IEND"sv, "tRNS"sv,
                                "gAMA"sv, "cHRM"sv, "sRGB"sv, "iCCP"sv, "sBIT"sv,
                                "bKGD"sv, "pHYs"sv, "acTL"sv, "fcTL"sv, "fdAT"sv};
    return IsAmong(block.kind, kShown);
}

bool IsShownOfGif(const Block& block) {
    constexpr std::string_view kControl = "\xf9"sv;
    constexpr std::string_view kApplication = "\xff"sv;
    return block.kind == ","sv || block.kind == ";"sv || block.kind == kControl ||
           (block.kind == kApplication &&
            (BeginsWith(block.body, "\x0bNETSCAPE2.0"sv) || BeginsWith(block.body, "\x0b"
                                                                                   "ANIMEXTS1.0"sv)));
}

bool IsShownOfWebP(const Block& block) {
    constexpr std::array kShown{"VP8 "sv, "VP8L"sv, "VP8X"sv, "ALPH"sv, "ANIM"sv, "ANMF"sv, "ICCP"sv};
    return IsAmong(block.kind, kShown);
}

bool IsShown(Type type, const Block& block) {
    switch (type) {
    case Type::Jpeg:
        return IsShownOfJpeg(block);
    case Type::Png:
        return IsShownOfPng(block);
    case Type::Gif:
        return IsShownOfGif(block);
    case Type::WebP:
        return IsShownOfWebP(block);
    case Type::None:
        break;
    }
    return false;
}

/// The head says how long all is, and the first piece what else there is.
void MendWebP(std::string& content, const std::vector<Block>& blocks) {
    constexpr std::size_t kFlags = 20;
    constexpr unsigned kCameraAndTexts = 0x0c;
    const std::size_t size = content.size() - 8;
    for (unsigned byte = 0; byte < 4; ++byte)
        content[4 + byte] = static_cast<char>(size >> (8 * byte) & 0xffU);
    if (blocks.size() > 1 && blocks[1].kind == "VP8X"sv && content.size() > kFlags)
        content[kFlags] = static_cast<char>(static_cast<unsigned char>(content[kFlags]) & ~kCameraAndTexts);
}

bool IsProfile(Type type, const Block& block) {
    return type == Type::Jpeg  ? block.kind == "\xe2"sv && BeginsWith(block.body, kProfile)
           : type == Type::Png ? block.kind == "iCCP"sv
                               : block.kind == "ICCP"sv;
}

bool IsOfRgb(Type type, std::string_view profile) {
    constexpr std::size_t kColours = 16;
    constexpr std::size_t kPart = 2; // which one of how many
    const std::size_t place = kColours + (type == Type::Jpeg ? kProfile.size() + kPart : 0);
    return profile.size() > place && BeginsWith(profile.substr(place), "RGB "sv);
}

/// There the profile is compressed, and fits what the head says.
bool IsPngOfRgb(const std::vector<Block>& blocks) {
    constexpr std::size_t kKind = 9;
    constexpr std::uint32_t kHasColours = 2;
    return blocks.size() > 1 && (Number(blocks[1].body, kKind, 1) & kHasColours) != 0;
}

} // namespace

std::string WithoutPrivateData(Type type, const std::vector<Block>& blocks) {
    std::string content;
    for (const Block& block : blocks)
        if (block.kind == "head"sv || IsShown(type, block))
            content += block.whole;
    if (type == Type::WebP)
        MendWebP(content, blocks);
    return content;
}

std::vector<Block> ProfileOf(Type type, const std::vector<Block>& blocks) {
    std::vector<Block> profile;
    for (const Block& block : blocks)
        if (IsProfile(type, block))
            profile.push_back(block);
    const bool isOfRgb =
        !profile.empty() && (type == Type::Png ? IsPngOfRgb(blocks) : IsOfRgb(type, profile.front().body));
    return isOfRgb ? profile : std::vector<Block>();
}

} // namespace picture
