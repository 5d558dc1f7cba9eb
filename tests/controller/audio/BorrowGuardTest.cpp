#include "controller/audio/BorrowGuard.h"

#include "controller/audio/BorrowedText.h"
#include "tests/controller/audio/EngineHarness.h"
#include "tests/controller/audio/Sounds.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace controller::audio::test {

namespace {

Borrowed Lamp(const std::string& thing, const std::string& set) {
    return {"lamp", thing, "light", "on: 7\n", set};
}

/// A guard that keeps what it is told in a file, until it is told nothing any more.
class BorrowGuardTest : public testing::Test {
protected:
    void Make() {
        const std::string write = "cat >> " + m_file + "; echo -n . >> " + m_file;
        m_guard = std::make_unique<BorrowGuard>(std::vector<std::string>{"/bin/sh", "-c", write}, m_log.log);
    }

    /// What it was told, when it has ended so many times.
    std::vector<Borrowed> Told(std::size_t ends) {
        const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        std::string text;
        while (std::chrono::steady_clock::now() < latest) {
            text = std::filesystem::exists(m_file) ? ReadBytes(m_file) : "";
            std::vector<Borrowed> entries;
            std::size_t ended = 0;
            for (bool isMore = true; isMore;) {
                isMore = false;
                while (auto entry = borrowed_text::TakeFirst(text)) {
                    entries.push_back(*entry);
                    isMore = true;
                }
                if (!text.empty() && text.front() == '.') {
                    text.erase(0, 1);
                    ++ended;
                    isMore = true;
                }
            }
            if (ended == ends)
                return entries;
            std::this_thread::yield();
        }
        ADD_FAILURE() << "waited in vain for the guard's end; it was told " << text;
        return {};
    }

    TemporaryFolder m_folder;
    const std::string m_file = m_folder.Path("told");
    TestLog m_log;
    std::unique_ptr<BorrowGuard> m_guard;
};

TEST_F(BorrowGuardTest, ItIsStartedAtTheFirstEntryAndToldEverythingUntilThisOneEnds) {
    Make();
    m_guard->Tell({Lamp("none", "")});
    EXPECT_FALSE(std::filesystem::exists(m_file)) << "nothing is borrowed yet";
    m_guard->Tell({Lamp("a", "off"), Lamp("b: 1", "off")});
    m_guard->Tell({Lamp("a", "")});
    m_guard = nullptr;
    EXPECT_EQ(Told(1), (std::vector<Borrowed>{Lamp("a", "off"), Lamp("b: 1", "off"), Lamp("a", "")}));
    EXPECT_TRUE(m_log.lines.empty());
}

TEST_F(BorrowGuardTest, OneThatCannotBeStartedIsSaidAndNobodyIsKept) {
    m_guard = std::make_unique<BorrowGuard>(std::vector<std::string>{"/nowhere"}, m_log.log);
    m_guard->Tell({Lamp("a", "off")});
    ASSERT_EQ(m_log.lines.size(), 1U);
    EXPECT_NE(m_log.lines[0].find("the guard does not start"), std::string::npos);
}

TEST(BorrowedTextTest, WhatIsNotWholeYetIsNoEntry) {
    const std::string whole = borrowed_text::Of(Lamp("12:3", "off"));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        std::string part = whole.substr(0, length);
        EXPECT_EQ(borrowed_text::TakeFirst(part), std::nullopt);
        EXPECT_EQ(part, whole.substr(0, length));
    }
    std::string text = whole + "1";
    EXPECT_EQ(borrowed_text::TakeFirst(text), Lamp("12:3", "off"));
    EXPECT_EQ(text, "1");
}

} // namespace

} // namespace controller::audio::test
