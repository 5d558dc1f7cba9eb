#include "controller/audio/MediaFolder.h"

#include "tests/controller/audio/EngineHarness.h"
#include "tests/controller/audio/Sounds.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace controller::audio::test {

namespace fs = std::filesystem;

class MediaFolderTest : public ::testing::Test {
protected:
    MediaFolderTest() : m_media(m_folder.Path("media")) {
        fs::create_directories(m_folder.Path("media/sub"));
        fs::create_directories(m_folder.Path("media-other"));
        WriteBytes(m_folder.Path("media/chime.wav"), "sound");
        WriteBytes(m_folder.Path("media/sub/bell.wav"), "sound");
        WriteBytes(m_folder.Path("secret.wav"), "secret");
        WriteBytes(m_folder.Path("media-other/secret.wav"), "secret");
    }

    [[nodiscard]] std::string Refusal(const std::string& name) const {
        try {
            (void)m_media.Find(MediaFolder::kPrefix + name);
        } catch (const MediaNameError& error) {
            return error.what();
        }
        return {};
    }

    void ExpectLeadsOut(const std::string& name) const {
        EXPECT_EQ(Refusal(name), "\"" + name + "\" leads out of the media folder");
    }

    TemporaryFolder m_folder;
    MediaFolder m_media;
};

TEST_F(MediaFolderTest, ANameIsFoundInTheMediaFolder) {
    EXPECT_EQ(m_media.Find("/media/announcements/chime.wav"),
              fs::canonical(m_folder.Path("media/chime.wav")));
    EXPECT_EQ(m_media.Find("/media/announcements/sub/bell.wav"),
              fs::canonical(m_folder.Path("media/sub/bell.wav")));
}

TEST_F(MediaFolderTest, ANameThatLeadsOutOfTheFolderIsRefused) {
    ExpectLeadsOut("../secret.wav");
    ExpectLeadsOut("sub/../../secret.wav");
    ExpectLeadsOut("sub/../chime.wav"); // It would come back in, but no honest name has it.
    ExpectLeadsOut("..");
    ExpectLeadsOut(m_folder.Path("secret.wav"));
    ExpectLeadsOut("/etc/passwd");
}

TEST_F(MediaFolderTest, ALinkThatLeadsOutOfTheFolderIsRefused) {
    fs::create_symlink(m_folder.Path("secret.wav"), m_folder.Path("media/link.wav"));
    fs::create_directory_symlink(m_folder.Path("media-other"), m_folder.Path("media/linked"));
    ExpectLeadsOut("link.wav");
    ExpectLeadsOut("linked/secret.wav");
}

TEST_F(MediaFolderTest, ALinkWithinTheFolderIsFollowed) {
    fs::create_symlink("sub/bell.wav", m_folder.Path("media/ring.wav"));
    EXPECT_EQ(m_media.Find("/media/announcements/ring.wav"),
              fs::canonical(m_folder.Path("media/sub/bell.wav")));
}

TEST_F(MediaFolderTest, TheFolderItselfMayBeALink) {
    fs::create_directory_symlink(m_folder.Path("media"), m_folder.Path("alias"));
    const MediaFolder alias(m_folder.Path("alias"));
    EXPECT_EQ(alias.Find("/media/announcements/chime.wav"), fs::canonical(m_folder.Path("media/chime.wav")));
}

TEST_F(MediaFolderTest, AMissingFileIsRefusedByName) {
    EXPECT_EQ(Refusal("gong.wav"), "there is no sound file \"gong.wav\" in the media folder");
    EXPECT_EQ(Refusal("chime.wav/x.wav"), "there is no sound file \"chime.wav/x.wav\" in the media folder");
    fs::create_symlink("nowhere.wav", m_folder.Path("media/dangling.wav"));
    EXPECT_NE(Refusal("dangling.wav"), "");
}

TEST_F(MediaFolderTest, NamesThatAreNoneAreRefused) {
    EXPECT_NE(Refusal(""), "");
    EXPECT_NE(Refusal(std::string("chime.wav\0.wav", 14)), "");
    EXPECT_NE(Refusal(std::string(100'000, 'x')), "");
    EXPECT_THROW((void)m_media.Find("/somewhere/else/chime.wav"), MediaNameError);
    EXPECT_THROW((void)m_media.Find(""), MediaNameError);
}

TEST_F(MediaFolderTest, AMissingMediaFolderIsNamed) {
    const MediaFolder missing(m_folder.Path("none"));
    try {
        (void)missing.Find("/media/announcements/chime.wav");
        FAIL() << "it was found";
    } catch (const MediaNameError& error) {
        EXPECT_NE(std::string(error.what()).find(m_folder.Path("none")), std::string::npos) << error.what();
    }
}

} // namespace controller::audio::test
