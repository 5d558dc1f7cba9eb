#include "controller/api/NotFoundPage.h"

#include <string>

namespace controller {

namespace {

constexpr std::string_view kNavigator = "/navigator/";

bool BeginsWith(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char letter : text) {
        switch (letter) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += letter;
        }
    }
    return escaped;
}

std::string TitleFor(std::string_view path) {
    if (!BeginsWith(path, kNavigator))
        return "There is nothing at this address";
    return "There is no screen " + Escaped(path.substr(kNavigator.size())) + " in this house";
}

std::string LinksTo(const House& house) {
    if (house.navigators.empty())
        return "<p>The house file names no screen yet.</p>";
    std::string links = "<p>These are its screens:</p><ul>";
    for (const House::Navigator& screen : house.navigators) {
        const std::string id = std::to_string(screen.id);
        links.append("<li><a href=\"").append(kNavigator).append(id).append("\">");
        links.append(house.tokens.empty() ? Escaped(screen.name) + " (" + id + ")" : "Screen " + id);
        links.append("</a></li>");
    }
    return links + "</ul>";
}

} // namespace

bool WantsPage(const HttpRequest& request) {
    return request.method == "GET" && !BeginsWith(request.path, "/api/") &&
           request.Header("accept").find("text/html") != std::string_view::npos;
}

HttpReply NotFoundPage(const HttpRequest& request, const House& house) {
    const std::string title = TitleFor(request.path);
    HttpReply reply;
    reply.status = 404;
    reply.isPage = true;
    reply.contentType = "text/html; charset=utf-8";
    reply.headers.emplace_back("Cache-Control", "no-store");
    reply.headers.emplace_back("Vary", "Accept");
    reply.body = "<!doctype html><html lang=\"en\"><head><meta charset=\"utf-8\"><title>" + title +
                 "</title><meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                 "<link rel=\"icon\" href=\"/assets/icon.svg\" type=\"image/svg+xml\">"
                 "<link rel=\"stylesheet\" href=\"/assets/missing.css\"></head><body><main><h1>" +
                 title + "</h1>" + LinksTo(house) +
                 "<p><a href=\"/\">The announcements of the house</a></p></main></body></html>\n";
    return reply;
}

} // namespace controller
