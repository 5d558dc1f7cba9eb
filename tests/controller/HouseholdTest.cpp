#include "controller/Household.h"

#include "controller/ModuleFile.h"
#include "controller/audio/DemoSounds.h"
#include "controller/state/Maintenance.h"
#include "controller/state/StateText.h"
#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/NoEngine.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/controller/support/TestLog.h"

#include <boost/asio/io_context.hpp>
#include <gtest/gtest.h>

#include <algorithm>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

constexpr const char* kFirst =
    "<announcements><announcement><id>1</id><name>Dinner</name><audio><file>gong</file></audio>"
    "<video><text>Dinner is ready</text><timeout>600000</timeout></video>"
    "<rooms><room><id>12</id><volume>60</volume></room></rooms>"
    "<navigators><navigator><id>5</id></navigator></navigators></announcement></announcements>";

/// A room and a screen in it, a variable and one announcement; real but for the sound.
class HouseholdTest : public testing::Test {
protected:
    [[nodiscard]] House MakeHouse() const {
        House house;
        house.name = "House";
        house.mediaFolder = m_folder.Path();
        house.dataFolder = m_folder.Path() / "data";
        house.firstAnnouncements = m_folder.Write("first.xml", kFirst);
        house.rooms.push_back({12, "Kitchen", {"silent", ""}, 80, 40, 0});
        house.navigators.push_back({5, "Tablet", 12});
        house.variables.push_back({9, 4, "outside", "cold"});
        return house;
    }

    std::unique_ptr<Household> Open() {
        auto household = std::make_unique<Household>(
            MakeHouse(), Household::Options{FindModuleFile(), false, &m_engine}, m_log.log);
        household->Start();
        return household;
    }

    /// Ends it in order, and gives what was told meanwhile.
    static Texts End(Household& household) {
        EventTexts events(household.Parts().feed);
        int ends = 0;
        household.End([&] {
            ++ends;
            household.Parts().driver.Stop();
        });
        household.Parts().driver.Run();
        EXPECT_EQ(ends, 1);
        return events.Take();
    }

    /// Its one spoken sound has come with its recipe, is spoken, and is played as loud as it is.
    void ExpectDinnerSpoken(House house) {
        Household household(std::move(house), {FindModuleFile(), false, &m_engine}, m_log.log);
        household.Start();
        const ControllerParts parts = household.Parts();
        parts.spoken.Prepare("gong", [&parts] { parts.driver.Stop(); });
        parts.driver.Run();
        parts.driver.Context().restart();
        const SpokenSounds::Sound* const sound = parts.spoken.Get("gong.wav");
        ASSERT_NE(sound, nullptr);
        EXPECT_EQ(sound->recipe, (SpeechRecipe{"Dinner, {outside}", "", 120, "chime"}));
        EXPECT_EQ(sound->rendered.error, "");
        EXPECT_EQ(sound->rendered.text, "Dinner, cold");
        EXPECT_TRUE(std::filesystem::exists(sound->rendered.file));
        EXPECT_TRUE(parts.levels.OfMade(sound->rendered.file, "gong.wav").isAsItIs);
        EXPECT_TRUE(parts.levels.Of(m_folder.Path() / "chime.wav").isAsItIs);
        EXPECT_EQ(parts.announcements.NameOf(1), "Dinner");
        (void)End(household);
    }

    TemporaryFolder m_folder;
    NoEngine m_engine;
    TestLog m_log;
};

bool Has(const Texts& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

TEST_F(HouseholdTest, ANewHouseHasWhatItsFileSays) {
    const auto household = Open();
    const ControllerParts parts = household->Parts();
    EXPECT_EQ(parts.house.name, "House");
    EXPECT_EQ(parts.volumes.Volume(12), 40U);
    EXPECT_EQ(parts.variables.Value(9, 4), "cold");
    EXPECT_EQ(parts.announcements.NameOf(1), "Dinner");
    EXPECT_TRUE(parts.isAgentRunning());
    EXPECT_FALSE(household->IsBusy());
    (void)End(*household);
    EXPECT_FALSE(parts.isAgentRunning());
}

/// What `export` writes of a house is taken by another one, as its first announcements or by `import`.
TEST_F(HouseholdTest, SpokenSoundsAndHowLoudSoundsArePlayedComeAlongIntoAnEmptyHouse) {
    const std::filesystem::path text = m_folder.Path() / "house.xml";
    {
        StateDatabase database(DataFolder(m_folder.Path() / "data").Path());
        database.ReplaceAnnouncements(state_text::Split(kFirst));
        database.WriteSpokenSound({"gong.wav", "Dinner, {outside}", "", 120, "chime"});
        database.WriteSoundLevel({"gong.wav", "", 0, 0, true});
        database.WriteSoundLevel({"chime.wav", "1-2-3", -1800, -200, true});
        database.WriteSoundLevel({"other.wav", "1-2-3", -1800, -200, false});
    }
    maintenance::Export(m_folder.Path() / "data", text);
    m_folder.Write("chime.wav", demosounds::Gong());
    for (const bool isFirst : {true, false}) {
        const std::filesystem::path data = m_folder.Path() / (isFirst ? "first" : "imported");
        House house = MakeHouse();
        house.dataFolder = data;
        house.firstAnnouncements = isFirst ? text : std::filesystem::path();
        if (!isFirst)
            (void)maintenance::Import(data, text);
        ExpectDinnerSpoken(std::move(house));
        const StoredState state = StateDatabase(data).Read();
        EXPECT_EQ(state.spokenSounds,
                  (std::vector<SpokenSoundRow>{{"gong.wav", "Dinner, {outside}", "", 120, "chime"}}));
        EXPECT_EQ(state.announcements.size(), 1U);
    }
}

TEST_F(HouseholdTest, WhatWasSaidOfASoundThatIsGoneIsForgotten) {
    m_folder.Write("chime.wav", demosounds::Gong());
    {
        StateDatabase database(DataFolder(m_folder.Path() / "data").Path());
        database.ReplaceAnnouncements({});
        database.WriteSpokenSound({"spoken.wav", "Dinner", "", 100, ""});
        for (const char* name : {"chime.wav", "gone.wav", "spoken.wav"})
            database.WriteSoundLevel({name, "", 0, 0, true});
    }
    const auto household = Open();
    const ControllerParts parts = household->Parts();
    parts.feed.Publish(events::MediaRemoved{"chime.wav"});
    EXPECT_FALSE(parts.levels.Of(m_folder.Path() / "chime.wav").isAsItIs);
    (void)End(*household);
    const StoredState state = StateDatabase(m_folder.Path() / "data").Read();
    for (const SoundLevelRow& row : state.soundLevels)
        EXPECT_TRUE(row.name == "spoken.wav" || !row.isAsItIs) << row.name;
    EXPECT_EQ(state.spokenSounds.size(), 1U);
}

TEST_F(HouseholdTest, KilledInMidPlayARoomGoesBackToItsVolumeAlsoWhenItsHighestWasLowered) {
    struct Case {
        JournalEntry entry;
        unsigned volumeAfter;
    };
    (void)End(*Open());
    for (const Case& left : {Case{{12, 30, 90}, 30}, Case{{12, 90, 20}, 80}, Case{{12, 5000, 20}, 80}}) {
        StateDatabase(m_folder.Path() / "data").WriteRoom({12, *left.entry.volumeSet, left.entry});
        const auto household = Open();
        EXPECT_EQ(household->Parts().volumes.Volume(12), left.volumeAfter);
        (void)End(*household);
        const StoredState state = StateDatabase(m_folder.Path() / "data").Read();
        EXPECT_TRUE(state.journal.empty());
        EXPECT_EQ(state.volumes.at(12), left.volumeAfter);
    }
}

TEST_F(HouseholdTest, WhatWasSetIsThereAtTheNextStart) {
    {
        const auto household = Open();
        const ControllerParts parts = household->Parts();
        EXPECT_TRUE(parts.volumes.Set(12, 55, [](const std::string& error) { EXPECT_EQ(error, ""); }));
        (void)parts.variables.Set(9, 4, "warm", [](const std::string& error) { EXPECT_EQ(error, ""); });
        (void)End(*household);
    }
    const auto household = Open();
    EXPECT_EQ(household->Parts().volumes.Volume(12), 55U);
    EXPECT_EQ(household->Parts().variables.Value(9, 4), "warm");
    EXPECT_EQ(household->Parts().announcements.All()->size(), 1U);
}

TEST_F(HouseholdTest, WhatWasThereForOnePlayIsGoneAtTheNextStart) {
    {
        StateDatabase database(DataFolder(m_folder.Path() / "data").Path());
        const auto row = [](int id, const std::string& house) {
            const std::string text = std::to_string(id);
            return AnnouncementRow{
                id, "<announcement><id>" + text + "</id><name>A" + text + "</name></announcement>", house};
        };
        database.ReplaceAnnouncements({row(1, ""), row(2, "<house><passing/></house>"),
                                       row(3, "<house><tag>kitchen</tag></house>"),
                                       row(4, "<house><tag>kitchen</tag><passing/></house>")});
    }
    {
        const auto household = Open();
        const auto all = household->Parts().announcements.All();
        ASSERT_EQ(all->size(), 2U);
        EXPECT_EQ((*all)[0]->name, "A1");
        EXPECT_EQ((*all)[1]->name, "A3");
        (void)End(*household);
    }
    const StoredState state = StateDatabase(m_folder.Path() / "data").Read();
    ASSERT_EQ(state.announcements.size(), 2U);
    EXPECT_EQ(state.announcements[1].key, 3);
}

TEST_F(HouseholdTest, WhatWaitedIsPlayedAtTheNextStartAndWhatWaitedTooLongStandsInTheHistory) {
    const auto ago = [](std::chrono::minutes age) {
        const auto at = std::chrono::system_clock::now().time_since_epoch() - age;
        return std::chrono::duration_cast<std::chrono::milliseconds>(at).count();
    };
    {
        StateDatabase database(DataFolder(m_folder.Path() / "data").Path());
        const auto row = [](int id) {
            const std::string text = std::to_string(id);
            return AnnouncementRow{
                id, "<announcement><id>" + text + "</id><name>A" + text + "</name></announcement>",
                "<house><passing/></house>"};
        };
        database.ReplaceAnnouncements({row(2), row(3), row(4)});
        database.WriteQueue(
            {{7, 2, "A2", ago(std::chrono::minutes(11))}, {8, 3, "A3", ago(std::chrono::minutes(9))}});
    }
    {
        const auto household = Open();
        EXPECT_TRUE(household->IsBusy());
        EXPECT_TRUE(household->Parts().announcements.Find(3));
        EXPECT_EQ(household->Parts().announcements.WithPassing().size(), 1U);
        (void)End(*household);
    }
    StateDatabase database(m_folder.Path() / "data");
    const StoredState state = database.Read();
    ASSERT_EQ(state.queue.size(), 1U);
    EXPECT_EQ(state.queue[0].entry, 8U);
    EXPECT_EQ(state.queue[0].name, "A3");
    ASSERT_EQ(state.announcements.size(), 1U);
    const auto history = database.ReadHistory(10);
    ASSERT_EQ(history.size(), 1U);
    EXPECT_EQ(history[0].name, "A2");
    EXPECT_EQ(history[0].announcement, 2U);
    EXPECT_EQ(history[0].outcome, "dropped");
    EXPECT_LT(history[0].startedAt, history[0].endedAt);
}

TEST_F(HouseholdTest, WhatAKilledUploadHasLeftIsSweptAtTheStart) {
    m_folder.Write(".draft-0123456789abcdef0123456789abcdef.tmp", "half a sound");
    m_folder.Write("chime.wav", "somebody's");
    const auto household = Open();
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Texts{"chime.wav", "data", "first.xml"}));
    (void)End(*household);
}

TEST_F(HouseholdTest, AnEndInMidPlayTakesPopupsAwayAndGivesRoomsBack) {
    const auto household = Open();
    const ControllerParts parts = household->Parts();
    const EventFeed::Subscription shown = parts.feed.Subscribe([&](const Event& event) {
        if (std::holds_alternative<events::PopupShown>(event.data))
            parts.driver.Stop();
    });
    parts.announcements.Play(1, [](const Announcements::Outcome& /*outcome*/) {});
    parts.driver.Run();
    parts.driver.Context().restart();
    ASSERT_TRUE(household->IsBusy());
    EXPECT_EQ(parts.popups.Standing().size(), 1U);

    const Texts told = End(*household);

    EXPECT_TRUE(Has(told, "gone 1 on 5 hidden"));
    EXPECT_TRUE(Has(told, "rested 12"));
    EXPECT_TRUE(Has(told, "ended 1"));
    EXPECT_TRUE(parts.popups.Standing().empty());
    EXPECT_EQ(parts.volumes.Volume(12), 40U);
    EXPECT_FALSE(parts.volumes.IsTaken(12));
    EXPECT_FALSE(household->IsBusy());
}

} // namespace

} // namespace controller
