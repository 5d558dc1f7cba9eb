#include "controller/media/Upload.h"

#include "controller/media/MediaError.h"
#include "controller/media/MediaName.h"
#include "controller/media/Picture.h"
#include "controller/media/WavHeader.h"

namespace controller {

namespace {

/// By the first bytes; empty for what is no image.
std::string_view ImageTypeOf(std::string_view content) {
    using namespace std::string_view_literals;
    if (content.substr(0, 8) == "\x89PNG\r\n\x1a\n"sv)
        return "image/png";
    if (content.substr(0, 3) == "\xff\xd8\xff"sv)
        return "image/jpeg";
    if (content.substr(0, 6) == "GIF87a"sv || content.substr(0, 6) == "GIF89a"sv)
        return "image/gif";
    return content.substr(0, 4) == "RIFF"sv && content.size() >= 12 && content.substr(8, 4) == "WEBP"sv
               ? "image/webp"
               : "";
}

/// A few bytes can claim a picture that fills the memory of every screen that is to show it.
void RequireShowable(const std::string& name, const std::string& content) {
    constexpr std::uint64_t kMostPixels = 100'000'000;
    const auto size = picture::SizeOf(content);
    if (!size || std::uint64_t{size->width} * size->height <= kMostPixels)
        return;
    throw MediaError(MediaError::Kind::Unsuitable,
                     name + " claims to be " + std::to_string(size->width) + " by " +
                         std::to_string(size->height) + " pixels large",
                     "an image of at most 100 million pixels; screens show fewer than 10 million")
        .With("too_large");
}

void RequireWhole(const std::string& name, const WavHeader& header) {
    if (header.IsStreamed() || header.promised <= header.there)
        return;
    throw MediaError(MediaError::Kind::Unsuitable,
                     name + ": truncated: its header promises " + std::to_string(header.promised) +
                         " bytes of sound, only " + std::to_string(header.there) + " are there",
                     "a whole sound file of at most 20 s")
        .With("damaged");
}

} // namespace

Upload MakeUpload(const std::string& name,
                  const std::string& content,
                  const SoundSpan& span,
                  const Converter& converter) {
    const std::string_view imageType = ImageTypeOf(content);
    if (!imageType.empty()) {
        if (!span.IsWhole())
            throw MediaError(MediaError::Kind::Unsuitable, name + " is an image, and has no parts in time",
                             "no from_ms and to_ms");
        RequireShowable(name, content);
        std::string clean = picture::WithoutPrivateData(content);
        const bool isConverted = clean != content;
        return {media_name::NameFor(name, imageType), std::move(clean), isConverted};
    }
    const std::string wav = media_name::NameFor(name, "audio/wav");
    if (const auto header = ReadWavHeader(content)) {
        RequireWhole(wav, *header);
        if (header->IsPlain() && span.IsWhole())
            return {wav, content, false};
    }
    return {wav, converter.Sound(name, content, span), true};
}

} // namespace controller
