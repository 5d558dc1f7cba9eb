#include "controller/api/ApiContext.h"
#include "controller/api/Handlers.h"
#include "controller/api/MediaName.h"

namespace handlers {
namespace {

std::string RequiredName(Call call) {
    std::string name = call->Text("name");
    if (media_name::KindOf(name) == media_name::Kind::None)
        throw ApiError(404, "no media file can have this name", media_name::Right());
    return name;
}

} // namespace

void ListMedia(ApiContext& context, Call call) {
    Elsewhere(
        context, call, [&context] { return context.media.List(); },
        [call](const ApiCall::Json& list) { call->Reply(200, list); });
}

void PutMedia(ApiContext& context, Call call) {
    const std::string name = RequiredName(call);
    const auto content = std::make_shared<const std::string>(std::move(call->body));
    if (content->empty())
        throw ApiError(422, "the body is empty", "the file itself");
    Elsewhere(
        context, call, [&context, name, content] { return context.media.Store(name, *content); },
        [call](const MediaShelf::Stored& stored) {
            call->Reply(stored.isNew ? 201 : 200, stored.description);
        });
}

void GetMedia(ApiContext& context, Call call) {
    const std::string name = RequiredName(call);
    Elsewhere(
        context, call, [&context, name] { return context.media.Read(name); },
        [call, name](const MediaShelf::File& file) {
            HttpReply reply;
            reply.headers.emplace_back("ETag", file.tag);
            reply.headers.emplace_back("Cache-Control", "private, no-cache");
            if (call->Request().Header("if-none-match") == file.tag) {
                reply.status = 304;
            } else {
                reply.contentType = media_name::TypeOf(name);
                reply.body = file.content;
            }
            call->Reply(std::move(reply));
        });
}

void RemoveMedia(ApiContext& context, Call call) {
    const std::string name = RequiredName(call);
    Elsewhere(
        context, call,
        [&context, name] {
            context.media.Remove(name);
            return true;
        },
        [call](bool) { call->ReplyNothing(); });
}

} // namespace handlers
