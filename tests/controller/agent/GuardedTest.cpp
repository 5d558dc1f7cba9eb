#include "controller/agent/Guarded.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace controller {

namespace {

TEST(GuardedTest, WhateverIsThrownIsCaughtWithItsKindAndText) {
    EXPECT_FALSE(Guarded([] {}));
    const auto text = Guarded([] { throw "plain"; });
    EXPECT_EQ(text->kind + ": " + text->text, "const char*: plain");
    const auto string = Guarded([] { throw std::string("object"); });
    EXPECT_EQ(string->kind + ": " + string->text, "std::string: object");
    const auto exception = Guarded([] { throw std::runtime_error("exception"); });
    EXPECT_EQ(exception->kind + ": " + exception->text, "std::exception: exception");
    const auto other = Guarded([] { throw 7; });
    EXPECT_EQ(other->kind + ": " + other->text, "other: ");
    const auto null =
        Guarded([] { throw static_cast<const char*>(nullptr); }); // NOLINT(misc-throw-by-value*)
    EXPECT_EQ(null->kind + ": " + null->text, "const char*: ");
    EXPECT_EQ(Describe(*text, "a test"), "The agent failed in a test: plain");
    EXPECT_EQ(Describe(*other, "a test"), "The agent failed in a test: without a word of why (other)");
}

} // namespace

} // namespace controller
