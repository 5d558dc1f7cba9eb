#include "controller/http/ReplyHead.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

ReplyFrame To(std::string_view host) {
    ReplyFrame frame;
    frame.date = "now";
    frame.host = host;
    return frame;
}

std::string HeadOf(const HttpReply& reply, const ReplyFrame& frame) {
    std::string head;
    AppendHead(head, reply, frame, ViewOf(reply.body).size());
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

    const std::string head = HeadOf(reply, To("localhost"));

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
    const std::string head = HeadOf(Page(), To("house.local:8765"));

    EXPECT_TRUE(Holds(head, "script-src 'self';"));
    EXPECT_TRUE(Holds(head, "connect-src 'self' ws://house.local:8765 wss://house.local:8765;"));
    EXPECT_TRUE(Holds(head, "frame-ancestors 'none'"));
    EXPECT_FALSE(Holds(head, "unsafe"));
}

TEST(ReplyHeadTest, HostThatIsNoPlainNameDoesNotGetIntoThePolicy) {
    const std::string head = HeadOf(Page(), To("x; script-src *"));

    EXPECT_FALSE(Holds(head, "script-src *"));
}

TEST(ReplyHeadTest, EmptyRepliesHaveNoLength) {
    HttpReply reply;
    reply.status = 204;

    ReplyFrame frame = To("localhost");
    frame.isLast = true;

    const std::string head = HeadOf(reply, frame);

    EXPECT_FALSE(Holds(head, "Content-Length"));
    EXPECT_TRUE(Holds(head, "Connection: close\r\n"));
}

TEST(ReplyHeadTest, BrowserThatCameOverTlsIsToldToStayThere) {
    ReplyFrame frame = To("localhost");
    EXPECT_FALSE(Holds(HeadOf(Page(), frame), "Strict-Transport-Security"));

    frame.isSecure = true;

    EXPECT_TRUE(Holds(HeadOf(Page(), frame), "\r\nStrict-Transport-Security: max-age=2592000\r\n"));
}

TEST(ReplyHeadTest, OwnCachingTakesThePlaceOfTheUsualOne) {
    HttpReply reply = Page();
    reply.headers = {{"Cache-Control", "no-cache"}};

    ReplyFrame frame = To("localhost");
    frame.isOldClient = true;

    const std::string head = HeadOf(reply, frame);

    EXPECT_FALSE(Holds(head, "no-store"));
    EXPECT_TRUE(Holds(head, "Cache-Control: no-cache\r\n"));
    EXPECT_TRUE(Holds(head, "Connection: keep-alive\r\n"));
}

} // namespace controller
