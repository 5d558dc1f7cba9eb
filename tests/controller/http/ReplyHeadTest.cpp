#include "controller/http/ReplyHead.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

std::string HeadOf(const HttpReply& reply, const ReplyFrame& frame) {
    std::string head;
    AppendHead(head, reply, frame);
    return head;
}

bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

HttpReply Page() {
    HttpReply reply;
    reply.contentType = "text/html";
    reply.body = std::string("page");
    reply.isPage = true;
    return reply;
}

} // namespace

TEST(ReplyHeadTest, DataCanDoNothingWhenABrowserShowsItAsAPage) {
    HttpReply reply;
    reply.contentType = "application/json";
    reply.body = std::string("{}");

    const std::string head = HeadOf(reply, {"now", "localhost", false, false});

    EXPECT_EQ(head.rfind("HTTP/1.1 200 OK\r\n", 0), 0U);
    EXPECT_TRUE(Holds(head, "Content-Type: application/json\r\n"));
    EXPECT_TRUE(Holds(head, "Content-Length: 2\r\n"));
    EXPECT_TRUE(
        Holds(head, "Content-Security-Policy: default-src 'none'; frame-ancestors 'none'; sandbox\r\n"));
    EXPECT_TRUE(Holds(head, "X-Content-Type-Options: nosniff\r\n"));
    EXPECT_TRUE(Holds(head, "Referrer-Policy: no-referrer\r\n"));
    EXPECT_TRUE(Holds(head, "Cache-Control: no-store\r\n"));
    EXPECT_EQ(head.substr(head.size() - 4), "\r\n\r\n");
}

TEST(ReplyHeadTest, PageMayReachItsOwnServerAndRunsNoInlineScript) {
    const std::string head = HeadOf(Page(), {"now", "house.local:8765", false, false});

    EXPECT_TRUE(Holds(head, "script-src 'self';"));
    EXPECT_TRUE(Holds(head, "connect-src 'self' ws://house.local:8765 wss://house.local:8765;"));
    EXPECT_TRUE(Holds(head, "frame-ancestors 'none'"));
    EXPECT_FALSE(Holds(head, "unsafe"));
}

TEST(ReplyHeadTest, HostThatIsNoPlainNameDoesNotGetIntoThePolicy) {
    const std::string head = HeadOf(Page(), {"now", "x; script-src *", false, false});

    EXPECT_FALSE(Holds(head, "script-src *"));
}

TEST(ReplyHeadTest, EmptyRepliesHaveNoLength) {
    HttpReply reply;
    reply.status = 204;

    const std::string head = HeadOf(reply, {"now", "localhost", false, true});

    EXPECT_FALSE(Holds(head, "Content-Length"));
    EXPECT_TRUE(Holds(head, "Connection: close\r\n"));
}

TEST(ReplyHeadTest, OwnCachingTakesThePlaceOfTheUsualOne) {
    HttpReply reply = Page();
    reply.headers = {{"Cache-Control", "no-cache"}};

    const std::string head = HeadOf(reply, {"now", "localhost", true, false});

    EXPECT_FALSE(Holds(head, "no-store"));
    EXPECT_TRUE(Holds(head, "Cache-Control: no-cache\r\n"));
    EXPECT_TRUE(Holds(head, "Connection: keep-alive\r\n"));
}

} // namespace controller
