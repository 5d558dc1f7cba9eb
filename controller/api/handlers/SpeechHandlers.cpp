#include "controller/api/ApiContext.h"
#include "controller/api/handlers/AgentReply.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/handlers/SpokenMedia.h"
#include "controller/api/json/MediaJson.h"
#include "controller/api/json/SpeechJson.h"
#include "controller/media/MediaName.h"

namespace controller::handlers {
namespace {

/// What it will be called: also a name without an ending is one of a sound.
std::string SoundName(Call call) {
    std::string name = media_name::GoodName(call->Text("name"));
    if (media_name::KindOf(name) == media_name::Kind::None)
        name = media_name::GoodName(name + ".wav");
    if (media_name::KindOf(name) != media_name::Kind::Sound)
        throw ApiError(422, "no sound can have this name", media_name::Right());
    return name;
}

[[noreturn]] void Refuse(const RenderedSpeech& refused) {
    const bool isTooLong = refused.duration > std::chrono::milliseconds(0);
    throw ApiError(422, refused.error, refused.right,
                   isTooLong ? ApiError::ForPrograms{"too_long", refused.duration.count()}
                             : ApiError::ForPrograms{});
}

void Answer(ApiContext& context, Call call, const std::string& name, const RenderedSpeech& rendered) {
    if (rendered.outcome == RenderedSpeech::Outcome::Refused)
        Refuse(rendered);
    const auto description = spoken_media::Describe(context, name);
    if (!description)
        throw ApiError(409, name + " has been removed meanwhile");
    Elsewhere(
        context, call, [one = *description] { return spoken_media::Merge({}, {one}).front(); },
        [call](const MediaShelf::Description& stored) { call->Reply(200, stored); });
}

void Put(ApiContext& context, Call call, const std::string& name, const SpeechRecipe& recipe) {
    context.parts.spoken.Put(
        name, recipe, [&context, call, name](const RenderedSpeech& rendered, const std::string& notSaved) {
            call->Guard([&] {
                agent_reply::RequireSaved(notSaved);
                Answer(context, call, name, rendered);
            });
        });
}

/// Whether a file of the media folder has the name; looks into the file system.
bool IsFile(const MediaShelf& media, const std::string& name) {
    try {
        (void)media.Describe(name);
        return true;
    } catch (const MediaError&) {
        return false;
    }
}

} // namespace

void ListVoices(ApiContext& context, Call call) {
    call->Reply(200, view::VoiceList{context.parts.speech.Voices()});
}

void PutSpeech(ApiContext& context, Call call) {
    const std::string name = SoundName(call);
    auto recipe = call->Take<SpeechRecipe>();
    recipe.chime = media_name::SoundOf(recipe.chime);
    if (context.parts.spoken.Get(name) != nullptr) {
        Put(context, call, name, recipe);
        return;
    }
    if (context.parts.spoken.All().size() >= SpokenSounds::kMost)
        throw ApiError(409, "there are " + std::to_string(SpokenSounds::kMost) + " spoken sounds already",
                       "one of them removed before");
    Elsewhere(
        context, call, [&context, name] { return IsFile(context.media, name); },
        [&context, call, name, recipe](bool isFile) {
            if (isFile)
                throw ApiError(409, "there is a file " + name + " in the media folder",
                               "another name, or the file removed before");
            Put(context, call, name, recipe);
        });
}

} // namespace controller::handlers
