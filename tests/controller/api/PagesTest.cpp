#include "controller/api/Pages.h"

#include <gtest/gtest.h>

#include <map>

namespace controller {

namespace {

constexpr Asset kPage{"index.html", "text/html; charset=utf-8", "a1", false, "plain page", "gzipped",
                      "brotli"};
constexpr Asset kScript{"page-0123456789abcdef.js", "text/javascript", "b2", true, "plain script", "gz", ""};
constexpr Asset kPicture{"dot.png", "image/png", "c3", false, "picture", "", ""};
constexpr Asset kScreen{"navigator.html", "text/html", "d4", false, "screen", "", ""};

const Asset* Find(std::string_view name) noexcept {
    for (const Asset* asset : {&kPage, &kScript, &kPicture, &kScreen}) {
        if (asset->name == name)
            return asset;
    }
    return nullptr;
}

HttpRequest Get(std::string_view path,
                std::vector<std::pair<std::string_view, std::string_view>> headers = {}) {
    HttpRequest request;
    request.method = "GET";
    request.path = path;
    request.headers = std::move(headers);
    return request;
}

struct Reply {
    unsigned status;
    std::string body;
    std::map<std::string, std::string> headers;

    bool operator==(const Reply& other) const {
        return status == other.status && body == other.body && headers == other.headers;
    }
};

std::ostream& operator<<(std::ostream& out, const Reply& reply) {
    out << reply.status << " " << reply.body;
    for (const auto& [name, value] : reply.headers)
        out << "\n  " << name << ": " << value;
    return out;
}

Reply AnswerTo(const HttpRequest& request) {
    const auto reply = Pages(&Find, {5, 12}).Answer(request);
    if (!reply)
        return {404, "", {}};
    return {reply->status, std::string(ViewOf(reply->body)), {reply->headers.begin(), reply->headers.end()}};
}

using Headers = std::map<std::string, std::string>;

Headers PageHeaders(const char* etag) {
    return {{"Cache-Control", "no-cache"}, {"ETag", etag}, {"Vary", "Accept-Encoding"}};
}

Headers Coded(Headers headers, const char* coding) {
    headers["Content-Encoding"] = coding;
    return headers;
}

} // namespace

TEST(PagesTest, SendsTheFormThatTheClientLikesBest) {
    const Reply plain{200, "plain page", PageHeaders("\"a1\"")};
    const Reply gzip{200, "gzipped", Coded(PageHeaders("\"a1-gz\""), "gzip")};
    const Reply brotli{200, "brotli", Coded(PageHeaders("\"a1-br\""), "br")};
    const std::pair<const char*, const Reply*> cases[] = {
        {"", &plain},
        {"identity", &plain},
        {"gzip", &gzip},
        {"gzip, deflate, br", &brotli},
        {"br;q=0.5, gzip", &gzip},
        {"br;q=0, gzip;q=0", &plain},
        {"gzip;q=0", &plain},
        {"gzip;q=0.2, identity;q=0.8", &plain},
        {"*", &brotli},
        {"*;q=0.1, br;q=0", &gzip},
        {"zstd", &plain},
    };
    for (const auto& [accepted, expected] : cases)
        EXPECT_EQ(AnswerTo(Get("/", {{"accept-encoding", accepted}})), *expected) << accepted;
    EXPECT_EQ(AnswerTo(Get("/")), plain);
}

TEST(PagesTest, SendsTheNextBestFormOfAFileThatHasNotAll) {
    const Headers forEver{{"Cache-Control", "public, max-age=31536000, immutable"},
                          {"ETag", "\"b2\""},
                          {"Vary", "Accept-Encoding"}};
    Headers zipped = Coded(forEver, "gzip");
    zipped["ETag"] = "\"b2-gz\"";
    const std::string path = "/assets/page-0123456789abcdef.js";

    EXPECT_EQ(AnswerTo(Get(path, {{"accept-encoding", "br, gzip"}})), (Reply{200, "gz", zipped}));
    EXPECT_EQ(AnswerTo(Get(path, {{"accept-encoding", "br"}})), (Reply{200, "plain script", forEver}));
}

TEST(PagesTest, SaysNothingOfFormsWhereAFileHasOnlyOne) {
    const Headers headers{{"Cache-Control", "no-cache"}, {"ETag", "\"c3\""}};

    EXPECT_EQ(AnswerTo(Get("/assets/dot.png", {{"accept-encoding", "br, gzip"}})),
              (Reply{200, "picture", headers}));
}

TEST(PagesTest, SendsNothingAgainThatTheClientHasInTheFormItWouldGet) {
    const Reply unchanged{304, "", PageHeaders("\"a1-br\"")};
    const Reply changed{200, "brotli", Coded(PageHeaders("\"a1-br\""), "br")};
    const std::pair<const char*, const Reply*> cases[] = {
        {"\"a1-br\"", &unchanged}, {"W/\"a1-br\"", &unchanged}, {"\"old\", \"a1-br\"", &unchanged},
        {"*", &unchanged},         {"\"a1\"", &changed},        {"\"a1-gz\"", &changed},
        {"a1-br", &changed},       {"\"xa1-br\"", &changed},
    };
    for (const auto& [tags, expected] : cases)
        EXPECT_EQ(AnswerTo(Get("/", {{"accept-encoding", "br"}, {"if-none-match", tags}})), *expected)
            << tags;
}

TEST(PagesTest, HasAPageForEveryNavigatorOfTheHouseAndNoOther) {
    const Reply screen{200, "screen", {{"Cache-Control", "no-cache"}, {"ETag", "\"d4\""}}};

    EXPECT_EQ(AnswerTo(Get("/navigator/5")), screen);
    EXPECT_EQ(AnswerTo(Get("/navigator/12")), screen);
    for (const char* path : {"/navigator/1", "/navigator/05", "/navigator/", "/navigator/5/", "/other",
                             "/assets/", "/assets/none.js", "/assets/INDEX.HTML", ""})
        EXPECT_EQ(AnswerTo(Get(path)), (Reply{404, "", {}})) << path;
}

TEST(PagesTest, RefusesEveryMethodButGet) {
    HttpRequest request = Get("/");
    request.method = "POST";

    const Reply reply = AnswerTo(request);

    EXPECT_EQ(reply.status, 405U);
    EXPECT_EQ(reply.headers, (Headers{{"Allow", "GET"}}));
    EXPECT_NE(reply.body.find("POST is not for this address"), std::string::npos);
}

TEST(PagesTest, AnswersUnderThePolicyForPages) {
    const auto reply = Pages(&Find, {}).Answer(Get("/"));

    ASSERT_TRUE(reply.has_value());
    EXPECT_TRUE(reply->isPage);
    EXPECT_EQ(reply->contentType, "text/html; charset=utf-8");
}

} // namespace controller
