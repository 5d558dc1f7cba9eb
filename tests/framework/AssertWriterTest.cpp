#include "framework/AssertWriter.h"

#include "host/AssertWrite.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

class NotingWriter final : public AssertWriter {
public:
    void Write(const char* file, int line, const vq::StackTrace& stack) override {
        noted.push_back(std::string(file) + ":" + std::to_string(line));
        frames = stack.FrameCount();
    }

    std::vector<std::string> noted;
    std::size_t frames = 0;
};

using Noted = std::vector<std::string>;

void Fail(int line) {
    vq::AssertWrite("Announcement", line, vq::StackTrace());
}

TEST(AssertWriterTest, FailedCheckReachesTheListenerWithFileLineAndStackAndReturns) {
    NotingWriter writer;
    Fail(473);
    Fail(474);

    EXPECT_EQ(writer.noted, (Noted{"Announcement:473", "Announcement:474"}));
    EXPECT_GT(writer.frames, 0U);
}

TEST(AssertWriterTest, TheListenerMadeLastIsToldAndTheOneBeforeItAgainAfterwards) {
    NotingWriter outer;
    Fail(1);
    {
        NotingWriter inner;
        EXPECT_EQ(AssertWriter::Current(), &inner);
        Fail(2);
        EXPECT_EQ(inner.noted, (Noted{"Announcement:2"}));
    }
    Fail(3);

    EXPECT_EQ(outer.noted, (Noted{"Announcement:1", "Announcement:3"}));
}

TEST(AssertWriterTest, ListenersHearTheirOwnThreadOnly) {
    NotingWriter here;
    Noted there;
    std::thread([&there] {
        const AssertWriter* const before = AssertWriter::Current();
        NotingWriter writer;
        Fail(2);
        there = writer.noted;
        EXPECT_EQ(before, nullptr);
    }).join();

    EXPECT_EQ(there, (Noted{"Announcement:2"}));
    EXPECT_EQ(here.noted, Noted{});
}

TEST(AssertWriterTest, WithoutAListenerTheCheckGoesToStandardErrorWithItsStack) {
    ASSERT_EQ(AssertWriter::Current(), nullptr);
    testing::internal::CaptureStderr();
    Fail(473);
    const std::string written = testing::internal::GetCapturedStderr();

    EXPECT_EQ(written.find("assertion failed: Announcement, line 473\n"), 0U) << written;
    EXPECT_NE(written.find("main"), std::string::npos) << written;
}

} // namespace
