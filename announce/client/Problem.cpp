#include "announce/client/Problem.h"

#include "announce/basics/Failure.h"
#include "announce/basics/Json.h"
#include "announce/basics/TextWidth.h"
#include "announce/basics/Words.h"

namespace {

struct Meaning {
    ExitStatus status;
    std::string advice; ///< what is to be done, where the controller cannot know it
};

Meaning MeaningOf(const HttpAnswer& answer) {
    switch (answer.status) {
    case 401:
        return {
            ExitStatus::NotAllowed,
            "a token by --token-file, ANNOUNCE_TOKEN or the configuration file; \"announcement-controller "
            "token add\" makes one"};
    case 403:
        return {ExitStatus::NotAllowed, "a token with the right for this"};
    case 404:
        return {ExitStatus::NotFound, ""};
    case 409:
        return {ExitStatus::Conflict, ""};
    case 412:
        return {ExitStatus::Conflict, "to look at it again, and to make the change once more"};
    case 429:
        return {ExitStatus::NotAllowed,
                answer.retryAfter.empty() ? "to wait a moment" : "to wait for " + answer.retryAfter + " s"};
    case 503: // ends, or has no room: like one that does not answer, it may answer later
        return {ExitStatus::NoConnection, ""};
    case 507:
        return {ExitStatus::NotSaved, ""};
    default:
        return {answer.status < 500 ? ExitStatus::Refused : ExitStatus::Failed, ""};
    }
}

std::string TextIn(const Json& problem, const char* member) {
    const auto place = problem.is_object() ? problem.find(member) : problem.end();
    return place != problem.end() && place->is_string() ? place->get<std::string>() : "";
}

/// `: Dinner (3), Doorbell (1)`: the announcements that stand in the way; empty when there are none.
std::string UsersIn(const Json& problem) {
    if (!problem.is_object() || !problem.contains("users"))
        return "";
    const std::string users = words::Listed(problem.at("users"), [](const Json& user) {
        return text::Visible(user.at("name").get<std::string>()) + " (" + user.at("id").dump() + ")";
    });
    return users.empty() ? "" : ": " + users;
}

} // namespace

void ThrowProblem(const HttpAnswer& answer) {
    const Json problem = Json::parse(answer.body, nullptr, false);
    const std::string detail = TextIn(problem, "detail");
    const auto [status, advice] = MeaningOf(answer);
    throw Failure(status,
                  detail.empty() ? "the controller answers with status " + std::to_string(answer.status)
                                 : detail + UsersIn(problem),
                  advice.empty() ? TextIn(problem, "right") : advice);
}
