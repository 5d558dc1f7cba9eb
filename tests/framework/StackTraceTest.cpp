#include "host/StackTrace.h"

#include "host/Export.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

// Exported, so that the dynamic symbol table may have its name.
VQ_EXPORT __attribute__((noinline)) vq::StackTrace TraceTakenByAnExportedFunction() {
    vq::StackTrace trace;
    return trace;
}

namespace {

__attribute__((noinline)) vq::StackTrace TraceTakenByAHiddenFunction() {
    vq::StackTrace trace;
    return trace;
}

TEST(StackTraceTest, NamesAHiddenFunctionFromTheDebugInformation) {
    const vq::StackTrace trace = TraceTakenByAHiddenFunction();

    EXPECT_NE(trace.Text().find("TraceTakenByAHiddenFunction"), std::string::npos) << trace.Text();
    EXPECT_NE(trace.Text().find("StackTraceTest.cpp:"), std::string::npos) << trace.Text();
}

TEST(StackTraceTest, NamesTheFunctionThatTookIt) {
    const vq::StackTrace trace = TraceTakenByAnExportedFunction();

    EXPECT_NE(trace.Text().find("TraceTakenByAnExportedFunction"), std::string::npos) << trace.Text();
}

TEST(StackTraceTest, HasFramesDownToTheProgramsEntry) {
    const vq::StackTrace trace;

    EXPECT_GT(trace.FrameCount(), 3U);
    EXPECT_NE(trace.Text().find("main"), std::string::npos) << trace.Text();
}

TEST(StackTraceTest, TextHasALineForEveryFrame) {
    const vq::StackTrace trace;
    const std::string text = trace.Text();

    EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), trace.FrameCount());
}

TEST(StackTraceTest, CopiesHaveTheSameFrames) {
    const vq::StackTrace trace = TraceTakenByAnExportedFunction();
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
    const vq::StackTrace copy(trace);
    vq::StackTrace assigned;
    assigned = copy;

    EXPECT_EQ(copy.Text(), trace.Text());
    EXPECT_EQ(assigned.Text(), trace.Text());
}

TEST(StackTraceTest, TraceThatWasMovedFromStillHasItsFrames) {
    vq::StackTrace trace;
    const std::size_t frames = trace.FrameCount();
    const vq::StackTrace moved(
        std::move(trace)); // NOLINT(performance-move-const-arg): that is what is tested

    EXPECT_EQ(moved.FrameCount(), frames);
    EXPECT_EQ(trace.FrameCount(), frames); // NOLINT(bugprone-use-after-move)
}

} // namespace
