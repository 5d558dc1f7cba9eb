#include "controller/api/ApiContext.h"
#include "controller/api/handlers/AgentReply.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/handlers/SpokenMedia.h"
#include "controller/api/json/MediaJson.h"
#include "controller/api/json/Replies.h"
#include "controller/driver/Text.h"
#include "controller/media/MediaName.h"

namespace controller::handlers {
namespace {

/// The announcements that play or show the file.
std::vector<view::User> UsersOf(const Announcements::List& announcements, const std::string& name) {
    const bool isSound = media_name::KindOf(name) == media_name::Kind::Sound;
    const std::string wanted = isSound ? name.substr(0, name.size() - std::string(".wav").size()) : name;
    std::vector<view::User> users;
    for (const AnnouncementPointer& one : announcements) {
        if ((isSound ? one->audio.file : one->video.image) == wanted)
            users.push_back({one->id, one->name});
    }
    return users;
}

HttpReply InUse(const std::string& name, std::vector<view::User> users) {
    const std::string detail = name + " is used by " + std::to_string(users.size()) +
                               (users.size() == 1 ? " announcement" : " announcements");
    return Problem({409, detail, "a file that nobody uses: change or delete what stands in users first"},
                   std::move(users));
}

std::string RequiredName(Call call) {
    std::string name = call->Text("name");
    if (media_name::KindOf(name) == media_name::Kind::None)
        throw ApiError(404, "no media file can have this name", media_name::Right());
    return name;
}

/// A time within a sound, in the query; nothing when it is missing.
std::optional<std::chrono::milliseconds> Milliseconds(const ApiCall& call, const char* name) {
    constexpr std::int64_t kDay = 86'400'000;
    const std::string text = call.Query(name);
    if (text.empty())
        return std::nullopt;
    const auto number = ReadNumber<std::int64_t>(text, 0, kDay);
    if (!number)
        throw ApiError(422, std::string(name) + " is \"" + text + "\"",
                       "milliseconds from the sound's beginning, 0 to " + std::to_string(kDay));
    return std::chrono::milliseconds(*number);
}

/// Whether the sound is to be heard once.
bool IsPassing(const ApiCall& call) {
    const std::string text = call.Query("passing");
    if (!text.empty() && text != "true" && text != "false")
        throw ApiError(422, "passing is \"" + text + "\"", "true or false");
    return text == "true";
}

/// What takes the place of a file that is to stay, stays itself.
void NotePassing(ApiContext& context, const MediaShelf::Stored& stored, bool isPassing) {
    const std::string& name = stored.description.name;
    if (isPassing && !stored.isNew)
        return;
    if (isPassing)
        context.parts.passing.Add(name);
    else if (stored.isNew || !context.parts.passing.Keep(name))
        return;
    context.parts.store.WritePassingSound(name, isPassing, [](const std::string& /*error*/) {
        // Left over, people see it in the media folder.
    });
}

void RemoveSpoken(ApiContext& context, Call call, const std::string& name) {
    auto users = UsersOf(*context.parts.announcements.All(), name);
    if (!users.empty()) {
        call->Reply(InUse(name, std::move(users)));
        return;
    }
    (void)context.parts.spoken.Remove(name, [call](const std::string& notSaved) { // it is there
        call->Guard([&] {
            agent_reply::RequireSaved(notSaved);
            call->ReplyNothing();
        });
    });
    context.parts.feed.Publish(events::MediaRemoved{name});
}

} // namespace

void ListMedia(ApiContext& context, Call call) {
    Elsewhere(
        context, call,
        [&context, spoken = spoken_media::List(context)] {
            return spoken_media::Merge(context.media.List(), spoken);
        },
        [call](const auto& files) { call->Reply(200, view::MediaList{files}); });
}

void PutMedia(ApiContext& context, Call call) {
    const std::string name = call->Text("name");
    const bool isPassing = IsPassing(*call);
    spoken_media::RefuseFile(context, name);
    const auto content = std::make_shared<const std::string>(std::move(call->body));
    if (content->empty())
        throw ApiError(422, "the body is empty", "the file itself");
    const SoundSpan span{Milliseconds(*call, "from_ms"), Milliseconds(*call, "to_ms")};
    Elsewhere(
        context.converting, context, call,
        [&context, name, content, span] { return context.media.Store(name, *content, span); },
        [&context, call, isPassing](const MediaShelf::Stored& stored) {
            NotePassing(context, stored, isPassing);
            context.parts.feed.Publish(events::MediaStored{stored.description.name});
            call->Reply(stored.isNew ? 201 : 200, stored.description);
        });
}

/// Keeps how the file is to be played, and answers with its description as it is then.
void KeepLoudness(ApiContext& context, Call call, MediaShelf::Description file) {
    const std::string& name = file.name;
    const auto entry = context.parts.levels.SetAsItIs(name, call->Take<view::LoudnessOrder>().isAsItIs);
    file.level = context.parts.levels.LevelOf(name);
    context.parts.keepLevel(entry, [&context, call, file](const std::string& notSaved) {
        call->Guard([&] {
            agent_reply::RequireSaved(notSaved);
            context.parts.feed.Publish(events::MediaStored{file.name});
            call->Reply(200, file);
        });
    });
}

void PutLoudness(ApiContext& context, Call call) {
    const std::string name = RequiredName(call);
    const auto spoken = spoken_media::Describe(context, name);
    Elsewhere(
        context, call,
        [&context, name, spoken] {
            auto file = spoken ? *spoken : context.media.Describe(name);
            if (!file.isSound)
                throw ApiError(422, name + " is an image, and not to be heard", "the name of a sound");
            return file;
        },
        [&context, call](const MediaShelf::Description& file) { KeepLoudness(context, call, file); });
}

namespace {

/// The content, unless who asks has it already.
void ReplyFile(Call call, const MediaShelf::File& file) {
    HttpReply reply;
    reply.headers.emplace_back("ETag", file.tag);
    reply.headers.emplace_back("Cache-Control", "private, no-cache");
    if (call->Request().Header("if-none-match") == file.tag) {
        reply.status = 304;
    } else {
        reply.contentType = file.type;
        reply.body = file.content;
    }
    call->Reply(std::move(reply));
}

/// Of a picture that somebody has put into the folder, or whose thumbnail has gone for want of room.
void MakeThumbnail(ApiContext& context, Call call, const std::string& name) {
    constexpr unsigned kMostAtATime = 64;
    if (*context.thumbnails >= kMostAtATime)
        throw ApiError(503, "many thumbnails are being made", "another try in a moment");
    call->holds = CountIn(context.thumbnails);
    Elsewhere(
        context.converting, context, call, [&context, name] { return context.media.MakeThumbnail(name); },
        [call](const MediaShelf::File& file) { ReplyFile(call, file); });
}

} // namespace

void GetMedia(ApiContext& context, Call call) {
    const std::string name = RequiredName(call);
    if (context.parts.spoken.Get(name) != nullptr) {
        spoken_media::Reply(context, call, name);
        return;
    }
    Elsewhere(
        context, call, [&context, name] { return context.media.Read(name); },
        [call](const MediaShelf::File& file) { ReplyFile(call, file); });
}

/// For players in the house, which have no token: who knows the name has been told it.
void GetOneTimeSound(ApiContext& context, Call call) {
    auto sound = context.parts.oneTime.Fetch(call->Text("name"));
    if (!sound)
        throw ApiError(404, "there is no such sound, or it is over", "the address that a player was given");
    HttpReply reply;
    reply.contentType = media_name::TypeOf("sound.wav");
    reply.body = std::move(sound);
    reply.headers.emplace_back("Cache-Control", "no-store");
    call->Reply(std::move(reply));
}

void GetThumbnail(ApiContext& context, Call call) {
    const std::string name = RequiredName(call);
    Elsewhere(
        context, call, [&context, name] { return context.media.FindThumbnail(name); },
        [&context, call, name](const MediaShelf::File& file) {
            const bool isKnown = call->Request().Header("if-none-match") == file.tag;
            if (file.content || isKnown)
                ReplyFile(call, file);
            else
                MakeThumbnail(context, call, name);
        });
}

void RemoveMedia(ApiContext& context, Call call) {
    const std::string name = RequiredName(call);
    if (context.parts.spoken.Get(name) != nullptr) {
        RemoveSpoken(context, call, name);
        return;
    }
    Elsewhere(
        context, call,
        [&context, name, list = context.parts.announcements.All()] {
            auto users = UsersOf(*list, name);
            if (!users.empty())
                return InUse(name, std::move(users));
            context.media.Remove(name);
            HttpReply reply;
            reply.status = 204;
            return reply;
        },
        [&context, call, name](const HttpReply& reply) {
            if (reply.status == 204)
                context.parts.feed.Publish(events::MediaRemoved{name});
            call->Reply(reply);
        });
}

} // namespace controller::handlers
