#include "controller/media/Converter.h"
#include "controller/media/MediaError.h"
#include "controller/media/MediaShelf.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/convert/MadePictures.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace controller {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

class ConverterPictureTest : public testing::Test {
protected:
    MediaError ErrorOf(const std::string& name, const std::string& content) {
        try {
            (void)m_shelf->Store(name, content);
        } catch (const MediaError& error) {
            EXPECT_TRUE(fs::is_empty(m_folder.Path())) << "nothing is left over";
            EXPECT_FALSE(fs::exists(m_data.Path() / "thumbnails"));
            return error;
        }
        ADD_FAILURE() << name << " was taken";
        return {MediaError::Kind::Missing, ""};
    }

    void UseProgram(const std::string& script) {
        const auto program = m_programs.Write("convert", "#!/bin/sh\n" + script + "\n");
        fs::permissions(program, fs::perms::owner_all);
        m_shelf.emplace(m_folder.Path(), Converter({program, 60s}), nullptr, m_data.Path() / "thumbnails");
    }

    std::size_t ThumbnailsKept() {
        const fs::path kept = m_data.Path() / "thumbnails";
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(kept), fs::directory_iterator()));
    }

    static std::string SidesOf(const std::string& content) {
        const auto size = picture::SizeOf(content).value_or(picture::Size{});
        return std::to_string(size.width) + "x" + std::to_string(size.height);
    }

    TemporaryFolder m_folder;
    TemporaryFolder m_data;
    TemporaryFolder m_programs;
    /// Without optimization, on a busy machine, a photo takes longer than people are to wait.
    std::optional<MediaShelf> m_shelf{std::in_place, m_folder.Path(),
                                      Converter({Converter::FindProgram(), 60s}), nullptr,
                                      m_data.Path() / "thumbnails"};
};

} // namespace

TEST_F(ConverterPictureTest, PhotoIsShrunkTurnedAndStoredWithItsThumbnailWhateverItIsCalled) {
    const std::string photo = made_pictures::Jpeg(made_pictures::Corners({2400, 1600}), 6);

    const auto stored = m_shelf->Store("My photo.PNG", photo);

    EXPECT_TRUE(stored.isNew);
    EXPECT_EQ(stored.description.name, "My-photo.jpg");
    EXPECT_EQ(stored.description.isConverted, true);
    ASSERT_TRUE(stored.description.size);
    EXPECT_EQ(stored.description.size->width, 1280U);
    EXPECT_EQ(stored.description.size->height, 1920U);
    const auto file = m_shelf->Read("My-photo.jpg");
    EXPECT_EQ(SidesOf(*file.content), "1280x1920");
    EXPECT_EQ(file.content->find("51.5N"), std::string::npos);
    const auto thumbnail = m_shelf->FindThumbnail("My-photo.jpg");
    ASSERT_TRUE(thumbnail.content);
    EXPECT_EQ(SidesOf(*thumbnail.content), "213x320");
    EXPECT_EQ(thumbnail.type, "image/jpeg");
    EXPECT_EQ(thumbnail.tag, file.tag);
}

TEST_F(ConverterPictureTest, PictureThatLiesInTheFolderGetsItsThumbnailWhenItIsAskedFor) {
    std::ofstream(m_folder.Path() / "door.png", std::ios::binary)
        << made_pictures::Png(made_pictures::Corners({640, 480}, 100), 1);

    EXPECT_EQ(m_shelf->FindThumbnail("door.png").content, nullptr);
    const auto made = m_shelf->MakeThumbnail("door.png");

    EXPECT_EQ(SidesOf(*made.content), "320x240");
    EXPECT_EQ(made.type, "image/png");
    EXPECT_EQ(*m_shelf->FindThumbnail("door.png").content, *made.content);
    ASSERT_EQ(m_shelf->List().size(), 1U);
    EXPECT_EQ(m_shelf->List()[0].size->width, 640U);
}

TEST_F(ConverterPictureTest, ThumbnailThatWasLostWithThePowerIsMadeAgain) {
    (void)m_shelf->Store("a.png", made_pictures::Png(made_pictures::Corners({20, 10}), 1));
    const fs::path kept = fs::directory_iterator(m_data.Path() / "thumbnails")->path();
    std::ofstream(kept, std::ios::binary) << std::string(500, '\0');

    EXPECT_EQ(m_shelf->FindThumbnail("a.png").content, nullptr);
    EXPECT_EQ(SidesOf(*m_shelf->MakeThumbnail("a.png").content), "20x10");
    EXPECT_NE(m_shelf->FindThumbnail("a.png").content, nullptr);
}

TEST_F(ConverterPictureTest, ThumbnailIsOfTheFileThatStandsThereAndGoesWithIt) {
    const auto picture = [](std::uint32_t width) {
        return made_pictures::Png(made_pictures::Corners({width, 10}), 1);
    };
    (void)m_shelf->Store("a.png", picture(20));
    (void)m_shelf->Store("a.png", picture(30));
    EXPECT_EQ(SidesOf(*m_shelf->FindThumbnail("a.png").content), "30x10");
    EXPECT_EQ(ThumbnailsKept(), 1U);
    (void)m_shelf->Store("aa.png", picture(40));

    m_shelf->Remove("a.png");

    EXPECT_THROW((void)m_shelf->FindThumbnail("a.png"), MediaError);
    EXPECT_THROW((void)m_shelf->MakeThumbnail("a.png"), MediaError);
    EXPECT_EQ(ThumbnailsKept(), 1U);
    EXPECT_EQ(SidesOf(*m_shelf->FindThumbnail("aa.png").content), "40x10");
    EXPECT_THROW((void)m_shelf->FindThumbnail("a.wav"), MediaError) << "a sound has none";
}

TEST_F(ConverterPictureTest, FolderOfThumbnailsThatTakesNothingKeepsNoPictureAway) {
    std::ofstream(m_data.Path() / "thumbnails") << "a file";

    EXPECT_TRUE(m_shelf->Store("a.png", made_pictures::Png(made_pictures::Corners({20, 10}), 1)).isNew);
    EXPECT_EQ(m_shelf->FindThumbnail("a.png").content, nullptr);
    EXPECT_EQ(SidesOf(*m_shelf->MakeThumbnail("a.png").content), "20x10");
    m_shelf->Remove("a.png");
    EXPECT_TRUE(fs::is_empty(m_folder.Path()));
}

TEST_F(ConverterPictureTest, WhatIsWrongWithAPictureIsToldAndWhatWouldBeRight) {
    const MediaError huge = ErrorOf("huge.png", made_pictures::Claims().front());
    EXPECT_STREQ(huge.what(), "huge.png claims to be 100000 by 100000 pixels large");
    EXPECT_EQ(huge.Right(),
              "a picture of at most 100 million pixels, or 1,920 on a side where it is animated");
    EXPECT_EQ(huge.Code(), "too_large");
    EXPECT_EQ(ErrorOf("bomb.jpg", made_pictures::MemoryBomb()).Code(), "too_large");
    const std::string photo = made_pictures::Jpeg(made_pictures::Corners({200, 100}), 1);
    const MediaError cut = ErrorOf("cut.jpg", photo.substr(0, photo.size() / 2));
    EXPECT_EQ(std::string(cut.what()).rfind("cut.jpg is damaged: ", 0), 0U) << cut.what();
    EXPECT_EQ(cut.Right(), "a whole file");
    EXPECT_EQ(cut.Code(), "damaged");
}

TEST_F(ConverterPictureTest, ConverterThatTalksNonsenseIsAClearErrorAndLeavesNothing) {
    const std::string picture = made_pictures::Png(made_pictures::Corners({20, 10}), 1);
    for (const char* const script : {R"(echo '{"type":"image/png","picture_bytes":4}' >&3)",
                                     R"(echo GIF89a; echo '{"type":"image/png","picture_bytes":4}' >&3)",
                                     R"(echo GIF89a; echo '{"type":"image/gif","picture_bytes":7000}' >&3)",
                                     R"(echo nothing; echo '{"type":"","picture_bytes":4}' >&3)"}) {
        UseProgram(script);
        const MediaError error = ErrorOf("x.png", picture);
        EXPECT_STREQ(error.what(),
                     "x.png could not be converted: the converter wrote something else than it said")
            << script;
        EXPECT_EQ(error.Code(), "conversion_failed");
    }
    UseProgram("kill -SEGV $$");
    EXPECT_STREQ(ErrorOf("x.png", picture).what(),
                 "x.png could not be converted: the converter was ended by the signal 11");
}

} // namespace controller
