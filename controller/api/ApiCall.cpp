#include "controller/api/ApiCall.h"

#include "controller/api/json/Replies.h"
#include "controller/driver/Text.h"
#include "controller/media/MediaError.h"

#include <algorithm>
#include <limits>

namespace controller {

namespace {

unsigned StatusOf(MediaError::Kind kind) noexcept {
    switch (kind) {
    case MediaError::Kind::Missing:
        return 404;
    case MediaError::Kind::Unsuitable:
        return 422;
    case MediaError::Kind::Taken:
        return 409;
    case MediaError::Kind::NoRoom:
        return 507;
    case MediaError::Kind::Unreadable:
        break;
    }
    return 503;
}

std::string Find(const ApiCall::Values& values, std::string_view name) {
    const auto place =
        std::find_if(values.begin(), values.end(), [&](const auto& value) { return value.first == name; });
    return place != values.end() ? place->second : "";
}

} // namespace

std::string ApiCall::Text(std::string_view name) const {
    return Find(m_path, name);
}

std::uint64_t ApiCall::Number(std::string_view name) const {
    const std::string text = Text(name);
    const auto number = ReadNumber<std::uint64_t>(text, 0, std::numeric_limits<std::uint64_t>::max());
    if (!number)
        throw ApiError(404, "\"" + text + "\" in the address is no number",
                       std::string(name) + " in decimal");
    return *number;
}

std::uint32_t ApiCall::Id(std::string_view name) const {
    const std::uint64_t number = Number(name);
    if (number == 0 || number > std::numeric_limits<std::uint32_t>::max())
        throw ApiError(404, Text(name) + " in the address names nothing", "an id from 1 to 4294967295");
    return static_cast<std::uint32_t>(number);
}

std::string ApiCall::Query(std::string_view name) const {
    return Find(m_query, name);
}

void ApiCall::ReplyText(unsigned status, std::string_view contentType, std::string text) {
    HttpReply reply;
    reply.status = status;
    reply.contentType = contentType;
    reply.body = std::move(text);
    Reply(std::move(reply));
}

void ApiCall::ReplyNothing() {
    HttpReply reply;
    reply.status = 204;
    Reply(std::move(reply));
}

void ApiCall::Reply(HttpReply reply) {
    m_exchange->Reply(std::move(reply));
}

void ApiCall::Fail(const ApiError& error) {
    Reply(Problem({error.Status(), error.what(), error.Right()}, {}, error.More()));
}

void ApiCall::Guard(const std::function<void()>& work) {
    try {
        work();
    } catch (const ApiError& error) {
        Fail(error);
    } catch (const MediaError& error) {
        const auto length = error.Length();
        Fail(ApiError(StatusOf(error.What()), error.what(), error.Right(),
                      {error.Code(), length ? std::optional(length->count()) : std::nullopt}));
    } catch (const std::exception& error) {
        Fail(ApiError(500, std::string("the controller failed: ") + error.what()));
    }
}

} // namespace controller
