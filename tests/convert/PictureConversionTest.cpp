#include "convert/PictureConversion.h"

#include "convert/PictureFormats.h"
#include "convert/Report.h"
#include "tests/convert/MadePictures.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <random>

#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace made_pictures;
using picture::Size;
using picture::Type;

constexpr std::uint32_t kEverything = UINT32_MAX;

/// A file without a name, and what it holds.
class Memory {
public:
    explicit Memory(const std::string& content = "") : m_number(memfd_create("picture", MFD_CLOEXEC)) {
        EXPECT_EQ(write(m_number, content.data(), content.size()), static_cast<ssize_t>(content.size()));
    }
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;
    ~Memory() { close(m_number); }

    [[nodiscard]] int Number() const { return m_number; }
    [[nodiscard]] std::string Content() const {
        std::string content(static_cast<std::size_t>(lseek(m_number, 0, SEEK_END)), '\0');
        EXPECT_EQ(pread(m_number, content.data(), content.size(), 0), static_cast<ssize_t>(content.size()));
        return content;
    }

private:
    const int m_number;
};

struct Converted {
    std::string type;
    std::string content;
    std::string thumbnail;
};

Converted Convert(const std::string& content) {
    const Memory input(content);
    const Memory output;
    const nlohmann::json told = ConvertPicture(MappedFile(input.Number()), output.Number());
    const auto bytes = told.at("picture_bytes").get<std::size_t>();
    const std::string written = output.Content();
    Converted converted{told.at("type"), written.substr(0, bytes), written.substr(bytes)};
    const auto size = picture::SizeOf(converted.content);
    EXPECT_TRUE(size && size->width == told.at("width") && size->height == told.at("height"));
    EXPECT_EQ(converted.type, picture::MediaTypeOf(picture::TypeOf(converted.content)));
    EXPECT_EQ(converted.content.find("51.5N"), std::string::npos) << "of where it was taken";
    EXPECT_EQ(converted.thumbnail.find("51.5N"), std::string::npos);
    return converted;
}

std::string ThumbnailOf(const std::string& content) {
    const Memory input(content);
    const Memory output;
    (void)MakeThumbnail(MappedFile(input.Number()), output.Number());
    return output.Content();
}

/// The code, and behind it the text.
std::string RefusalOf(const std::string& content) {
    try {
        (void)Convert(content);
    } catch (const report::Refusal& refusal) {
        return refusal.Code() + std::string(": ") + refusal.what();
    }
    return "taken";
}

Pixels Decoded(const std::string& content) {
    switch (picture::TypeOf(content)) {
    case Type::Jpeg:
        return picture_formats::ReadJpeg(content, kEverything);
    case Type::Png:
        return picture_formats::ReadPng(content, kEverything);
    case Type::WebP:
        return picture_formats::ReadWebP(content, kEverything);
    default:
        return picture_formats::ReadGif(content, kEverything);
    }
}

std::string SidesOf(const std::string& content) {
    const Size size = picture::SizeOf(content).value_or(Size{});
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

/// One of each format.
std::vector<std::string> OfEachFormat(Size size, unsigned orientation) {
    const Pixels pixels = Corners(size);
    return {Jpeg(pixels, orientation), Png(pixels, orientation), WebP(pixels, orientation), Gif(pixels)};
}

} // namespace

TEST(PictureConversionTest, PhotoIsTurnedAsItsCameraWasHeldAndLosesWhereItWasTaken) {
    // Red, green, blue, white from left to right and from above, as they are seen.
    const char* const seen[] = {"rgbw", "grwb", "wbgr", "bwrg", "rbgw", "brwg", "wgbr", "gwrb"};
    for (unsigned orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const Converted photo = Convert(Jpeg(Corners({96, 64}), orientation));
        EXPECT_EQ(photo.type, "image/jpeg");
        EXPECT_EQ(SidesOf(photo.content), orientation < 5 ? "96x64" : "64x96");
        EXPECT_EQ(CornersOf(Decoded(photo.content)), seen[orientation - 1]);
        EXPECT_EQ(CornersOf(Decoded(photo.thumbnail)), seen[orientation - 1]);
    }
}

TEST(PictureConversionTest, PngAndWebPAreTurnedTooAndStayWhatTheyAre) {
    const Pixels pixels = Corners({96, 64});
    const Converted png = Convert(Png(pixels, 6));
    const Converted webP = Convert(WebP(pixels, 6));

    EXPECT_EQ(png.type, "image/png");
    EXPECT_EQ(webP.type, "image/webp");
    for (const auto& one : {png, webP}) {
        EXPECT_EQ(SidesOf(one.content), "64x96");
        EXPECT_EQ(CornersOf(Decoded(one.content)), "brwg");
    }
}

TEST(PictureConversionTest, PhotoForAPrintingPressIsSeenInItsColours) {
    const Converted photo = Convert(InkJpeg(Corners({2000, 100})));

    EXPECT_EQ(SidesOf(photo.content), "1920x96");
    EXPECT_EQ(CornersOf(Decoded(photo.content)), "rgbw");
}

TEST(PictureConversionTest, LargePictureHasAtMost1920PixelsOnTheLongerSideAndAThumbnailOf320) {
    const Converted photo = Convert(Jpeg(Corners({4000, 3000}), 1));
    EXPECT_EQ(SidesOf(photo.content), "1920x1440");
    EXPECT_EQ(SidesOf(photo.thumbnail), "320x240");
    EXPECT_EQ(CornersOf(Decoded(photo.content)), "rgbw");
    EXPECT_EQ(CornersOf(Decoded(photo.thumbnail)), "rgbw");

    const char* const types[] = {"image/jpeg", "image/png", "image/webp", "image/png"};
    constexpr std::size_t kGif = 4;
    std::size_t format = 0;
    for (const std::string& content : OfEachFormat({200, 2400}, 1)) {
        SCOPED_TRACE(format);
        const Converted made = Convert(content);
        EXPECT_EQ(made.type, types[format++]);
        EXPECT_EQ(SidesOf(made.content), "160x1920");
        EXPECT_EQ(SidesOf(made.thumbnail), "27x320");
        EXPECT_EQ(CornersOf(Decoded(made.content)), format == kGif ? "rgb-" : "rgbw");
    }
}

TEST(PictureConversionTest, WhatFitsStaysAsItIsPixelForPixelAndIsNotEnlarged) {
    for (const std::string& content : OfEachFormat({200, 100}, 1)) {
        const Converted made = Convert(content);
        EXPECT_LT(made.content.size(), content.size());
        EXPECT_EQ(Decoded(made.content).bytes, Decoded(content).bytes);
        EXPECT_EQ(SidesOf(made.thumbnail), "200x100");
        EXPECT_EQ(Convert(made.content).content, made.content);
    }
}

TEST(PictureConversionTest, WhatShinesThroughStaysSoInTheThumbnailToo) {
    for (const Converted& made :
         {Convert(Png(Corners({2400, 100}, 128), 1)), Convert(WebP(Corners({2400, 100}, 128), 1))}) {
        EXPECT_EQ(SidesOf(made.content), "1920x80");
        EXPECT_EQ(Decoded(made.content).bytes[3], 128);
        EXPECT_EQ(picture::TypeOf(made.thumbnail), Type::Png);
        EXPECT_EQ(Decoded(made.thumbnail).bytes[3], 128);
        EXPECT_EQ(CornersOf(Decoded(made.content)), "rgbw") << "and what is seen through is no darker";
    }
    // The white of a GIF is its colour that is none.
    const Converted gif = Convert(Gif(Corners({64, 64})));
    EXPECT_EQ(CornersOf(Decoded(gif.content)), "rgb-");
    EXPECT_EQ(CornersOf(Decoded(gif.thumbnail)), "rgb-");
}

TEST(PictureConversionTest, MovingPicturesGoOnMovingWhereTheyFitAndAreRefusedWhereNot) {
    const std::string gif = Gif(Corners({100, 60}), {3, true});
    const Converted made = Convert(gif);
    EXPECT_TRUE(picture::IsAnimated(Type::Gif, picture::BlocksOf(Type::Gif, made.content).value()));
    EXPECT_EQ(CornersOf(Decoded(made.thumbnail)), "rgb-");
    const Converted webP = Convert(MovingWebP(Corners({100, 60})));
    EXPECT_TRUE(picture::IsAnimated(Type::WebP, picture::BlocksOf(Type::WebP, webP.content).value()));
    EXPECT_EQ(CornersOf(Decoded(webP.thumbnail)), "rgbw");

    const std::string large = Gif(Corners({2000, 20}), {2, false});
    EXPECT_EQ(RefusalOf(large), "too_large: is animated, and 2000 by 20 pixels large");
    EXPECT_EQ(SidesOf(ThumbnailOf(large)), "320x3") << "of one that lies in the folder";
}

TEST(PictureConversionTest, ProfileOfTheColoursStaysWithAPictureThatIsMadeAnew) {
    std::string profile(200, 'p');
    profile.replace(16, 4, "RGB ");
    const picture::Block part{"", std::string_view(profile), ""};
    const std::string jpegProfile = std::string("ICC_PROFILE\0\x01\x01", 14) + profile;
    const std::string jpeg =
        picture_formats::WriteJpeg(Corners({2000, 100}), {{"", std::string_view(jpegProfile), ""}});
    const std::string webP = picture_formats::WriteWebP(Corners({2000, 100}), {part});

    EXPECT_NE(Convert(jpeg).content.find(jpegProfile), std::string::npos);
    EXPECT_NE(Convert(webP).content.find(profile), std::string::npos);
}

TEST(PictureConversionTest, PictureThatClaimsTooManyPixelsIsRefusedByItsHeader) {
    const char* const claims[] = {"100000 by 100000", "65500 by 65500", "65535 by 65535", "16384 by 16384"};
    std::size_t format = 0;
    for (const std::string& content : Claims())
        EXPECT_EQ(RefusalOf(content),
                  "too_large: claims to be " + std::string(claims[format++]) + " pixels large");
}

TEST(PictureConversionTest, PictureThatTakesTooMuchMemoryIsRefused) {
    EXPECT_EQ(RefusalOf(MemoryBomb()),
              "too_large: takes too much memory to be decoded, as a progressive JPEG of its size");
}

TEST(PictureConversionTest, PictureThatIsCutShortIsRefused) {
    for (const std::string& content : OfEachFormat({300, 200}, 1))
        // At the end of a WebP stands what is taken out anyway.
        for (const std::size_t left : {content.size() / 2, std::size_t{180}}) {
            const std::string refusal = RefusalOf(content.substr(0, content.size() - left));
            EXPECT_EQ(refusal.substr(0, 20), "damaged: is damaged:") << refusal;
        }
    EXPECT_EQ(RefusalOf("GIF89a"), "damaged: is damaged: it does not say how large it is");
    EXPECT_EQ(RefusalOf("<html>").substr(0, 14), "cannot_decode:");
}

TEST(PictureConversionTest, PicturesScatteredWithNonsenseAreTakenOrRefusedAndNothingElseHappens) {
    std::vector<std::string> whole = OfEachFormat({60, 40}, 6);
    whole.push_back(MovingWebP(Corners({60, 40})));
    whole.push_back(Gif(Corners({60, 40}), {2, true}));
    std::mt19937 random(7);
    unsigned refused = 0;
    for (unsigned round = 0; round < 600; ++round) {
        std::string broken = whole[round % whole.size()];
        // Most of the fields that lead astray stand at the beginning.
        const std::size_t reach = round % 2 == 0 ? broken.size() : std::min<std::size_t>(broken.size(), 80);
        for (unsigned change = 0; change <= round % 5; ++change)
            broken[random() % reach] = static_cast<char>(random());
        // Claims of millions of pixels are believed, and take their time.
        const Size size = picture::SizeOf(broken).value_or(Size{});
        if (std::uint64_t{size.width} * size.height < 1'000'000)
            refused += RefusalOf(broken) != "taken" ? 1U : 0U;
    }
    EXPECT_GT(refused, 100U);
    EXPECT_LT(refused, 600U);
}
