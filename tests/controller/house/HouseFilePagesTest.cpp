#include "controller/house/HouseFile.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace controller {

/// Room 1 has screen 11, room 2 screens 12 and 13, room 3 none.
class HouseFilePagesTest : public testing::Test {
protected:
    HouseFilePagesTest() { m_folder.Write("media/chime.wav", ""); }

    [[nodiscard]] House Read(const std::string& one,
                             const std::string& two = "silent",
                             const std::string& three = "silent") const {
        const std::string text =
            "name: H\nmedia_folder: media\ndata_folder: data\nrooms:\n"
            "  - {id: 1, name: A, output: " +
            one + "}\n  - {id: 2, name: B, output: " + two + "}\n  - {id: 3, name: C, output: " + three +
            "}\n" +
            "navigators:\n  - {id: 11, name: A, room: 1}\n  - {id: 12, name: B, room: 2}\n"
            "  - {id: 13, name: C, room: 2}\n";
        return ReadHouse(text, m_folder.Path(), "house.yaml");
    }

    [[nodiscard]] std::string MistakeOf(const std::string& one,
                                        const std::string& two = "silent",
                                        const std::string& three = "silent") const {
        try {
            (void)Read(one, two, three);
        } catch (const HouseError& error) {
            return error.what();
        }
        return "";
    }

    TemporaryFolder m_folder;
};

TEST_F(HouseFilePagesTest, ARoomPlaysOnThePageOfItsOwnScreenOrOfOneThatIsNamed) {
    for (const char* own :
         {"page", "\"page:\"", "\"page: own\"", "{page: own}", "{page: 11}", "\"page: 11\""}) {
        const House house = Read(own);
        EXPECT_EQ(house.rooms[0].output.kind, "page") << own;
        EXPECT_EQ(house.rooms[0].output.text, "11") << own;
        EXPECT_TRUE(house.rooms[0].isAnswering);
        EXPECT_TRUE(house.doubts.empty());
    }
    EXPECT_EQ(Read("silent", "{page: 13}", "{page: 12}").rooms[2].output.text, "12");
}

TEST_F(HouseFilePagesTest, APageThatThereIsNotOrThatPlaysForAnotherRoomIsRefused) {
    EXPECT_EQ(MistakeOf("{page: 14}"),
              "house.yaml:5: rooms[1].output: there is no navigator 14; name one of this "
              "file, as `page: ID`");
    EXPECT_EQ(MistakeOf("silent", "page"),
              "house.yaml:6: rooms[2].output: the room has 2 navigators; name the one "
              "whose page plays, as `page: 12`");
    EXPECT_EQ(MistakeOf("silent", "silent", "page"), "house.yaml:7: rooms[3].output: no navigator of this "
                                                     "file stands in the room; name the one whose page "
                                                     "plays, as `page: ID`");
    EXPECT_EQ(MistakeOf("page", "{page: 11}"), "house.yaml:6: rooms[2].output: the page of screen 11 is "
                                               "rooms[1].output already, and plays one sound at a time");
    EXPECT_EQ(MistakeOf("{page: kitchen}"), "house.yaml:5: rooms[1].output: \"page: kitchen\" names no "
                                            "screen; write the id of a navigator, or own, "
                                            "for the one of the room");
}

} // namespace controller
