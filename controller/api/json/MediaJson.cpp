#include "controller/api/json/MediaJson.h"

#include "controller/api/json/Meaning.h"
#include "controller/api/json/SpeechJson.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>

namespace controller {

using fields::Made;
using fields::Member;
using fields::Object;

namespace {

/// A level with two decimals, as a number; null for silence, which has none.
struct Decibels {
    double value = 0;

    static const fields::Type& Table();
};

class DecibelsType final : public fields::Type {
public:
    void Write(std::string& out, const void* value) const override {
        const double decibels = static_cast<const Decibels*>(value)->value;
        if (!std::isfinite(decibels)) {
            out += "null";
            return;
        }
        char text[32];
        (void)std::snprintf(text, sizeof text, "%.2f", decibels); // fits: no sound is that loud
        out += text;
    }
    void Describe(fields::Schema& schema,
                  const fields::Limits& /*limits*/,
                  fields::Components& /*components*/) const override {
        schema["type"] = fields::Json::array({"number", "null"});
    }
};

const fields::Type& Decibels::Table() {
    static const DecibelsType kType;
    return kType;
}

Decibels LufsOf(const SoundLevels::Level& level) {
    return {level.loudness.lufs};
}

Decibels TruePeakOf(const SoundLevels::Level& level) {
    return {level.loudness.truePeak};
}

Decibels GainOf(const SoundLevels::Level& level) {
    return {level.gain};
}

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

std::optional<std::uint32_t> WidthOf(const File& file) {
    return file.size ? std::optional(file.size->width) : std::nullopt;
}

std::optional<std::uint32_t> HeightOf(const File& file) {
    return file.size ? std::optional(file.size->height) : std::nullopt;
}

std::optional<SpeechRecipe> SpeechOf(const File& file) {
    if (!file.spoken)
        return std::nullopt;
    return SpeechRecipe{file.spoken->text, file.spoken->voice, file.spoken->speed, file.spoken->chime};
}

} // namespace

Object view::LoudnessOrder::Table() {
    return {
        "LoudnessOrder",
        {Member<&LoudnessOrder::isAsItIs>("as_it_is", "Whether the sound is played as loud as its file is")
             .Required()}};
}

Object TableOf(fields::For<SoundLevels::Level> /*type*/) {
    using Level = SoundLevels::Level;
    return {"Loudness",
            {Made<&LufsOf>("lufs", "By EBU R 128; null for what is too quiet to be measured"),
             Made<&TruePeakOf>("true_peak", "dBTP; null for silence"),
             Made<&GainOf>("gain", "By which it is played, in dB"),
             Member<&Level::isAsItIs>("as_it_is", "Somebody has said that it is to be played so")}};
}

Object TableOf(fields::For<File> /*type*/) {
    return {"MediaFile",
            {Member<&File::name>("name"), Made<&KindOf>("kind").OneOf({"sound", "image"}),
             Member<&File::bytes>("bytes"), Member<&File::modified>("modified"),
             Made<&DurationOf>("duration_ms").LeftOutWhenEmpty(),
             Made<&RateOf>("sample_rate").LeftOutWhenEmpty(),
             Made<&ChannelsOf>("channels").LeftOutWhenEmpty(),
             Made<&WidthOf>("width", "Of an image, in pixels, as it is shown").LeftOutWhenEmpty(),
             Made<&HeightOf>("height").LeftOutWhenEmpty(),
             Member<&File::trouble>("trouble", "Why the sound cannot be played").LeftOutWhenEmpty(),
             Made<&MeaningIn<&File::trouble>>("trouble_means").LeftOutWhenEmpty(),
             Member<&File::level>("loudness", "Of a sound that has been measured").LeftOutWhenEmpty(),
             Member<&File::isConverted>("is_converted",
                                        "Of a file that has just come: whether it was made into another")
                 .LeftOutWhenEmpty(),
             Made<&SpeechOf>("speech", "Of a spoken sound").LeftOutWhenEmpty()}};
}

} // namespace controller
