#include "controller/house/NewHouse.h"

#include "controller/audio/SoundFile.h"
#include "controller/house/HouseFile.h"
#include "controller/state/StateText.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sstream>

namespace controller {

namespace {

TEST(NewHouseTest, IsAHouseInOrderWithSoundsAndAnnouncements) {
    const TemporaryFolder folder;
    const auto files = WriteNewHouse(folder.Path() / "new");
    ASSERT_EQ(files.size(), 4U);
    const House house = ReadHouseFile(files[0]);
    EXPECT_EQ(house.rooms.size(), 2U);
    EXPECT_EQ(house.navigators.size(), 2U);
    EXPECT_EQ(state_text::Read(house.firstAnnouncements).size(), 2U);
    for (const std::string name : {"doorbell.wav", "gong.wav"}) {
        const audio::SoundFile sound((house.mediaFolder / name).string());
        EXPECT_EQ(sound.Channels(), 1) << name;
        EXPECT_GT(sound.Frames(), 0) << name;
        EXPECT_LT(std::filesystem::file_size(house.mediaFolder / name), 16384U) << name;
    }
}

TEST(NewHouseTest, TheOutputsThatItsCommentsNameCanBeWrittenAsTheyStandThere) {
    const TemporaryFolder folder;
    const auto file = WriteNewHouse(folder.Path())[0];
    const std::string text = TemporaryFolder::Read(file);
    const std::string head = "    # Where the room is heard:\n";
    std::istringstream lines(text.substr(text.find(head) + head.size()));
    std::size_t outputs = 0;
    for (std::string line; std::getline(lines, line) && line.compare(0, 8, "    #   ") == 0; ++outputs) {
        std::string output = line.substr(8, line.find("  ", 8) - 8);
        if (const std::size_t place = output.find("DESCRIPTION"); place != std::string::npos)
            output.replace(place, std::string("DESCRIPTION").size(), "fakesink");
        const std::string present = "    output: auto\n";
        std::string changed = text;
        changed.replace(changed.find(present), present.size(), "    output: " + output + "\n");
        EXPECT_NO_THROW((void)ReadHouse(changed, folder.Path(), file)) << output;
    }
    EXPECT_EQ(outputs, 9U);
}

TEST(NewHouseTest, NothingIsOverwritten) {
    const TemporaryFolder folder;
    folder.Write("media/gong.wav", "mine");
    EXPECT_THROW(WriteNewHouse(folder.Path()), std::runtime_error);
    EXPECT_EQ(TemporaryFolder::Read(folder.Path() / "media/gong.wav"), "mine");
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "house.yaml"));
}

TEST(NewHouseTest, TheDemoHouseIsWhatANewHouseIs) {
    const TemporaryFolder folder;
    const std::filesystem::path demo = DEMO_FOLDER;
    for (const auto& file : WriteNewHouse(folder.Path())) {
        const auto name = std::filesystem::relative(file, folder.Path());
        EXPECT_EQ(TemporaryFolder::Read(demo / name), TemporaryFolder::Read(file)) << name;
    }
}

} // namespace

} // namespace controller
