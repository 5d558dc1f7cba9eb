#include "controller/audio/page/PagePlayer.h"

#include "controller/audio/Gst.h"
#include "controller/audio/SoundFormat.h"
#include "tests/controller/support/FakeScheduler.h"

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <utility>
#include <vector>

namespace controller::audio::test {

namespace {

using Texts = std::vector<std::string>;

/// Pages that note what they are told.
class FakePages final : public IPageSpeakers, public ISoundAddresses {
public:
    [[nodiscard]] std::string WhyNot(std::uint32_t /*navigator*/) const override { return whyNot; }
    void Listen(std::function<void()> onChange) override { isListening = onChange != nullptr; }
    void Prepare(std::uint32_t navigator, const PageSound& sound) override {
        told.push_back("prepare " + sound.path + " on " + std::to_string(navigator));
    }
    std::uint64_t
    Begin(std::uint32_t navigator, const PageSound& sound, Time at, double gain, OnNews onNews) override {
        if (!whyNot.empty())
            return 0;
        told.push_back("begin " + sound.path + " on " + std::to_string(navigator) + " with " +
                       std::to_string(static_cast<int>(gain * 1000)));
        begin = at;
        tell = std::move(onNews);
        return 7;
    }
    void SetGain(std::uint64_t play, double gain) override {
        told.push_back("gain " + std::to_string(play) + ": " + std::to_string(static_cast<int>(gain * 1000)));
    }
    void End(std::uint64_t play) override { told.push_back("end " + std::to_string(play)); }

    [[nodiscard]] std::string Offer(std::shared_ptr<const std::string> file,
                                    std::chrono::milliseconds /*life*/) override {
        offered.push_back(std::move(file));
        return isFull ? "" : "/" + std::to_string(offered.size());
    }
    void Withdraw(const std::string& /*path*/) override {}
    [[nodiscard]] bool WasFetched(const std::string& /*path*/) const override { return true; }
    [[nodiscard]] Served GetServed() const override { return {}; }

    std::string whyNot;
    bool isFull = false;
    bool isListening = true;
    Texts told;
    Time begin;
    OnNews tell;
    std::vector<std::shared_ptr<const std::string>> offered;
};

std::string TextOf(const PlayerEvent& event) {
    switch (event.kind) {
    case PlayerEvent::Kind::Late:
        return "late";
    case PlayerEvent::Kind::Ended:
        return "ended";
    case PlayerEvent::Kind::Failed:
        return (event.trouble == RoomTrouble::Kind::Refused ? "refused: " : "failed: ") + event.reason;
    case PlayerEvent::Kind::Gone:
        break;
    }
    return "gone";
}

} // namespace

/// A room at a volume of 50 on the page of screen 11, and a clip of half a second.
class PagePlayerTest : public testing::Test {
protected:
    PagePlayerTest() {
        StartGstreamer();
        m_desk->Begin(m_driver, m_pages, m_pages);
        m_timeline = std::make_shared<Timeline>();
    }

    void Start() {
        m_slot = m_timeline->AddRoom(1);
        OutputContext context;
        context.pages = m_desk;
        m_player = std::get<PlayerOutput>(CreatePageOutput("11"))
                       .make({m_timeline, m_slot, 50, std::chrono::milliseconds(400), context});
        m_player->Start([this](const PlayerEvent& event) { m_events.push_back(TextOf(event)); });
    }

    /// Places the clip, as a Play does; when it begins.
    Timeline::Clock::time_point Place(std::int64_t frames = kRate / 2) {
        const auto clip = std::make_shared<Clip>();
        clip->KeepWhole();
        EXPECT_TRUE(clip->Append(std::vector<float>(static_cast<std::size_t>(frames) * kChannels, 0.5F)));
        clip->Finish();
        return Place(clip);
    }
    Timeline::Clock::time_point Place(const std::shared_ptr<Clip>& clip) {
        const auto begin =
            m_timeline->StartClip(clip, FramesOf(std::chrono::milliseconds(400)), std::chrono::seconds(0));
        m_driver.DoPosted();
        return begin.value_or(Timeline::Clock::time_point());
    }

    void ExpectFailed(const std::string& reason) const {
        EXPECT_EQ(m_events, (Texts{"failed: the page of screen 11 " + reason, "gone"}));
        EXPECT_EQ(m_pages.told.back(), "end 7");
    }

    FakeScheduler m_driver;
    FakePages m_pages;
    std::shared_ptr<PageDesk> m_desk =
        std::make_shared<PageDesk>(std::make_shared<Mailbox>(static_cast<IScheduler&>(m_driver)));
    std::shared_ptr<Timeline> m_timeline;
    std::shared_ptr<RoomSlot> m_slot;
    std::shared_ptr<IRoomPlayer> m_player;
    Texts m_events;
};

TEST_F(PagePlayerTest, TellsItsPageWhatToPlayWhenAndEndsWithTheClip) {
    Start();
    const auto begin = Place();
    EXPECT_EQ(m_pages.told, Texts{"begin /1 on 11 with 125"});
    EXPECT_EQ(m_pages.begin, begin);
    EXPECT_EQ(m_pages.offered.at(0)->size(), 44U + kRate / 2 * 4);
    m_pages.tell(PageNews::Started);
    m_player->SetVolume(100);
    EXPECT_EQ(m_pages.told.back(), "gain 7: 1000");
    EXPECT_TRUE(m_events.empty());
    m_driver.Advance(std::chrono::seconds(2));
    EXPECT_EQ(m_events, (Texts{"ended", "gone"}));
    EXPECT_EQ(m_timeline->StateOf(*m_slot), RoomSlot::State::Done);
    EXPECT_EQ(m_driver.Waiting(), 0U);
}

TEST_F(PagePlayerTest, SaysWhyItsPageIsNotHeardAtTheStartAndWhenTheClipComes) {
    m_pages.whyNot = "nobody has tapped";
    Start();
    EXPECT_EQ(m_events, (Texts{"refused: nobody has tapped", "gone"}));
    m_pages.whyNot.clear();
    m_events.clear();
    Start();
    m_pages.whyNot = "it is closed";
    (void)Place();
    EXPECT_EQ(m_events, (Texts{"refused: it is closed", "gone"}));
    EXPECT_TRUE(m_pages.told.empty());
}

TEST_F(PagePlayerTest, APageThatDoesNotBeginInTimeIsToldToStop) {
    Start();
    (void)Place(std::int64_t{5} * kRate);
    m_driver.Advance(std::chrono::milliseconds(1800));
    EXPECT_TRUE(m_events.empty());
    m_driver.Advance(std::chrono::milliseconds(200));
    ExpectFailed("did not begin to play in time");
}

TEST_F(PagePlayerTest, APageThatHasNotBegunByTheEndOfAShortClipIsNotHeard) {
    Start();
    (void)Place(kRate / 10);
    m_driver.Advance(std::chrono::milliseconds(700));
    ExpectFailed("did not begin to play in time");
}

TEST_F(PagePlayerTest, NobodyWaitsForARoomWhosePageIsNotHeard) {
    const auto other = m_timeline->AddRoom(2);
    EXPECT_TRUE(m_timeline->SetRunning(*other, false));
    m_pages.whyNot = "nobody has tapped";
    Start();
    const auto clip = std::make_shared<Clip>();
    auto begin =
        std::async(std::launch::async, [&] { return m_timeline->StartClip(clip, 0, std::chrono::hours(1)); });
    const auto state = begin.wait_for(std::chrono::seconds(20));
    clip->Abandon();
    EXPECT_EQ(state, std::future_status::ready);
    EXPECT_TRUE(begin.get());
}

TEST_F(PagePlayerTest, APageThatSaysAgainAndAgainThatItIsLateIsHeardOnce) {
    Start();
    (void)Place();
    for (int time = 0; time < 3; ++time)
        m_pages.tell(PageNews::Late);
    EXPECT_EQ(m_events, Texts{"late"});
}

TEST_F(PagePlayerTest, APageThatBeginsLatePlaysToTheEnd) {
    Start();
    (void)Place(std::int64_t{5} * kRate);
    m_pages.tell(PageNews::Late);
    EXPECT_EQ(m_events, Texts{"late"});
    m_driver.Advance(std::chrono::seconds(6));
    EXPECT_EQ(m_events, (Texts{"late", "ended", "gone"}));
}

TEST_F(PagePlayerTest, APageThatGoesIsSilencedStopsOrCannotPlayIsTheRoomsTrouble) {
    const std::vector<std::pair<PageNews, std::string>> cases{
        {PageNews::Gone, "went away while it played"},
        {PageNews::Silenced, "was silenced while it played"},
        {PageNews::Ended, "stopped before the end"},
        {PageNews::Failed, "cannot play the sound"}};
    for (const auto& [news, reason] : cases) {
        m_timeline = std::make_shared<Timeline>();
        m_events.clear();
        Start();
        (void)Place(std::int64_t{5} * kRate);
        m_pages.tell(PageNews::Started);
        m_pages.tell(news);
        ExpectFailed(reason);
        EXPECT_EQ(m_driver.Waiting(), 0U);
    }
}

TEST_F(PagePlayerTest, WhatIsStoppedFadesOutOnThePageAndEnds) {
    Start();
    (void)Place(std::int64_t{5} * kRate);
    EXPECT_TRUE(m_timeline->FadeOut());
    m_driver.DoPosted();
    EXPECT_EQ(m_pages.told.back(), "end 7");
    EXPECT_TRUE(m_events.empty());
    m_driver.Advance(std::chrono::milliseconds(200));
    EXPECT_EQ(m_events, (Texts{"ended", "gone"}));
}

TEST_F(PagePlayerTest, ARoomThatLeavesIsHeardNoMoreAndPlaysNothingThatComesLater) {
    Start();
    (void)Place();
    m_player->Stop();
    EXPECT_EQ(m_pages.told.back(), "end 7");
    EXPECT_EQ(m_events, Texts{"gone"});
    m_player->Abort();
    EXPECT_EQ(m_events, Texts{"gone"});

    m_timeline = std::make_shared<Timeline>();
    m_pages.told.clear();
    Start();
    m_player->Stop();
    (void)Place();
    EXPECT_TRUE(m_pages.told.empty());
}

TEST_F(PagePlayerTest, ASoundWithoutAFileIsSaid) {
    Start();
    const auto broken = std::make_shared<Clip>();
    broken->KeepWhole();
    broken->Fail("it is broken");
    (void)Place(broken);
    EXPECT_EQ(m_events,
              (Texts{"failed: the sound is too long for a page, or cannot be read to its end", "gone"}));
    m_events.clear();
    m_timeline = std::make_shared<Timeline>();
    m_pages.isFull = true;
    Start();
    (void)Place();
    EXPECT_EQ(m_events, (Texts{"failed: the sound cannot be offered to pages", "gone"}));
}

TEST_F(PagePlayerTest, WhatIsPreparedIsOfferedOnceAndToWhomeverPlaysTheSame) {
    OutputContext context;
    context.pages = m_desk;
    const auto page = std::get<PlayerOutput>(CreatePageOutput("11"));
    const auto file = std::make_shared<const std::string>("sound");
    page.prepare(context, file);
    page.prepare(context, std::make_shared<const std::string>("sound"));
    page.prepare(context, std::make_shared<const std::string>("other"));
    page.prepare(context, nullptr);
    m_driver.Advance(PageDesk::kLife / 2);
    page.prepare(context, std::make_shared<const std::string>("other"));
    EXPECT_EQ(m_pages.told,
              (Texts{"prepare /1 on 11", "prepare /1 on 11", "prepare /2 on 11", "prepare /3 on 11"}));
}

TEST_F(PagePlayerTest, WhetherPagesWouldBeHeardIsAskedOnAnyThread) {
    OutputContext context;
    context.pages = m_desk;
    const auto ask = [&] {
        auto answers = std::async(std::launch::async, [&] {
            return AskPage(std::vector<std::string>{"11", "12"}, context);
        });
        m_driver.DoNextPosted();
        return answers.get();
    };
    EXPECT_EQ(ask(), std::vector<Health>(2, {Health::State::Healthy, ""}));
    m_pages.whyNot = "nobody has tapped";
    EXPECT_EQ(ask(), std::vector<Health>(2, {Health::State::Unheard, "nobody has tapped"}));
}

TEST_F(PagePlayerTest, PagesThatWouldBeHeardAreFound) {
    OutputContext context;
    context.pages = m_desk;
    const auto find = [&] {
        auto answers = std::async(std::launch::async,
                                  [&] { return FindPages(std::vector<std::string>{"11"}, context); });
        m_driver.DoNextPosted();
        return answers.get();
    };
    const auto found = find();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].name, "Screen 11");
    EXPECT_EQ(LineFor(found[0].output), "output: {page: \"11\"}");
    m_pages.whyNot = "nobody has tapped";
    EXPECT_TRUE(find().empty());
}

TEST_F(PagePlayerTest, WithoutScreensNoPagePlays) {
    m_desk->Close();
    EXPECT_FALSE(m_pages.isListening);
    Start();
    EXPECT_EQ(m_events, (Texts{"refused: there is no way to the pages of screens", "gone"}));
}

} // namespace controller::audio::test
