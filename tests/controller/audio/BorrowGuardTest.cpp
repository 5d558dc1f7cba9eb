#include "controller/audio/BorrowGuard.h"

#include "controller/audio/BorrowedText.h"
#include "controller/audio/Borrowings.h"
#include "tests/controller/audio/EngineHarness.h"
#include "tests/controller/audio/Sounds.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <utility>
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
        while (std::chrono::steady_clock::now() < latest) {
            const auto [entries, ended] = Read(std::filesystem::exists(m_file) ? ReadBytes(m_file) : "");
            if (ended == ends)
                return entries;
            std::this_thread::yield();
        }
        ADD_FAILURE() << "waited in vain for the guard's end; it was told " << ReadBytes(m_file);
        return {};
    }

    /// The entries of all guards, each of which ends with a full stop, and how many did.
    static std::pair<std::vector<Borrowed>, std::size_t> Read(std::string text) {
        std::vector<Borrowed> entries;
        std::size_t ended = 0;
        while (!text.empty()) {
            if (text.front() == '.') {
                text.erase(0, 1);
                ++ended;
            } else if (auto entry = borrowed_text::TakeFirst(text)) {
                entries.push_back(*entry);
            } else {
                break;
            }
        }
        return {entries, ended};
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

TEST_F(BorrowGuardTest, ItIsToldAllThatMayBeBorrowedAtOnce) {
    std::vector<Borrowed> entries;
    for (std::size_t number = 0; number < Borrowings::kMost; ++number)
        entries.push_back(Lamp(std::to_string(number) + std::string(100, '.'), "off"));
    Make();
    m_guard->Tell(entries);
    m_guard = nullptr;
    EXPECT_EQ(Told(1), entries);
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
