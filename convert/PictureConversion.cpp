#include "convert/PictureConversion.h"

#include "convert/PictureFormats.h"
#include "convert/Report.h"
#include "convert/Shrinker.h"
#include "picture/PrivateData.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <new>
#include <optional>
#include <string_view>

namespace {

using picture::Block;
using picture::Type;

constexpr std::uint32_t kMostOfPicture = 1920;
constexpr std::uint32_t kMostOfThumbnail = 320;

std::string Sides(picture::Size size) {
    return std::to_string(size.width) + " by " + std::to_string(size.height) + " pixels large";
}

/// A file that has been looked at, and not decoded.
struct Looked {
    std::string_view content;
    Type type = Type::None;
    picture::Size size;
    std::optional<std::vector<Block>> blocks; ///< none of one that is built as no such file should be

    [[nodiscard]] unsigned Orientation() const { return blocks ? picture::OrientationOf(type, *blocks) : 1; }
    [[nodiscard]] bool IsAnimated() const { return blocks && picture::IsAnimated(type, *blocks); }
    [[nodiscard]] bool IsTooLarge() const { return std::max(size.width, size.height) > kMostOfPicture; }
};

Looked Look(const MappedFile& file) {
    constexpr std::uint64_t kMostPixels = 100'000'000;
    const std::string_view content(reinterpret_cast<const char*>(file.Data()), // NOLINT(*-reinterpret-cast)
                                   file.Size());
    Looked looked{content, picture::TypeOf(content), {}, {}};
    if (looked.type == Type::None)
        throw report::Refusal(report::kUnknown, "is no picture that is known here");
    const auto size = picture::SizeOf(content);
    if (!size || size->width == 0 || size->height == 0)
        throw report::Refusal(report::kDamaged, "is damaged: it does not say how large it is");
    looked.size = *size;
    if (std::uint64_t{size->width} * size->height > kMostPixels)
        throw report::Refusal(report::kTooLarge, "claims to be " + Sides(*size));
    looked.blocks = picture::BlocksOf(looked.type, content);
    return looked;
}

Pixels Read(const Looked& looked, std::uint32_t most) {
    using namespace picture_formats;
    if (looked.type == Type::Jpeg)
        return ReadJpeg(looked.content, most);
    if (looked.type == Type::Png)
        return ReadPng(looked.content, most);
    if (looked.type == Type::WebP)
        return ReadWebP(looked.content, most);
    if (!looked.blocks)
        throw report::Refusal(report::kDamaged, "is damaged: it is cut short or broken");
    return ReadGif(looked.content, most);
}

/// A GIF that has to be made anew becomes a PNG, which has more colours.
Type TypeWritten(Type type) {
    return type == Type::Gif ? Type::Png : type;
}

std::string WriteAs(Type type, const Pixels& pixels, const std::vector<Block>& profile) {
    using namespace picture_formats;
    return type == Type::Jpeg   ? WriteJpeg(pixels, profile)
           : type == Type::WebP ? WriteWebP(pixels, profile)
                                : WritePng(pixels, profile);
}

std::string ThumbnailOf(Pixels pixels) {
    const picture::Size to = Within(pixels.size, kMostOfThumbnail);
    const Pixels small = Shrunk(std::move(pixels), to);
    return WriteAs(small.IsOpaque() ? Type::Jpeg : Type::Png, small, {});
}

void RequireStill(const Looked& looked) {
    if (looked.IsAnimated() && looked.IsTooLarge())
        throw report::Refusal(report::kTooLarge, "is animated, and " + Sides(looked.size));
}

nlohmann::json Tell(Type type, picture::Size size, std::size_t bytes) {
    return {{"type", picture::MediaTypeOf(type)},
            {"width", size.width},
            {"height", size.height},
            {"picture_bytes", bytes}};
}

/// Memory that is not there is the picture's fault.
template <class Work>
nlohmann::json WithinMemory(Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        throw report::Refusal(report::kTooLarge, "takes too much memory to be decoded");
    }
}

} // namespace

nlohmann::json ConvertPicture(const MappedFile& file, int output) {
    return WithinMemory([&] {
        const Looked looked = Look(file);
        RequireStill(looked);
        const unsigned orientation = looked.IsAnimated() ? 1 : looked.Orientation();
        Pixels pixels = Upright(Read(looked, kMostOfPicture), orientation);
        const bool isKept = looked.blocks && orientation == 1 && !looked.IsTooLarge();
        const Type type = isKept ? looked.type : TypeWritten(looked.type);
        const auto profile = looked.blocks && type == looked.type ? picture::ProfileOf(type, *looked.blocks)
                                                                  : std::vector<Block>();
        const std::string content =
            isKept ? picture::WithoutPrivateData(type, *looked.blocks) : WriteAs(type, pixels, profile);
        nlohmann::json told = Tell(type, pixels.size, content.size());
        report::WriteAll(output, content.data(), content.size());
        const std::string thumbnail = ThumbnailOf(std::move(pixels));
        report::WriteAll(output, thumbnail.data(), thumbnail.size());
        return told;
    });
}

nlohmann::json MakeThumbnail(const MappedFile& file, int output) {
    return WithinMemory([&] {
        const Looked looked = Look(file);
        const unsigned orientation = looked.IsAnimated() ? 1 : looked.Orientation();
        const std::string thumbnail = ThumbnailOf(Upright(Read(looked, kMostOfThumbnail), orientation));
        report::WriteAll(output, thumbnail.data(), thumbnail.size());
        return nlohmann::json::object();
    });
}
