#include "controller/audio/Borrowings.h"

#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace controller::audio::test {

namespace {

class BorrowingsTest : public testing::Test {
protected:
    struct Written {
        std::vector<Borrowed> entries;
        Borrowings::Done done;
    };

    void Make(const std::vector<Borrowed>& left = {}) {
        m_borrowings = std::make_unique<Borrowings>(
            m_scheduler, m_log.log,
            [this](const std::vector<Borrowed>& entries, Borrowings::Done done) {
                m_written.push_back({entries, std::move(done)});
            },
            left);
    }

    static Borrowed Volume(const std::string& thing, const std::string& before, const std::string& set) {
        return {"lamp", thing, "volume", before, set};
    }

    bool Take(const std::vector<Borrowed>& entries) {
        return m_borrowings->Take(entries, [this] { ++m_changes; });
    }

    FakeScheduler m_scheduler;
    TestLog m_log;
    std::vector<Written> m_written;
    std::unique_ptr<Borrowings> m_borrowings;
    int m_changes = 0;
};

TEST_F(BorrowingsTest, NothingIsChangedBeforeTheDiskHasWhatItWasAndAllIsWrittenAsOne) {
    Make();
    const std::vector<Borrowed> two{Volume("a", "100", "56"), Volume("b", "80", "45")};
    ASSERT_TRUE(Take(two));
    ASSERT_EQ(m_written.size(), 1U);
    EXPECT_EQ(m_written[0].entries, two);
    EXPECT_EQ(m_changes, 0);
    m_written[0].done("");
    EXPECT_EQ(m_changes, 1);
    m_scheduler.Advance(std::chrono::seconds(1));
    EXPECT_EQ(m_changes, 1) << "once";
    EXPECT_EQ(m_borrowings->Of("lamp"), two);
    EXPECT_TRUE(m_borrowings->Of("lantern").empty());
    EXPECT_TRUE(m_log.lines.empty());
}

TEST_F(BorrowingsTest, ADiskThatDoesNotAnswerIsWaitedForFiftyMilliseconds) {
    Make();
    ASSERT_TRUE(Take({Volume("a", "100", "56")}));
    m_scheduler.Advance(std::chrono::milliseconds(49));
    EXPECT_EQ(m_changes, 0);
    m_scheduler.Advance(std::chrono::milliseconds(1));
    EXPECT_EQ(m_changes, 1);
    m_written[0].done("");
    EXPECT_EQ(m_changes, 1) << "the late answer changes nothing again";
}

TEST_F(BorrowingsTest, ADiskThatRefusesIsNamedAndTheAnnouncementGoesOn) {
    Make();
    ASSERT_TRUE(Take({Volume("a", "100", "56")}));
    m_written[0].done("it is full");
    EXPECT_EQ(m_changes, 1);
    ASSERT_EQ(m_log.lines.size(), 1U);
    EXPECT_NE(m_log.lines[0].find("it is full"), std::string::npos);
    EXPECT_EQ(m_borrowings->Of("lamp").size(), 1U);
}

TEST_F(BorrowingsTest, WhatAFormerRunHasLeftIsThereAndStruckWhenItIsGivenBack) {
    Make({Volume("b", "80", "45"), Volume("a", "100", "56")});
    EXPECT_EQ(m_borrowings->Of("lamp"),
              (std::vector<Borrowed>{Volume("a", "100", "56"), Volume("b", "80", "45")}));
    EXPECT_TRUE(m_written.empty());
    m_borrowings->Strike({Volume("a", "100", "56")});
    EXPECT_EQ(m_borrowings->Of("lamp"), (std::vector<Borrowed>{Volume("b", "80", "45")}));
    ASSERT_EQ(m_written.size(), 1U);
    EXPECT_EQ(m_written[0].entries, (std::vector<Borrowed>{Volume("a", "100", "")}));
}

TEST_F(BorrowingsTest, AnEntryTakesThePlaceOfTheFormerOneOfItsThing) {
    Make({Volume("a", "100", "56")});
    ASSERT_TRUE(Take({Volume("a", "100", "30")}));
    EXPECT_EQ(m_borrowings->Of("lamp"), (std::vector<Borrowed>{Volume("a", "100", "30")}));
}

TEST_F(BorrowingsTest, WhoWatchesHearsOfEveryChangeBeforeTheDisk) {
    Make();
    std::vector<Borrowed> seen;
    std::size_t writtenBefore = 0;
    m_borrowings->SetWatch([&](const std::vector<Borrowed>& entries) {
        seen.insert(seen.end(), entries.begin(), entries.end());
        writtenBefore = m_written.size();
    });
    ASSERT_TRUE(Take({Volume("a", "100", "56")}));
    EXPECT_EQ(writtenBefore, 0U);
    m_borrowings->Strike({Volume("a", "100", "56")});
    EXPECT_EQ(seen, (std::vector<Borrowed>{Volume("a", "100", "56"), Volume("a", "100", "")}));
}

TEST_F(BorrowingsTest, WhatThereIsNoRoomForIsLeftAsItIs) {
    std::vector<Borrowed> full;
    for (std::size_t number = 0; number < Borrowings::kMost; ++number)
        full.push_back(Volume(std::to_string(number), "100", "56"));
    Make(full);
    EXPECT_FALSE(Take({Volume("one more", "100", "56")}));
    m_scheduler.Advance(std::chrono::seconds(1));
    EXPECT_EQ(m_changes, 0);
    EXPECT_TRUE(m_written.empty());
    EXPECT_EQ(m_borrowings->Of("lamp").size(), Borrowings::kMost);
    EXPECT_EQ(m_log.lines.size(), 1U);
}

TEST_F(BorrowingsTest, AnAnswerThatComesAfterTheEndChangesNothing) {
    Make();
    ASSERT_TRUE(Take({Volume("a", "100", "56")}));
    m_borrowings = nullptr;
    m_written[0].done("");
    m_scheduler.Advance(std::chrono::seconds(1));
    EXPECT_EQ(m_changes, 0);
}

} // namespace

} // namespace controller::audio::test
