#include "controller/media/Upload.h"

#include "controller/media/MediaError.h"
#include "controller/media/MediaName.h"
#include "controller/media/WavHeader.h"
#include "picture/PictureHead.h"

#include <utility>

namespace controller {

namespace {

void RequireWhole(const std::string& name, const WavHeader& header) {
    if (header.IsStreamed() || header.promised <= header.there)
        return;
    throw MediaError(MediaError::Kind::Unsuitable,
                     name + ": truncated: its header promises " + std::to_string(header.promised) +
                         " bytes of sound, only " + std::to_string(header.there) + " are there",
                     "a whole sound file of at most 20 s")
        .With("damaged");
}

Upload PictureUpload(const std::string& name,
                     const std::string& content,
                     const SoundSpan& span,
                     const Converter& converter) {
    if (!span.IsWhole())
        throw MediaError(MediaError::Kind::Unsuitable, name + " is an image, and has no parts in time",
                         "no from_ms and to_ms");
    Converter::Picture shown = converter.ShownPicture(name, content);
    const bool isConverted = shown.content != content;
    return {media_name::NameFor(name, shown.type), std::move(shown.content), isConverted,
            std::move(shown.thumbnail)};
}

} // namespace

Upload MakeUpload(const std::string& name,
                  const std::string& content,
                  const SoundSpan& span,
                  const Converter& converter) {
    if (picture::TypeOf(content) != picture::Type::None)
        return PictureUpload(name, content, span, converter);
    const std::string wav = media_name::NameFor(name, "audio/wav");
    if (const auto header = ReadWavHeader(content)) {
        RequireWhole(wav, *header);
        if (header->IsPlain() && span.IsWhole())
            return {wav, content, false, {}};
    }
    return {wav, converter.Sound(name, content, span), true, {}};
}

} // namespace controller
