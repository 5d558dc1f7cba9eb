#include "controller/media/Picture.h"

#include "controller/media/MediaError.h"
#include "controller/media/Upload.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

std::string Big(std::uint32_t number, unsigned bytes) {
    std::string text;
    for (unsigned index = bytes; index > 0; --index)
        text += static_cast<char>(number >> (8 * (index - 1)));
    return text;
}

std::string Segment(char marker, const std::string& content) {
    return std::string("\xff") + marker + Big(static_cast<std::uint32_t>(content.size()) + 2, 2) + content;
}

std::string Chunk(const std::string& name, const std::string& content) {
    return Big(static_cast<std::uint32_t>(content.size()), 4) + name + content + "sums";
}

/// What a camera says, numbers of little end: that it was held so, and a place.
std::string Camera(char orientation) {
    using namespace std::string_literals;
    return "Exif\0\0II\x2a\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0"s + orientation +
           "\0\0\0\0\0\0\0 51.5N 0.1W"s;
}

const std::string kHead = Segment('\xe0', "JFIF");
const std::string kColours = Segment('\xe2', "ICC_PROFILE");
const std::string kPixels = Segment('\xda', "scan") + "pixels\xff\xd9";
const std::string kPngHead = "\x89PNG\r\n\x1a\n";

std::string PngOf(std::uint32_t width, std::uint32_t height, const std::string& more = "") {
    return kPngHead + Chunk("IHDR", Big(width, 4) + Big(height, 4) + "\x08\x02") + more +
           Chunk("IDAT", "pixels") + Chunk("IEND", "");
}

} // namespace

TEST(PictureTest, JpegKeepsItsPixelsAndHowTheCameraWasHeldAndNothingOfPlaceAndCamera) {
    const std::string telling = Segment('\xe1', "http://ns.adobe.com/xap/ place") +
                                Segment('\xed', "Photoshop") + Segment('\xfe', "a comment");
    const std::string photo = "\xff\xd8" + kHead + Segment('\xe1', Camera(6)) + telling + kColours + kPixels;

    const std::string clean = picture::WithoutPrivateData(photo);

    const std::string held = clean.substr(2, 36);
    EXPECT_EQ(held.substr(0, 10),
              Segment('\xe1', std::string("Exif\0\0", 6) + std::string(26, ' ')).substr(0, 10));
    EXPECT_EQ(held[29], 6);
    EXPECT_EQ(clean, "\xff\xd8" + held + kHead + kColours + kPixels);
    EXPECT_EQ(clean.find("51.5N"), std::string::npos);
    EXPECT_EQ(picture::WithoutPrivateData(clean), clean);
}

TEST(PictureTest, JpegThatWasHeldUprightNeedsNotSaySo) {
    EXPECT_EQ(picture::WithoutPrivateData("\xff\xd8" + Segment('\xe1', Camera(1)) + kHead + kPixels),
              "\xff\xd8" + kHead + kPixels);
}

TEST(PictureTest, PngLosesTextsTimesAndWhatTheCameraSays) {
    EXPECT_EQ(picture::WithoutPrivateData(
                  PngOf(1, 1, Chunk("tEXt", "Location") + Chunk("eXIf", "MM") + Chunk("tIME", "1234567"))),
              PngOf(1, 1));
}

TEST(PictureTest, WhatIsCutShortOrNoPictureStaysAsItIs) {
    const std::string photo = "\xff\xd8" + kHead + Segment('\xe1', Camera(6)) + kPixels;
    const std::string png = PngOf(1, 1, Chunk("tEXt", "Location"));
    for (std::size_t size = 0; size < photo.size() - kPixels.size() + 4; ++size)
        EXPECT_EQ(picture::WithoutPrivateData(photo.substr(0, size)), photo.substr(0, size)) << size;
    for (std::size_t size = 0; size < png.size(); ++size)
        (void)picture::WithoutPrivateData(png.substr(0, size)); // and nothing is read behind its end
    EXPECT_EQ(picture::WithoutPrivateData("GIF89a"), "GIF89a");
}

TEST(PictureTest, PngThatClaimsAHundredThousandPixelsASideIsRefusedByItsHeader) {
    const auto size = picture::SizeOf(PngOf(100000, 100000));
    ASSERT_TRUE(size);
    EXPECT_EQ(size->width, 100000U);
    try {
        (void)MakeUpload("huge.png", PngOf(100000, 100000), {}, Converter({"/nowhere"}));
        FAIL() << "it was taken";
    } catch (const MediaError& error) {
        EXPECT_STREQ(error.what(), "huge.png claims to be 100000 by 100000 pixels large");
        EXPECT_EQ(error.Code(), "too_large");
    }
    EXPECT_TRUE(MakeUpload("large.png", PngOf(8000, 6000), {}, Converter({"/nowhere"})).name == "large.png");
}

} // namespace controller
