#include "announce/client/Problem.h"

#include "announce/Failure.h"
#include "announce/Json.h"

namespace {

ExitStatus StatusOf(unsigned status) {
    switch (status) {
    case 401:
    case 403:
    case 429:
        return ExitStatus::NotAllowed;
    case 404:
        return ExitStatus::NotFound;
    case 409:
    case 412:
        return ExitStatus::Conflict;
    case 503: // ends, or has no room: like one that does not answer, it may answer later
        return ExitStatus::NoConnection;
    case 507:
        return ExitStatus::NotSaved;
    default:
        return status < 500 ? ExitStatus::Refused : ExitStatus::Failed;
    }
}

std::string TextIn(const Json& problem, const char* member) {
    const auto place = problem.is_object() ? problem.find(member) : problem.end();
    return place != problem.end() && place->is_string() ? place->get<std::string>() : "";
}

/// What is to be done, where the controller cannot know it.
std::string Advice(const HttpAnswer& answer) {
    switch (answer.status) {
    case 401:
        return "a token by --token-file, ANNOUNCE_TOKEN or the configuration file; \"announcement-controller "
               "token "
               "add\" makes one";
    case 403:
        return "a token with the right for this";
    case 412:
        return "to look at it again, and to make the change once more";
    case 429:
        return answer.retryAfter.empty() ? "to wait a moment" : "to wait for " + answer.retryAfter + " s";
    default:
        return "";
    }
}

} // namespace

void ThrowProblem(const HttpAnswer& answer) {
    const Json problem = Json::parse(answer.body, nullptr, false);
    std::string message = TextIn(problem, "detail");
    if (message.empty())
        message = "the controller answers with status " + std::to_string(answer.status);
    std::string right = Advice(answer);
    if (right.empty())
        right = TextIn(problem, "right");
    throw Failure(StatusOf(answer.status), message, right);
}
