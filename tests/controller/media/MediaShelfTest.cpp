#include "controller/media/MediaShelf.h"

#include "controller/media/MediaName.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/convert/MadePictures.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>

namespace controller {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

std::string Little(std::uint32_t number, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(number >> (8 * i));
    return text;
}

/// A WAV of silence: 8 kHz, 16 bits, mono.
std::string Wav(unsigned seconds) {
    const std::uint32_t size = seconds * 16000;
    return "RIFF" + Little(36 + size, 4) + "WAVEfmt " + Little(16, 4) + Little(1, 2) + Little(1, 2) +
           Little(8000, 4) + Little(16000, 4) + Little(2, 2) + Little(16, 2) + "data" + Little(size, 4) +
           std::string(size, '\0');
}

std::string Picture(std::uint32_t width) {
    return made_pictures::Png(made_pictures::Corners({width, 8}), 1);
}

class MediaShelfTest : public testing::Test {
protected:
    std::optional<MediaError::Kind> TroubleStoring(const std::string& name, const std::string& content) {
        try {
            (void)m_shelf.Store(name, content);
            return std::nullopt;
        } catch (const MediaError& error) {
            return error.What();
        }
    }

    std::size_t FilesInFolder() {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(m_folder.Path()), fs::directory_iterator()));
    }

    TemporaryFolder m_folder;
    MediaShelf m_shelf{m_folder.Path()};
};

} // namespace

TEST(MediaNameTest, NamesCannotLeaveTheFolder) {
    using media_name::Kind;
    EXPECT_EQ(media_name::KindOf("chime.wav"), Kind::Sound);
    EXPECT_EQ(media_name::KindOf("Dinner_2.v1.jpeg"), Kind::Image);
    for (const std::string& name :
         {std::string("../x.wav"), std::string("/x.wav"), std::string("a/b.wav"), std::string(".wav"),
          std::string(".x.wav"), std::string("x.svg"), std::string("x"), std::string(),
          std::string("x.wav\0", 6), std::string("x\0.wav", 6), std::string("x .wav"),
          std::string("\xC3\xA9.wav"), std::string(97, 'a') + ".wav", std::string("x.wav\n"),
          std::string("..\\x.wav"), std::string("-x.wav")})
        EXPECT_EQ(media_name::KindOf(name), Kind::None) << name;
}

TEST(MediaNameTest, AnyNameBecomesTheOneThatThePageMakesOfIt) {
    std::ifstream file(MEDIA_NAMES);
    const auto names = nlohmann::json::parse(file);
    EXPECT_GT(names.size(), 10U);
    for (const auto& name : names)
        EXPECT_EQ(media_name::GoodName(name.at(0).get<std::string>()), name.at(1)) << name;
}

TEST(MediaNameTest, AGoodNameOfAKindIsTakenAndGoodAlready) {
    for (const std::string given :
         {"a b.wav", "../../x.png", "\xFF.gif", "?.wav", "--.jpeg", "é.webp", "x.WAV"}) {
        const std::string name = media_name::GoodName(given);
        EXPECT_NE(media_name::KindOf(name), media_name::Kind::None) << given;
        EXPECT_EQ(media_name::GoodName(name), name);
    }
    EXPECT_LE(media_name::GoodName("x." + std::string(300, 'y')).size(), media_name::kMaxLength);
}

TEST(MediaNameTest, ImageThatNotEveryScreenShowsIsToldWhatWouldBeRightAndOfAllElseTheContentDecides) {
    const auto svg = media_name::RefusalOf("logo.svg");
    ASSERT_TRUE(svg);
    EXPECT_EQ(svg->text, "logo.svg is an SVG image, which not every screen can show");
    EXPECT_EQ(svg->right, "an image that ends in one of .png, .jpg, .jpeg, .gif, .webp");
    for (const std::string name : {"chime.mp3", "notes.txt", "chime", "wav"})
        EXPECT_FALSE(media_name::RefusalOf(name)) << name;
}

TEST(MediaNameTest, NameTakesTheEndingOfWhatTheFileIs) {
    std::ifstream file(MEDIA_NAMES);
    for (const auto& name : nlohmann::json::parse(file))
        EXPECT_EQ(media_name::NameFor(name.at(0).get<std::string>(), "audio/wav"), name.at(2)) << name;
    EXPECT_EQ(media_name::NameFor("x.jpeg", "image/jpeg"), "x.jpeg");
    EXPECT_EQ(media_name::NameFor("x.png", "image/jpeg"), "x.jpg");
}

TEST(MediaNameTest, TypeOfABodyIsThatOfASoundOrAnImage) {
    for (const std::string type : {"audio/x-wav", "Audio/WAV ; codecs=1", "audio/mpeg", "video/webm",
                                   "video/mp4", "image/jpeg", "application/ogg", "application/octet-stream"})
        EXPECT_TRUE(media_name::IsTypeTaken(type)) << type;
    for (const std::string type : {"text/html", "application/json", "", "audiobook"})
        EXPECT_FALSE(media_name::IsTypeTaken(type)) << type;
}

TEST_F(MediaShelfTest, SoundIsStoredDescribedReadAndRemoved) {
    const auto stored = m_shelf.Store("chime.wav", Wav(2));

    EXPECT_TRUE(stored.isNew);
    EXPECT_EQ(stored.description.name, "chime.wav");
    EXPECT_TRUE(stored.description.isSound);
    EXPECT_EQ(stored.description.bytes, 32044U);
    ASSERT_TRUE(stored.description.sound.has_value());
    EXPECT_EQ(stored.description.sound->duration, 2000ms);
    EXPECT_EQ(stored.description.sound->rate, 8000);
    EXPECT_EQ(stored.description.sound->channels, 1);
    EXPECT_EQ(stored.description.trouble, "");
    EXPECT_EQ(*m_shelf.Read("chime.wav").content, Wav(2));
    EXPECT_EQ(m_shelf.LengthOf("chime").length, 2000ms);
    EXPECT_EQ(m_shelf.LengthOf("chime").trouble, "");
    EXPECT_FALSE(m_shelf.Store("chime.wav", Wav(1)).isNew);
    EXPECT_EQ(m_shelf.List().size(), 1U);
    m_shelf.Remove("chime.wav");
    EXPECT_EQ(FilesInFolder(), 0U);
    EXPECT_THROW((void)m_shelf.Read("chime.wav"), MediaError);
    EXPECT_THROW(m_shelf.Remove("chime.wav"), MediaError);
}

TEST_F(MediaShelfTest, LengthOfWhatIsNotHeardIsNoneAndSaysWhy) {
    const TemporaryFolder outside;
    std::ofstream(outside.Path() / "real.wav", std::ios::binary) << Wav(2);
    fs::create_symlink(outside.Path() / "real.wav", m_folder.Path() / "link.wav");
    std::ofstream(m_folder.Path() / "cut.wav", std::ios::binary) << Wav(2).substr(0, 20000);

    EXPECT_EQ(m_shelf.LengthOf("gone").length, 0ms);
    EXPECT_EQ(m_shelf.LengthOf("gone").trouble, "there is no sound file \"gone.wav\" in the media folder");
    EXPECT_EQ(m_shelf.LengthOf("link").length, 0ms);
    EXPECT_EQ(m_shelf.LengthOf("link").trouble, "\"link.wav\" leads out of the media folder");
    EXPECT_EQ(m_shelf.LengthOf("../x").length, 0ms);
    EXPECT_NE(m_shelf.LengthOf("../x").trouble, "");
    EXPECT_EQ(m_shelf.LengthOf("cut").length, 0ms);
    EXPECT_NE(m_shelf.LengthOf("cut").trouble, "");
}

TEST_F(MediaShelfTest, WhatCannotBePlayedIsRefusedAndLeavesNothing) {
    EXPECT_EQ(TroubleStoring("long.wav", Wav(21)), MediaError::Kind::Unsuitable);
    EXPECT_EQ(TroubleStoring("cut.wav", Wav(2).substr(0, 20000)), MediaError::Kind::Unsuitable);
    EXPECT_EQ(TroubleStoring("none.wav", "no sound"), MediaError::Kind::Unsuitable);
    EXPECT_EQ(TroubleStoring("page.png", "<html>"), MediaError::Kind::Unsuitable);
    EXPECT_EQ(FilesInFolder(), 0U);
}

TEST_F(MediaShelfTest, WhatIsWrongWithASoundIsToldByTheNameThatItWouldHaveAndByAWordForPrograms) {
    struct Wrong {
        std::string name;
        std::string content;
        std::string code;
    };
    const Wrong wrong[] = {{"long.wav", Wav(21), "too_long"},
                           {"cut.wav", Wav(2).substr(0, 20000), "damaged"},
                           {"none.wav", "no sound", "cannot_decode"},
                           {"short.wav", Wav(0), "damaged"},
                           {"begun.wav", Wav(1).substr(0, 20), "cannot_decode"}};
    for (const auto& [name, content, code] : wrong) {
        try {
            (void)m_shelf.Store(name, content);
            ADD_FAILURE() << name;
        } catch (const MediaError& error) {
            EXPECT_EQ(std::string(error.what()).substr(0, name.size()), name) << error.what();
            EXPECT_EQ(error.Code(), code) << error.what();
            EXPECT_NE(error.Right(), "");
            EXPECT_EQ(error.Length(), code == "too_long" ? std::optional(21000ms) : std::nullopt);
        }
    }
}

TEST_F(MediaShelfTest, SoundMayLastTwentySecondsAndNoSampleMore) {
    std::string longer = Wav(20) + std::string(2, '\0');
    longer.replace(4, 4, Little(36 + 320002, 4)).replace(40, 4, Little(320002, 4));

    EXPECT_EQ(TroubleStoring("longest.wav", Wav(20)), std::nullopt);
    EXPECT_EQ(TroubleStoring("longer.wav", longer), MediaError::Kind::Unsuitable);
}

TEST_F(MediaShelfTest, FileThatIsRefusedLeavesTheFormerOne) {
    (void)m_shelf.Store("chime.wav", Wav(1));

    EXPECT_EQ(TroubleStoring("chime.wav", "no sound"), MediaError::Kind::Unsuitable);

    EXPECT_EQ(*m_shelf.Read("chime.wav").content, Wav(1));
}

TEST_F(MediaShelfTest, LinksThatLeadOutAreNotFollowed) {
    std::ofstream(m_folder.Path() / "secret") << "secret";
    fs::create_symlink(m_folder.Path() / "secret", m_folder.Path() / "link.png");

    EXPECT_THROW((void)m_shelf.Read("link.png"), MediaError);
    EXPECT_THROW(m_shelf.Remove("link.png"), MediaError);
    EXPECT_EQ(TroubleStoring("link.png", Picture(8)), MediaError::Kind::Taken);
    EXPECT_EQ(m_shelf.List().size(), 0U);
}

TEST_F(MediaShelfTest, TheLengthOfASoundIsNotReadThroughALinkThatLeadsOut) {
    const TemporaryFolder outside;
    outside.Write("private.wav", Wav(2));
    (void)m_shelf.Store("own.wav", Wav(1));
    fs::create_symlink(outside.Path() / "private.wav", m_folder.Path() / "out.wav");
    fs::create_symlink("own.wav", m_folder.Path() / "in.wav");

    EXPECT_EQ(m_shelf.LengthOf("out").length, 0ms);
    EXPECT_EQ(m_shelf.LengthOf("own").length, 1000ms);
    EXPECT_EQ(m_shelf.LengthOf("in").length, 1000ms); // as it is played
}

TEST_F(MediaShelfTest, RepliesThatAreUnderWayShareTheContentUntilTheFileChanges) {
    (void)m_shelf.Store("a.png", Picture(8));
    const auto first = m_shelf.Read("a.png");

    EXPECT_EQ(m_shelf.Read("a.png").content, first.content);
    (void)m_shelf.Store("a.png", Picture(9));

    EXPECT_EQ(m_shelf.Read("a.png").content->substr(16, 4), std::string("\0\0\0\x09", 4));
    EXPECT_NE(m_shelf.Read("a.png").tag, first.tag);
}

} // namespace controller
