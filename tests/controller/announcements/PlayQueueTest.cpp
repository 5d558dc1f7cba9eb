#include "controller/announcements/PlayQueue.h"

#include "tests/controller/announcements/AnnouncementsFixture.h"

namespace controller {

namespace {

using std::chrono::seconds;

/// What the disk holds; it answers when the test lets it.
class FakeQueueStore final : public IQueueStore {
public:
    void WriteQueue(QueuedRows written, WriteDone done) override {
        ++writes;
        rows = std::move(written);
        waiting.push_back(std::move(done));
        if (isAnswering)
            Answer("");
    }
    void Answer(const std::string& error) {
        for (const WriteDone& done : std::exchange(waiting, {}))
            done(error);
    }

    QueuedRows rows;
    std::vector<WriteDone> waiting;
    bool isAnswering = true;
    int writes = 0;
};

/// Announcements 1 to 4, each of which plays for 30 s.
class PlayQueueTest : public AnnouncementsTest {
protected:
    PlayQueueTest() {
        m_host.fired = [this](std::uint32_t id) {
            m_fired.push_back(id);
            m_playing.EventFired(id);
        };
        m_host.timers.SetDriverTimerListener([this] { m_playing.DriverTimerDone(); });
        for (const char* name : {"Two", "Three", "Four"})
            (void)Add(name);
        (void)m_events.Take();
    }

    PlayQueue::Done Noted() {
        return [this](const PlayQueue::Outcome& outcome) {
            ++m_told;
            m_last = outcome;
        };
    }

    void Ask(const Ids& ids) {
        for (const std::uint32_t id : ids)
            m_queue.Ask(id, Noted());
    }

    [[nodiscard]] Ids Waiting() const {
        Ids ids;
        for (const Queued& one : m_queue.Waiting())
            ids.push_back(one.announcement);
        return ids;
    }

    [[nodiscard]] Ids OnDisk() const {
        Ids ids;
        for (const QueuedRow& row : m_disk.rows)
            ids.push_back(row.announcement);
        return ids;
    }

    void PlayToTheEnd(int count) {
        while (count-- > 0)
            m_host.scheduler.Advance(seconds(34));
    }

    std::uint32_t AddPassing() { return m_announcements.AddPassing(Made("For once")).announcement->id; }

    FakeQueueStore m_disk;
    NowPlaying m_playing{m_host.timers, m_feed};
    std::function<void(std::function<void()>)> m_prepare = [](const std::function<void()>& ready) {
        ready();
    };
    PlayQueue m_queue{{m_announcements, m_playing, m_disk, m_feed, m_host.scheduler,
                       [this](const Announcement& /*announcement*/, std::function<void()> ready) {
                           m_prepare(std::move(ready));
                       }}};
    PlayQueue::Outcome m_last;
    int m_told = 0;
};

TEST_F(PlayQueueTest, WithNothingPlayingTheAgentIsAskedAtOnce) {
    Ask({2});
    EXPECT_EQ(m_fired, Ids{2});
    EXPECT_EQ(m_told, 1);
    EXPECT_EQ(m_last.entry, 1U);
    EXPECT_EQ(m_last.asked.announcement->name, "Two");
    EXPECT_EQ(m_events.Take(), (Texts{"asked for 2", "started 2"}));
    EXPECT_EQ(m_disk.writes, 0);
    EXPECT_TRUE(m_queue.Waiting().empty());
}

TEST_F(PlayQueueTest, WhatIsAskedForMeanwhileWaitsOnTheDiskAndPlaysInItsTurn) {
    Ask({1});
    (void)m_events.Take();
    const auto before = std::chrono::system_clock::now();
    Ask({3, 2});
    EXPECT_EQ(m_events.Take(), (Texts{"asked for 3", "queue 3", "asked for 2", "queue 3 2"}));
    EXPECT_EQ(OnDisk(), (Ids{3, 2}));
    const auto waiting = m_queue.Waiting();
    ASSERT_EQ(waiting.size(), 2U);
    EXPECT_EQ(waiting[0].entry, 2U);
    EXPECT_EQ(waiting[0].name, "Three");
    EXPECT_GE(waiting[0].askedAt, before);
    EXPECT_EQ(waiting[1].entry, 3U);

    PlayToTheEnd(3);
    EXPECT_EQ(m_fired, (Ids{1, 3, 2}));
    EXPECT_EQ(OnDisk(), Ids{});
    const Texts events = m_events.Take();
    const Texts queues{"queue 2", "queue"};
    Texts told;
    std::copy_if(events.begin(), events.end(), std::back_inserter(told),
                 [](const std::string& text) { return text.rfind("queue", 0) == 0; });
    EXPECT_EQ(told, queues);
}

TEST_F(PlayQueueTest, WhatPlaysOrWaitsIsNotPutIntoTheQueueOnceMore) {
    Ask({1, 2});
    Ask({2});
    EXPECT_EQ(m_last.entry, 2U);
    Ask({1});
    EXPECT_EQ(m_last.entry, 0U);
    EXPECT_EQ(Waiting(), Ids{2});
    EXPECT_EQ(m_told, 4);
}

TEST_F(PlayQueueTest, OneThatIsNotThereIsNotAskedFor) {
    Ask({99});
    EXPECT_EQ(m_told, 1);
    EXPECT_EQ(m_last.asked.answer.kind, AgentAnswer::Kind::Unknown);
    EXPECT_EQ(m_last.asked.answer.text, "there is no announcement 99");
    EXPECT_EQ(m_events.Take(), Texts{});
}

TEST_F(PlayQueueTest, WhatWaitsIsAnsweredWhenTheDiskHasIt) {
    Ask({1});
    m_disk.isAnswering = false;
    Ask({2});
    EXPECT_EQ(m_told, 1);
    m_disk.Answer("full");
    EXPECT_EQ(m_told, 2);
    EXPECT_EQ(m_last.asked.notSaved, "full");
    EXPECT_EQ(m_last.entry, 2U);
    EXPECT_EQ(Waiting(), Ids{2}) << "it waits all the same";
}

TEST_F(PlayQueueTest, WhatIsTakenBackIsNotPlayed) {
    Ask({1, 2, 3});
    int answers = 0;
    const auto done = [&answers](const std::string& /*error*/) {
        ++answers;
    };
    EXPECT_TRUE(m_queue.Remove(2, done));
    EXPECT_FALSE(m_queue.Remove(2, done));
    EXPECT_FALSE(m_queue.Remove(1, done)) << "it plays";
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(OnDisk(), Ids{3});
    EXPECT_EQ(m_events.Take().back(), "queue 3");
    PlayToTheEnd(2);
    EXPECT_EQ(m_fired, (Ids{1, 3}));
}

TEST_F(PlayQueueTest, WhatIsMovedPlaysInItsNewTurn) {
    Ask({1, 2, 3, 4});
    const auto nobody = [](const std::string& /*error*/) {
    };
    EXPECT_TRUE(m_queue.Move(4, 2, nobody));
    EXPECT_EQ(Waiting(), (Ids{4, 2, 3}));
    EXPECT_TRUE(m_queue.Move(4, 0, nobody));
    EXPECT_EQ(Waiting(), (Ids{2, 3, 4}));
    EXPECT_TRUE(m_queue.Move(3, 3, nobody));
    EXPECT_FALSE(m_queue.Move(3, 99, nobody));
    EXPECT_FALSE(m_queue.Move(99, 3, nobody));
    EXPECT_TRUE(m_queue.Move(3, 2, nobody));
    EXPECT_EQ(OnDisk(), (Ids{3, 2, 4}));
    PlayToTheEnd(4);
    EXPECT_EQ(m_fired, (Ids{1, 3, 2, 4}));
}

TEST_F(PlayQueueTest, WhatTheAgentHasInItsOwnQueueGoesBefore) {
    Ask({1, 2});
    m_announcements.Command("execute_announcement", {{"id", "3"}}, Note());
    EXPECT_EQ(Waiting(), Ids{2});
    PlayToTheEnd(3);
    EXPECT_EQ(m_fired, (Ids{1, 3, 2}));
}

TEST_F(PlayQueueTest, OneThatIsDeletedWaitsNoMore) {
    Ask({1, 2, 3});
    m_announcements.Remove(2, Note());
    EXPECT_EQ(Waiting(), Ids{3});
    EXPECT_EQ(OnDisk(), Ids{3});
    PlayToTheEnd(2);
    EXPECT_EQ(m_fired, (Ids{1, 3}));
}

TEST_F(PlayQueueTest, TheAgentIsAskedWhenTheNextOneIsReadyAndNotBefore) {
    std::vector<std::function<void()>> ready;
    m_prepare = [&ready](std::function<void()> callback) {
        ready.push_back(std::move(callback));
    };
    Ask({2, 3});
    PlayToTheEnd(1);
    EXPECT_EQ(m_fired, Ids{});
    EXPECT_EQ(Waiting(), (Ids{2, 3}));
    ASSERT_EQ(ready.size(), 1U) << "one after the other";
    ready[0]();
    PlayToTheEnd(1);
    EXPECT_EQ(m_fired, Ids{2});
    ASSERT_EQ(ready.size(), 2U);
    ready[1]();
    ready[1]();
    PlayToTheEnd(1);
    EXPECT_EQ(m_fired, (Ids{2, 3}));
}

TEST_F(PlayQueueTest, WhatIsTakenBackOrOvertakenWhileItIsMadeReadyIsNotPlayedThen) {
    std::vector<std::function<void()>> ready;
    m_prepare = [&ready](std::function<void()> callback) {
        ready.push_back(std::move(callback));
    };
    Ask({2, 3, 4});
    EXPECT_TRUE(m_queue.StopPreparing());
    PlayToTheEnd(1);
    EXPECT_TRUE(m_queue.Move(3, 2, [](const std::string& /*error*/) {}));
    PlayToTheEnd(1);
    ASSERT_EQ(ready.size(), 3U);
    ready[0]();
    ready[1]();
    PlayToTheEnd(1);
    EXPECT_EQ(m_fired, Ids{});
    ready[2]();
    PlayToTheEnd(0);
    m_host.scheduler.Advance(seconds(1));
    EXPECT_EQ(m_fired, Ids{4});
    EXPECT_FALSE(m_queue.StopPreparing()) << "it plays";
}

TEST_F(PlayQueueTest, WhatIsThereForOnePlayIsShownToNobodyAndGoneWhenThatIsOver) {
    const std::uint32_t id = AddPassing();
    EXPECT_EQ(Names(), (Texts{"1 One", "2 Two", "3 Three", "4 Four"}));
    EXPECT_EQ(m_announcements.WithPassing().size(), 5U);
    Ask({id});
    EXPECT_EQ(m_announcements.NameOf(id), "For once");
    EXPECT_EQ(m_fired, Ids{id});
    PlayToTheEnd(1);
    EXPECT_FALSE(m_announcements.Find(id));
    EXPECT_EQ(m_announcements.WithPassing().size(), 4U);
    Texts events = m_events.Take();
    events.erase(std::remove(events.begin(), events.end(), "saved"), events.end());
    EXPECT_EQ(events, (Texts{"asked for 5", "started 5", "ended 5"}));
}

TEST_F(PlayQueueTest, WhatIsThereForOnePlayIsGoneWhenItIsTakenBack) {
    const std::uint32_t id = AddPassing();
    Ask({1, id});
    EXPECT_TRUE(m_queue.Remove(2, [](const std::string& /*error*/) {}));
    EXPECT_FALSE(m_announcements.Find(id));
}

TEST_F(PlayQueueTest, AsManyAsMayWaitMayWait) {
    Ask({1});
    for (std::size_t count = 0; count < PlayQueue::kMost; ++count)
        Ask({AddPassing()});
    EXPECT_FALSE(m_last.isFull);
    Ask({2});
    EXPECT_TRUE(m_last.isFull);
    EXPECT_EQ(m_last.entry, 0U);
    EXPECT_EQ(m_queue.Waiting().size(), PlayQueue::kMost);
    EXPECT_EQ(OnDisk().size(), PlayQueue::kMost);
}

TEST_F(PlayQueueTest, AtAStartWhatWaitsIsPlayedUnlessItWaitedTooLongOrIsGone) {
    const auto now = std::chrono::system_clock::now();
    const auto row = [now](std::uint64_t entry, std::uint32_t id, std::chrono::milliseconds age) {
        const auto at = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()) - age;
        return QueuedRow{entry, id, "Named " + std::to_string(id), at.count()};
    };
    const auto dropped = m_queue.Begin({row(7, 3, PlayQueue::kLongestWait - seconds(1)),
                                        row(5, 2, PlayQueue::kLongestWait + seconds(1)),
                                        row(6, 99, seconds(1)), row(4, 4, seconds(-5))},
                                       now);
    ASSERT_EQ(dropped.size(), 2U);
    EXPECT_EQ(dropped[0].name, "Named 2");
    EXPECT_EQ(dropped[1].name, "Named 99");
    EXPECT_EQ(OnDisk(), (Ids{3, 4}));
    EXPECT_EQ(m_fired, Ids{}) << "not before everything stands";
    PlayToTheEnd(2);
    EXPECT_EQ(m_fired, (Ids{3, 4}));
    Ask({1, 2});
    EXPECT_EQ(m_last.entry, 9U) << "none gets another one's number";
}

TEST_F(PlayQueueTest, AtTheEndOfTheProgramNothingIsHandedOverAndTheDiskKeepsIt) {
    Ask({1, 2});
    m_queue.Close();
    PlayToTheEnd(2);
    EXPECT_EQ(m_fired, Ids{1});
    EXPECT_EQ(OnDisk(), Ids{2});
}

} // namespace

} // namespace controller
