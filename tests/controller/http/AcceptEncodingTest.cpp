#include "controller/http/AcceptEncoding.h"

#include <gtest/gtest.h>

namespace controller {

TEST(AcceptEncodingTest, WhatTheClientLikesBestIsChosenAndOfEqualsOurFirst) {
    struct Case {
        const char* header;
        const char* chosen;
    };
    for (const Case& one : {
             Case{"gzip, deflate, br", "br"},
             Case{"gzip", "gzip"},
             Case{"GZip", "gzip"},
             Case{"x-gzip", "gzip"},
             Case{"br;q=0.5, gzip;q=0.9", "gzip"},
             Case{"gzip;q=0.001, br;q=0", "gzip"},
             Case{"br ; Q=1.000 , gzip;q=0.999", "br"},
             Case{"*", "br"},
             Case{"*;q=0.5, gzip", "gzip"},
             Case{"gzip;q=0.1, *;q=0", "gzip"},
             Case{"identity, gzip", "gzip"},
             Case{"identity;q=0, gzip;q=0.1", "gzip"},
         })
        EXPECT_EQ(ChooseCoding(one.header, {"br", "gzip"}), one.chosen) << one.header;
}

TEST(AcceptEncodingTest, ReplyGoesAsItIsWhereNothingThatIsThereIsWantedMore) {
    for (const char* header : {"", "identity", "deflate", "br;q=0, gzip;q=0", "gzip;q=0.0, br;q=0.000",
                               "*;q=0", "identity;q=0", "identity;q=0.9, gzip;q=0.8, br;q=0.1"})
        EXPECT_EQ(ChooseCoding(header, {"br", "gzip"}), "") << header;
    EXPECT_EQ(ChooseCoding("br", {"gzip"}), "");
    EXPECT_EQ(ChooseCoding("gzip", {}), "");
}

TEST(AcceptEncodingTest, WhatIsBadlyWrittenCountsAsNotSaid) {
    for (const char* header : {"gzip;q=2", "gzip;q=-1", "gzip;q=x", "gzip;q=", "gzip;q=0.0001", "gzip;q=1.1",
                               "gzipped", ";q=1", ",,;;=", "\"gzip\""})
        EXPECT_EQ(ChooseCoding(header, {"br", "gzip"}), "") << header;
    EXPECT_EQ(ChooseCoding("gzip;q=x, br", {"br", "gzip"}), "br");
}

} // namespace controller
