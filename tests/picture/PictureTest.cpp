#include "picture/PrivateData.h"
#include "tests/picture/PictureBytes.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using picture::Type;
using picture::test::Bytes;
using picture::test::JpegSegment;

std::string PngChunk(const std::string& name, const std::string& content) {
    return Bytes(static_cast<std::uint32_t>(content.size()), 4) + name + content + "sums";
}

std::string WebPChunk(const std::string& name, const std::string& content) {
    return name + Bytes(static_cast<std::uint32_t>(content.size()), 4, false) + content +
           (content.size() % 2 != 0 ? "\0"s : "");
}

/// What a camera says, numbers of little end: that it was held so, and a place.
std::string Camera(char orientation) {
    return "II\x2a\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0"s + orientation + "\0\0\0\0\0\0\0 51.5N 0.1W"s;
}

const std::string kHead = JpegSegment('\xe0', "JFIF\0"s);
const std::string kColours = JpegSegment('\xe2', "ICC_PROFILE\0\x01\x01"s + std::string(16, ' ') + "RGB ...");
const std::string kFrame = JpegSegment('\xc0', "\x08\0\x30\0\x40\x03"s);
const std::string kPixels = JpegSegment('\xda', "scan") + "pix\xff\0els\xff\xd0more"s + "\xff\xd9";

std::string Jpeg(const std::string& more) {
    return "\xff\xd8" + kHead + more + kColours + kFrame + kPixels;
}

std::string Png(std::uint32_t width, std::uint32_t height, const std::string& more = "") {
    return "\x89PNG\r\n\x1a\n"s + PngChunk("IHDR", Bytes(width, 4) + Bytes(height, 4) + "\x08\x02") + more +
           PngChunk("IDAT", "pixels") + PngChunk("IEND", "");
}

std::string Gif(const std::string& more) {
    return "GIF89a"s + Bytes(64, 2, false) + Bytes(48, 2, false) + "\x80\0\0colour"s + more + "," +
           std::string(8, '\0') + "\0\x02\x03xyz\0"s + ";";
}

std::string WebP(const std::string& more, char flags) {
    const std::string chunks =
        WebPChunk("VP8X", flags + "\0\0\0"s + Bytes(63, 3, false) + Bytes(47, 3, false)) + more +
        WebPChunk("VP8 ", "odd");
    return "RIFF" + Bytes(static_cast<std::uint32_t>(chunks.size()) + 4, 4, false) + "WEBP" + chunks;
}

std::string Cleaned(const std::string& content) {
    const Type type = picture::TypeOf(content);
    const auto blocks = picture::BlocksOf(type, content);
    return blocks ? picture::WithoutPrivateData(type, *blocks) : "not built so";
}

unsigned HeldIn(const std::string& content) {
    const Type type = picture::TypeOf(content);
    return picture::OrientationOf(type, picture::BlocksOf(type, content).value());
}

} // namespace

TEST(PictureTest, JpegKeepsItsPixelsHeadAndColoursAndNothingElse) {
    const std::string telling = JpegSegment('\xe1', "Exif\0\0"s + Camera(6)) +
                                JpegSegment('\xe1', "http://ns.adobe.com/xap/ place") +
                                JpegSegment('\xe0', "JFXX\0small"s) + JpegSegment('\xe2', "MPF\0pictures"s) +
                                JpegSegment('\xed', "Photoshop") + JpegSegment('\xfe', "a comment");

    EXPECT_EQ(Cleaned(Jpeg(telling) + "a film of where it was taken"), Jpeg(""));
    EXPECT_EQ(Cleaned(Jpeg("\xff\xff"s + JpegSegment('\xee', "Adobe").substr(1))),
              Jpeg(JpegSegment('\xee', "Adobe"))); // filled up
    EXPECT_EQ(HeldIn(Jpeg(telling)), 6U);
    EXPECT_EQ(HeldIn(Jpeg("")), 1U);
    EXPECT_EQ(HeldIn(Jpeg(JpegSegment('\xe1', "Exif\0\0"s + Camera(99)))), 8U);
}

TEST(PictureTest, PngLosesTextsTimesAndWhatOnlyOneProgramKnows) {
    const std::string telling = PngChunk("tEXt", "Location") + PngChunk("zTXt", "x") + PngChunk("iTXt", "x") +
                                PngChunk("eXIf", Camera(8)) + PngChunk("tIME", "1234567") +
                                PngChunk("caBX", "who made it");

    EXPECT_EQ(Cleaned(Png(1, 1, telling) + "more"), Png(1, 1));
    EXPECT_EQ(Cleaned(Png(1, 1, PngChunk("tRNS", "abc") + PngChunk("acTL", "x"))),
              Png(1, 1, PngChunk("tRNS", "abc") + PngChunk("acTL", "x")));
    EXPECT_EQ(HeldIn(Png(1, 1, telling)), 8U);
}

TEST(PictureTest, GifLosesCommentsAndTextsAndKeepsHowItMoves) {
    const std::string moves = "!\xff\x0bNETSCAPE2.0\x03\x01\0\0\0"s + "!\xf9\x04\0\0\0\0\0"s;

    EXPECT_EQ(Cleaned(Gif(moves + "!\xfe\x05place\0"s + "!\xff\x0bXMP DataXMP\x02<>\0"s)), Gif(moves));
    const std::string unended = Gif("");
    EXPECT_EQ(Cleaned(unended.substr(0, unended.size() - 1)), unended);
}

TEST(PictureTest, WebPLosesWhatTheCameraSaysAndSaysSo) {
    EXPECT_EQ(Cleaned(WebP(WebPChunk("EXIF", Camera(3)) + WebPChunk("XMP ", "<place/>"), '\x1c')),
              WebP("", '\x10'));
    EXPECT_EQ(HeldIn(WebP(WebPChunk("EXIF", "Exif\0\0"s + Camera(3)), '\x08')), 3U);
}

TEST(PictureTest, WhatIsCutShortIsNotBuiltAsItShouldBe) {
    const std::string whole[] = {Jpeg(""), Png(1, 1), WebP("", '\0')};
    for (const std::string& content : whole) {
        EXPECT_EQ(Cleaned(content), content);
        for (std::size_t size = 12; size < content.size(); ++size)
            EXPECT_EQ(Cleaned(content.substr(0, size)), "not built so") << size;
    }
    EXPECT_EQ(Cleaned(Gif("").substr(0, 30)), "not built so");
    EXPECT_EQ(Cleaned("<html>"), "not built so");
}

TEST(PictureTest, SizeIsToldByTheHeaderAsThePictureIsShown) {
    const auto sidesOf = [](const std::string& content) {
        const auto size = picture::SizeOf(content);
        return size ? std::to_string(size->width) + "x" + std::to_string(size->height) : "";
    };
    EXPECT_EQ(sidesOf(Jpeg("")), "64x48");
    EXPECT_EQ(sidesOf(Jpeg(JpegSegment('\xe1', "Exif\0\0"s + Camera(6)))), "48x64");
    EXPECT_EQ(sidesOf(Jpeg("\xff\xff"s)), "64x48");
    EXPECT_EQ(sidesOf(Png(100000, 3)), "100000x3");
    EXPECT_EQ(sidesOf(Gif("")), "64x48");
    EXPECT_EQ(sidesOf(WebP("", '\0')), "64x48");
    EXPECT_EQ(sidesOf("RIFF\0\0\0\0WEBPVP8 \x10\0\0\0...\x9d\x01\x2a\x40\0\x30\0"s), "64x48");
    EXPECT_EQ(sidesOf("RIFF\0\0\0\0WEBPVP8L\x10\0\0\0\x2f\x3f\xc0\x0b\0.....  "s), "64x48");
    for (const std::string& none :
         {Jpeg("").substr(0, 60), Png(1, 1).substr(0, 20), "GIF89a"s, "<html>"s, ""s})
        EXPECT_EQ(sidesOf(none), "");
    std::string endless = "\xff\xd8"s;
    for (int count = 0; count < 5000; ++count)
        endless += "\xff\xe2\0\x02"s;
    EXPECT_EQ(sidesOf(endless + kFrame), "") << "it ends after a while";
}

TEST(PictureTest, ProfileIsOneForRedGreenAndBlue) {
    const auto profileOf = [](const std::string& content) {
        const Type type = picture::TypeOf(content);
        return picture::ProfileOf(type, picture::BlocksOf(type, content).value());
    };
    ASSERT_EQ(profileOf(Jpeg("")).size(), 1U);
    EXPECT_EQ(profileOf(Jpeg(""))[0].whole, kColours);
    EXPECT_EQ(
        profileOf(Jpeg(JpegSegment('\xe2', "ICC_PROFILE\0\x01\x01"s + std::string(16, ' ') + "GRAY"))).size(),
        0U);
    EXPECT_EQ(profileOf(Png(1, 1, PngChunk("iCCP", "x"))).size(), 1U);
    EXPECT_EQ(profileOf(WebP(WebPChunk("ICCP", std::string(16, ' ') + "RGB ..."), '\x20')).size(), 1U);
    EXPECT_EQ(profileOf(Gif("")).size(), 0U);
}
