#include "controller/http/HttpMessage.h"

#include <gtest/gtest.h>

namespace controller {

using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(HttpMessageTest, HeaderIsFoundByItsNameAndTheFirstOfTwoCounts) {
    HttpRequest request;
    request.headers = {{"Host", "a"}, {"accept", "b"}, {"HOST", "c"}, {"hos", "d"}, {"hostx", "e"}};

    EXPECT_EQ(request.Header("host"), "a");
    EXPECT_EQ(request.Header("origin"), "");
    EXPECT_EQ(request.CountHeaders("host"), 2U);
}

TEST(HttpMessageTest, PercentEncodingIsUndone) {
    EXPECT_EQ(PercentDecoded("a%20b%2Fc"), "a b/c");
    EXPECT_EQ(PercentDecoded("%C3%A9"), "\xC3\xA9");
    EXPECT_EQ(PercentDecoded("plain"), "plain");
}

TEST(HttpMessageTest, BrokenPercentEncodingAndHiddenZeroBytesAreRefused) {
    for (const char* text : {"%", "%2", "a%zz", "%00", "a%0"})
        EXPECT_FALSE(PercentDecoded(text).has_value()) << text;
}

TEST(HttpMessageTest, QueryIsTakenApart) {
    EXPECT_EQ(ParseQuery("limit=5&name=a+b%26c&flag&=x"),
              (Pairs{{"limit", "5"}, {"name", "a b&c"}, {"flag", ""}, {"", "x"}}));
    EXPECT_EQ(ParseQuery(""), Pairs{});
    EXPECT_EQ(ParseQuery("&&"), Pairs{});
    EXPECT_FALSE(ParseQuery("a=%g0").has_value());
}

TEST(HttpMessageTest, EveryStatusThatIsRepliedHasWords) {
    for (const int status : {200, 201, 202, 204, 304, 400, 401, 403, 404, 405, 408, 409,
                             413, 414, 415, 421, 422, 426, 429, 431, 500, 503, 505, 507})
        EXPECT_NE(StatusText(static_cast<unsigned>(status)), "Unknown") << status;
}

} // namespace controller
