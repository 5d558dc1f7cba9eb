#include "controller/api/handlers/SpokenMedia.h"

#include "controller/media/MediaName.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace controller::spoken_media {

namespace {

using Description = MediaShelf::Description;
using Outcome = RenderedSpeech::Outcome;

constexpr int kRate = 48000;
constexpr const char* kEnding = ".wav";

Description DescriptionOf(const std::string& name, const SpokenSounds::Sound& sound) {
    Description description;
    description.name = name;
    description.isSound = true;
    description.modified = sound.modified;
    description.spoken = MediaShelf::Spoken{sound.recipe.text, sound.recipe.voice, sound.recipe.speed,
                                            sound.recipe.chime, sound.rendered.file};
    if (sound.rendered.outcome == Outcome::Spoken && !sound.rendered.sound.empty())
        description.sound = MediaShelf::Sound{sound.rendered.duration, kRate, 1};
    description.trouble = sound.rendered.error;
    return description;
}

std::string ReadAll(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

void ReplyWith(ApiContext& context, const ApiCallPointer& call, const RenderedSpeech& rendered) {
    if (rendered.outcome != Outcome::Spoken)
        throw ApiError(503, "it is not spoken: " + rendered.error, rendered.right);
    const std::string tag = '"' + rendered.sound + '"';
    HttpReply reply;
    reply.headers.emplace_back("ETag", tag);
    reply.headers.emplace_back("Cache-Control", "private, no-cache");
    if (call->Request().Header("if-none-match") == tag) {
        reply.status = 304;
        call->Reply(std::move(reply));
        return;
    }
    reply.contentType = media_name::TypeOf(kEnding + std::string(kEnding));
    Elsewhere(
        context, call, [file = rendered.file] { return std::make_shared<const std::string>(ReadAll(file)); },
        [call, reply](const std::shared_ptr<const std::string>& content) {
            HttpReply whole = reply;
            whole.body = content;
            call->Reply(std::move(whole));
        });
}

} // namespace

std::vector<Description> List(const ApiContext& context) {
    std::vector<Description> all;
    all.reserve(context.parts.spoken.All().size());
    for (const auto& [name, sound] : context.parts.spoken.All())
        all.push_back(DescriptionOf(name, sound));
    return all;
}

std::optional<Description> Describe(const ApiContext& context, const std::string& name) {
    const SpokenSounds::Sound* const sound = context.parts.spoken.Get(name);
    return sound != nullptr ? std::optional(DescriptionOf(name, *sound)) : std::nullopt;
}

std::vector<Description> Merge(std::vector<Description> files, std::vector<Description> spoken) {
    for (Description& one : spoken) {
        std::error_code error;
        const std::uintmax_t bytes = std::filesystem::file_size(one.spoken->file, error);
        one.bytes = one.sound && !error ? bytes : 0;
        const auto place = std::lower_bound(
            files.begin(), files.end(), one.name,
            [](const Description& file, const std::string& name) { return file.name < name; });
        // What is played under a name that both have is what is spoken.
        if (place != files.end() && place->name == one.name)
            *place = std::move(one);
        else
            files.insert(place, std::move(one));
    }
    return files;
}

std::optional<MediaShelf::Length> LengthOf(const ApiContext& context, const std::string& sound) {
    const SpokenSounds::Sound* const spoken = context.parts.spoken.Get(sound + kEnding);
    if (spoken == nullptr)
        return std::nullopt;
    return MediaShelf::Length{spoken->rendered.duration, spoken->rendered.error};
}

void Reply(ApiContext& context, const ApiCallPointer& call, const std::string& name) {
    const auto answer = [&context, call, name] {
        call->Guard([&] {
            const SpokenSounds::Sound* const sound = context.parts.spoken.Get(name);
            if (sound == nullptr)
                throw ApiError(404, "the sound has been removed meanwhile");
            ReplyWith(context, call, sound->rendered);
        });
    };
    (void)context.parts.spoken.Prepare(media_name::SoundOf(name), answer); // it has been looked for
}

void RefuseFile(const ApiContext& context, const std::string& name) {
    // What is no image becomes a WAV file, whatever it ends in.
    const std::string good = media_name::GoodName(name);
    const std::string sound = good.substr(0, good.rfind('.')) + kEnding;
    if (media_name::KindOf(good) != media_name::Kind::Image && context.parts.spoken.Get(sound) != nullptr)
        throw ApiError(409, sound + " is a spoken sound", "another name, or the spoken sound removed before");
}

} // namespace controller::spoken_media
