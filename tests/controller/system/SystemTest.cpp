#include "controller/state/DataFolder.h"
#include "controller/state/StateDatabase.h"
#include "controller/state/StateText.h"
#include "tests/controller/audio/Sounds.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/controller/system/ControllerProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>

#include <sys/resource.h>

namespace controller {

namespace {

constexpr int kRate = 48000;
constexpr std::size_t kFrames = kRate / 2;

std::string Announcement(int id, const std::string& file, int delay, int timeout) {
    return "<announcement><id>" + std::to_string(id) + "</id><name>Test " + std::to_string(id) +
           "</name><audio><file>" + file + "</file><delay>" + std::to_string(delay) +
           "</delay></audio><video><file/><text>Hello</text><delay>0</delay><timeout>" +
           std::to_string(timeout) +
           "</timeout></video><rooms><room><id>1</id><volume>100</volume></room><room><id>2</id><volume>50</"
           "volume>"
           "</room></rooms><navigators><navigator><id>11</id></navigator><navigator><id>12</id></navigator>"
           "</navigators></announcement>";
}

/// The program with a house of two rooms that record what they hear, at 40 and at 30.
class SystemTest : public testing::Test {
protected:
    SystemTest() {
        std::filesystem::create_directories(m_folder.Path() / "media");
        audio::test::WriteSound((m_folder.Path() / "media/melody.wav").string(),
                                audio::test::Melody(kFrames, 2), 2, kRate);
        m_folder.Write("first.xml", "<announcements>" + Announcement(1, "melody", 1000, 3000) +
                                        Announcement(2, "missing", 100, 1000) +
                                        Announcement(3, "broken", 100, 1000) + "</announcements>");
        m_folder.Write("house.yaml", R"(name: Test house
media_folder: media
data_folder: data
loudness: as_it_is
first_announcements: first.xml
rooms:
  - {id: 1, name: Kitchen, start_volume: 40, output: {file: takes/kitchen-%n.wav}}
  - {id: 2, name: Hall, start_volume: 30, output: {file: takes/hall-%n.wav}}
navigators:
  - {id: 11, name: Tablet, room: 1}
  - {id: 12, name: Television, room: 2}
variables:
  - {device: 9, variable: 4, name: Outside, value: cold}
)");
    }

    [[nodiscard]] std::string HouseFile() const { return (m_folder.Path() / "house.yaml").string(); }
    /// The arguments, with a free port.
    [[nodiscard]] static std::vector<std::string> Serving(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--port", "0"});
        return arguments;
    }
    [[nodiscard]] std::filesystem::path DataFolderPath() const { return m_folder.Path() / "data"; }
    [[nodiscard]] StoredState OnDisk() const { return StateDatabase(DataFolderPath()).Read(); }
    [[nodiscard]] std::string AnnouncementsOnDisk() const {
        return state_text::ForPeople(OnDisk().announcements);
    }
    [[nodiscard]] audio::test::Recording Take(const std::string& name) const {
        return audio::test::ReadRecording((m_folder.Path() / "takes" / name).string());
    }

    TemporaryFolder m_folder;
};

TEST_F(SystemTest, AnAnnouncementIsHeardWholeAtEachRoomsVolumeInBothRoomsAndNotBeforeItsDelay) {
    ControllerProcess controller(Serving({HouseFile(), "--play", "1"}));
    controller.CloseInput();
    ASSERT_EQ(controller.WaitForEnd(), 0) << controller.Output();
    const auto melody = audio::test::Melody(kFrames, 2);
    const auto kitchen = Take("kitchen-1.wav");
    const auto hall = Take("hall-1.wav");
    ASSERT_GE(kitchen.First(), 0) << controller.Output();
    ASSERT_GE(hall.First(), 0) << controller.Output();
    // The recording begins when the output has opened, at most half a second into the delay of one second.
    EXPECT_GE(kitchen.First(), kRate / 2);
    EXPECT_LE(std::abs(kitchen.First() - hall.First()), kRate / 2) << "opened at very different moments";
    ASSERT_EQ(kitchen.Last() - kitchen.First() + 1, static_cast<std::int64_t>(kFrames));
    ASSERT_GT(hall.Frames(), hall.First() + static_cast<std::int64_t>(kFrames));
    const std::int64_t inKitchen = kitchen.First();
    const std::int64_t inHall = hall.First();
    for (std::size_t frame = 0; frame < kFrames; ++frame) {
        const auto at = static_cast<std::int64_t>(frame);
        ASSERT_EQ(kitchen.At(inKitchen + at, 0), melody[2 * frame]) << frame;
        ASSERT_NEAR(hall.At(inHall + at, 0), melody[2 * frame] * 0.125, 1.0) << frame;
    }
    EXPECT_GE(kitchen.Frames() - 1 - kitchen.Last(), kRate / 10) << "at least 100 ms of silence behind it";
    EXPECT_EQ(OnDisk().volumes, (std::map<std::uint32_t, unsigned>{{1, 40}, {2, 30}}));
    EXPECT_TRUE(OnDisk().journal.empty());
    const auto history = StateDatabase(DataFolderPath()).ReadHistory(5);
    ASSERT_EQ(history.size(), 1U);
    EXPECT_EQ(history[0].name, "Test 1");
    EXPECT_EQ(history[0].rooms, (std::vector<std::uint32_t>{1, 2}));
    EXPECT_EQ(history[0].navigators, (std::vector<std::uint32_t>{11, 12}));
    EXPECT_EQ(history[0].outcome, "ended");
}

TEST_F(SystemTest, AMissingOrBrokenFileIsReportedAndTheRoomsAreRestored) {
    m_folder.Write("media/broken.wav", "RIFF");
    ControllerProcess controller(Serving({HouseFile(), "--play", "2,3"}));
    controller.CloseInput();
    EXPECT_EQ(controller.WaitForEnd(), 0);
    EXPECT_NE(controller.Output().find("missing.wav could not be played: "), std::string::npos);
    EXPECT_NE(controller.Output().find("broken.wav could not be played: "), std::string::npos);
    EXPECT_NE(controller.Output().find("Announcement 3 (Test 3) is over"), std::string::npos);
    EXPECT_TRUE(OnDisk().journal.empty());
    EXPECT_EQ(OnDisk().volumes.at(1), 40U);
    const auto history = StateDatabase(DataFolderPath()).ReadHistory(5);
    ASSERT_EQ(history.size(), 2U);
    EXPECT_EQ(history[0].outcome.find("failed: "), 0U);
}

TEST_F(SystemTest, EndedBySignalInMidPlayItRestoresTheRoomsAndSaves) {
    for (const int signal : {SIGTERM, SIGINT}) {
        ControllerProcess controller(Serving({HouseFile(), "--play", "1"}));
        ASSERT_TRUE(controller.WaitFor("Playing melody.wav in Kitchen, Hall")) << controller.Output();
        EXPECT_EQ(OnDisk().journal.size(), 2U);
        controller.Signal(signal);
        EXPECT_EQ(controller.WaitForEnd(), 0);
        EXPECT_NE(controller.Output().find("Kitchen is back at volume 40"), std::string::npos);
        EXPECT_TRUE(OnDisk().journal.empty());
        EXPECT_EQ(OnDisk().volumes.at(1), 40U);
        EXPECT_EQ(AnnouncementsOnDisk().find("<announcements><announcement><id>1</id>"), 0U);
        EXPECT_EQ(StateDatabase(DataFolderPath()).ReadHistory(1).at(0).outcome, "interrupted");
    }
}

TEST_F(SystemTest, KilledInMidPlayTheRoomsAreRestoredAtTheNextStart) {
    ControllerProcess first(Serving({HouseFile(), "--play", "1"}));
    ASSERT_TRUE(first.WaitFor("melody.wav was played")) << first.Output();
    first.Type("save"); // behind every write of the announcement
    ASSERT_TRUE(first.WaitFor("saved"));
    first.Signal(SIGKILL);
    EXPECT_EQ(first.WaitForEnd(), -SIGKILL);
    EXPECT_EQ(OnDisk().journal.size(), 2U);
    EXPECT_EQ(OnDisk().volumes.at(1), 100U);
    ControllerProcess second(Serving({HouseFile()}));
    second.CloseInput();
    EXPECT_EQ(second.WaitForEnd(), 0);
    EXPECT_NE(
        second.Output().find("Kitchen was left in the middle of an announcement; its volume is 40 again"),
        std::string::npos)
        << second.Output();
    EXPECT_EQ(OnDisk().volumes, (std::map<std::uint32_t, unsigned>{{1, 40}, {2, 30}}));
    EXPECT_TRUE(OnDisk().journal.empty());
}

TEST_F(SystemTest, ARequestThatGotItsReplyIsOnTheDiskAlsoWhenTheProgramIsKilled) {
    const auto file = m_folder.Write("new.xml", Announcement(0, "melody", 0, 0));
    ControllerProcess controller(Serving({HouseFile()}));
    controller.Type("request add_announcement announcement=@" + file.string());
    ASSERT_TRUE(controller.WaitFor("<success>4</success>")) << controller.Output();
    controller.Signal(SIGKILL);
    (void)controller.WaitForEnd();
    EXPECT_NE(AnnouncementsOnDisk().find("<id>4</id>"), std::string::npos);
    ControllerProcess again(Serving({HouseFile()}));
    again.Type("request remove_announcement id=4");
    ASSERT_TRUE(again.WaitFor("<success/>"));
    again.Signal(SIGKILL);
    (void)again.WaitForEnd();
    EXPECT_EQ(AnnouncementsOnDisk().find("<id>4</id>"), std::string::npos);
    EXPECT_NE(AnnouncementsOnDisk().find("<id>3</id>"), std::string::npos);
}

TEST_F(SystemTest, ADiskThatTakesNothingIsToldAndTheChangeIsWrittenWhenItCan) {
    ControllerProcess controller(Serving({HouseFile()}));
    controller.Type("save");
    ASSERT_TRUE(controller.WaitFor("saved"));
    rlimit before{};
    ASSERT_EQ(::prlimit(controller.Process(), RLIMIT_FSIZE, nullptr, &before), 0);
    const rlimit nothing{0, before.rlim_max};
    ASSERT_EQ(::prlimit(controller.Process(), RLIMIT_FSIZE, &nothing, nullptr), 0);
    controller.Type("request remove_announcement id=3");
    // A line of the log may come between.
    EXPECT_TRUE(controller.WaitFor("<success/>")) << controller.Output();
    EXPECT_TRUE(controller.WaitFor("\nwarning: this is not on the disk yet: ")) << controller.Output();
    controller.Type("request get_announcements");
    EXPECT_TRUE(controller.WaitFor("<id>2</id>"));
    ASSERT_EQ(::prlimit(controller.Process(), RLIMIT_FSIZE, &before, nullptr), 0);
    controller.CloseInput();
    EXPECT_EQ(controller.WaitForEnd(), 0) << controller.Output();
    EXPECT_EQ(AnnouncementsOnDisk().find("<id>3</id>"), std::string::npos);
}

TEST_F(SystemTest, TheConsoleAnswersEveryLine) {
    ControllerProcess controller(Serving({HouseFile()}));
    for (const std::string line :
         {"play 77", "play x", "request get_announcement id=77", "command ANNOUNCEMENT_DISMISSED", "save",
          "request no_such", "nonsense", "play", "quit"})
        controller.Type(line);
    EXPECT_EQ(controller.WaitForEnd(), 0);
    std::string output = controller.Output();
    const std::size_t address = output.find("Open http://");
    ASSERT_NE(address, std::string::npos);
    output.erase(address, output.find('\n', address) + 1 - address);
    EXPECT_EQ(output,
              "Test house: 2 rooms, 2 navigators, 3 announcements.\n"
              "error: there is no announcement \"77\"; an id or a name is right: 1 (Test 1), 2 (Test 2), "
              "3 (Test 3)\n"
              "error: there is no announcement \"x\"; an id or a name is right: 1 (Test 1), 2 (Test 2), "
              "3 (Test 3)\n"
              "<announcement/>\n"
              "ok\n"
              "saved\n"
              "error: the agent has no no_such\n"
              "error: there is no command nonsense; `help` lists them\n"
              "error: it is written `play ID|NAME`\n");
}

TEST_F(SystemTest, DismissedAPopupIsGoneFromEveryScreen) {
    ControllerProcess controller(Serving({HouseFile(), "--play", "1"}));
    ASSERT_TRUE(controller.WaitFor("Popup on Television: \"Hello\" (3 s, OK button)"));
    controller.Type("dismiss");
    EXPECT_TRUE(
        controller.WaitFor("Popup on Tablet is gone: dismissed\nPopup on Television is gone: dismissed\n"));
}

TEST_F(SystemTest, TwoControllersNeverShareADataFolder) {
    ControllerProcess first(Serving({HouseFile()}));
    first.Type("save");
    ASSERT_TRUE(first.WaitFor("saved"));
    ControllerProcess second(Serving({HouseFile()}));
    EXPECT_EQ(second.WaitForEnd(), 1);
    EXPECT_NE(second.Output().find("is in use by another controller (process " +
                                   std::to_string(first.Process()) + ")"),
              std::string::npos)
        << second.Output();
}

TEST_F(SystemTest, ADamagedDatabaseStopsTheStartAndRecoverGoesOn) {
    std::filesystem::create_directories(DataFolderPath());
    m_folder.Write("data/controller.db", std::string(8192, 'x'));
    ControllerProcess stopped(Serving({HouseFile()}));
    EXPECT_EQ(stopped.WaitForEnd(), 3);
    EXPECT_NE(stopped.Output().find("--recover"), std::string::npos) << stopped.Output();
    ControllerProcess recovered(Serving({HouseFile(), "--recover"}));
    recovered.CloseInput();
    EXPECT_EQ(recovered.WaitForEnd(), 0);
    EXPECT_NE(recovered.Output().find("has been set aside as"), std::string::npos);
}

TEST_F(SystemTest, AStateThatTheAgentCannotTakeStopsTheStart) {
    {
        StateDatabase database((std::filesystem::create_directories(DataFolderPath()), DataFolderPath()));
        database.WriteAnnouncement({1, "<announcement>", ""});
        database.KeepAnnouncements();
    }
    ControllerProcess controller(Serving({HouseFile()}));
    EXPECT_EQ(controller.WaitForEnd(), 3);
    EXPECT_NE(controller.Output().find("cannot be used: the saved state is not XML"), std::string::npos)
        << controller.Output();
}

TEST_F(SystemTest, WithoutItsModuleTheProgramSaysWhichFileItMisses) {
    ControllerProcess controller(Serving({HouseFile(), "--module", "/nowhere/agent.so"}));
    EXPECT_EQ(controller.WaitForEnd(), 1);
    EXPECT_NE(controller.Output().find("/nowhere/agent.so"), std::string::npos);
}

TEST_F(SystemTest, AHouseFileWithMistakesEndsWithTheirListAndStatus2) {
    const auto house = m_folder.Write("bad.yaml", "name: H\ncolour: red\n");
    ControllerProcess controller({"check", house.string()});
    EXPECT_EQ(controller.WaitForEnd(), 2);
    EXPECT_NE(controller.Output().find(house.string() + ":2: colour: is not known"), std::string::npos);
    ControllerProcess wrong({"--nonsense"});
    EXPECT_EQ(wrong.WaitForEnd(), 2);
    ControllerProcess good({"check", HouseFile()});
    EXPECT_EQ(good.WaitForEnd(), 0);
}

TEST_F(SystemTest, AHouseIsBegunExportedAndImported) {
    const std::string folder = (m_folder.Path() / "new").string();
    ControllerProcess init({"init", folder});
    ASSERT_EQ(init.WaitForEnd(), 0) << init.Output();
    const std::string house = folder + "/house.yaml";
    ControllerProcess early({"export", house});
    EXPECT_EQ(early.WaitForEnd(), 1);
    ControllerProcess run(Serving({house}));
    run.CloseInput();
    ASSERT_EQ(run.WaitForEnd(), 0) << run.Output();
    const auto text = m_folder.Path() / "state.xml";
    ControllerProcess exported({"export", house, text.string()});
    ASSERT_EQ(exported.WaitForEnd(), 0) << exported.Output();
    EXPECT_NE(TemporaryFolder::Read(text).find("<name>Doorbell</name>"), std::string::npos);
    ControllerProcess imported({"import", house, (m_folder.Path() / "first.xml").string()});
    EXPECT_EQ(imported.WaitForEnd(), 0) << imported.Output();
    EXPECT_NE(state_text::ForPeople(StateDatabase(folder + "/data").Read().announcements).find("Test 1"),
              std::string::npos);
    const std::string words = "names what this house does not have";
    EXPECT_EQ(imported.Output().find(words), std::string::npos);
    std::ofstream(text)
        << "<announcements><announcement><id>7</id><name>Far</name><rooms><room><id>99</id></room>"
           "</rooms><navigators><navigator><id>98</id></navigator></navigators></announcement>"
           "</announcements>";
    ControllerProcess foreign({"import", house, text.string()});
    EXPECT_EQ(foreign.WaitForEnd(), 0);
    EXPECT_NE(foreign.Output().find("announcement 7 " + words + ": room 99, navigator 98\n"),
              std::string::npos)
        << foreign.Output();
    ControllerProcess refused({"import", house, house});
    EXPECT_EQ(refused.WaitForEnd(), 1);
    ControllerProcess again({"init", folder});
    EXPECT_EQ(again.WaitForEnd(), 1);
}

} // namespace

} // namespace controller
