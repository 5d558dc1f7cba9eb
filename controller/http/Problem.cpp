#include "controller/http/Problem.h"

#include <nlohmann/json.hpp>

namespace controller {

HttpReply Problem(unsigned status, std::string_view detail, std::string_view right) {
    nlohmann::ordered_json problem{
        {"type", "about:blank"}, {"title", StatusText(status)}, {"status", status}, {"detail", detail}};
    if (!right.empty())
        problem["right"] = right;
    HttpReply reply;
    reply.status = status;
    reply.contentType = "application/problem+json";
    reply.body = problem.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    return reply;
}

} // namespace controller
