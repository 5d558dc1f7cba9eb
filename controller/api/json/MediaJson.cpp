#include "controller/api/json/MediaJson.h"

#include "controller/api/json/SpeechJson.h"

namespace controller {

using fields::Made;
using fields::Member;
using fields::Object;

namespace {

using File = MediaShelf::Description;

std::string KindOf(const File& file) {
    return file.isSound ? "sound" : "image";
}

std::optional<std::int64_t> DurationOf(const File& file) {
    return file.sound ? std::optional(file.sound->duration.count()) : std::nullopt;
}

std::optional<std::int32_t> RateOf(const File& file) {
    return file.sound ? std::optional(file.sound->rate) : std::nullopt;
}

std::optional<std::int32_t> ChannelsOf(const File& file) {
    return file.sound ? std::optional(file.sound->channels) : std::nullopt;
}

std::optional<SpeechRecipe> SpeechOf(const File& file) {
    if (!file.spoken)
        return std::nullopt;
    return SpeechRecipe{file.spoken->text, file.spoken->voice, file.spoken->speed, file.spoken->chime};
}

} // namespace

Object TableOf(fields::For<File> /*type*/) {
    return {"MediaFile",
            {Member<&File::name>("name"), Made<&KindOf>("kind").OneOf({"sound", "image"}),
             Member<&File::bytes>("bytes"), Member<&File::modified>("modified"),
             Made<&DurationOf>("duration_ms").LeftOutWhenEmpty(),
             Made<&RateOf>("sample_rate").LeftOutWhenEmpty(),
             Made<&ChannelsOf>("channels").LeftOutWhenEmpty(),
             Member<&File::trouble>("trouble", "Why the sound cannot be played").LeftOutWhenEmpty(),
             Member<&File::isConverted>("is_converted",
                                        "Of a file that has just come: whether it was made into another")
                 .LeftOutWhenEmpty(),
             Made<&SpeechOf>("speech", "Of a spoken sound").LeftOutWhenEmpty()}};
}

} // namespace controller
