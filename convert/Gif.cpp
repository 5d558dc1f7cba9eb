#include "convert/PictureFormats.h"
#include "convert/Report.h"
#include "convert/Shrinker.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include <gif_lib.h>

namespace picture_formats {

namespace {

struct GifEnd {
    void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
};

[[noreturn]] void RefuseGif() {
    throw report::Refusal(report::kDamaged, "is damaged: it holds no whole picture");
}

void Require(int result) {
    if (result == GIF_ERROR)
        RefuseGif();
}

int ReadRest(GifFileType* gif, GifByteType* to, int wanted) {
    auto& rest = *static_cast<std::string_view*>(gif->UserData);
    const std::size_t size = std::min(rest.size(), static_cast<std::size_t>(wanted));
    std::memcpy(to, rest.data(), size);
    rest.remove_prefix(size);
    return static_cast<int>(size);
}

/// Reads an extension; the colour that is none when it names one, else the one of before.
int ClearColour(GifFileType& gif, int former) {
    int code = 0;
    GifByteType* body = nullptr;
    Require(DGifGetExtension(&gif, &code, &body));
    GraphicsControlBlock control{};
    if (code == GRAPHICS_EXT_FUNC_CODE && body != nullptr &&
        DGifExtensionToGCB(body[0], body + 1, &control) == GIF_OK)
        former = control.TransparentColor;
    while (body != nullptr)
        Require(DGifGetExtensionNext(&gif, &body));
    return former;
}

/// Goes to the first picture, and gives the colour of it that is none.
int GoToImage(GifFileType& gif) {
    int clear = NO_TRANSPARENT_COLOR;
    GifRecordType kind = UNDEFINED_RECORD_TYPE;
    for (;;) {
        Require(DGifGetRecordType(&gif, &kind));
        if (kind != EXTENSION_RECORD_TYPE)
            break;
        clear = ClearColour(gif, clear);
    }
    if (kind != IMAGE_DESC_RECORD_TYPE)
        RefuseGif();
    Require(DGifGetImageDesc(&gif));
    return clear;
}

/// Where the lines stand, in the order in which they come.
std::vector<std::uint32_t> LinesOf(const GifImageDesc& image) {
    const auto height = static_cast<std::uint32_t>(image.Height);
    std::vector<std::uint32_t> lines;
    lines.reserve(height);
    const auto add = [&](std::uint32_t first, std::uint32_t step) {
        for (std::uint32_t line = first; line < height; line += step)
            lines.push_back(line);
    };
    if (!image.Interlace) {
        add(0, 1);
        return lines;
    }
    add(0, 8);
    add(4, 8);
    add(2, 4);
    add(1, 2);
    return lines;
}

void Paint(const std::vector<GifPixelType>& points,
           const ColorMapObject& colours,
           int clear,
           std::uint8_t* line) {
    for (const GifPixelType point : points) {
        if (point != clear && point < colours.ColorCount) {
            const GifColorType& colour = colours.Colors[point];
            line[0] = colour.Red;
            line[1] = colour.Green;
            line[2] = colour.Blue;
            line[3] = 255;
        }
        line += Pixels::kBytes;
    }
}

bool IsWithin(const GifImageDesc& image, const GifFileType& gif) {
    return image.Left >= 0 && image.Top >= 0 && image.Width > 0 && image.Height > 0 &&
           image.Left + image.Width <= gif.SWidth && image.Top + image.Height <= gif.SHeight;
}

} // namespace

Pixels ReadGif(std::string_view content, std::uint32_t most) {
    const std::unique_ptr<GifFileType, GifEnd> gif(DGifOpen(&content, &ReadRest, nullptr));
    if (!gif)
        RefuseGif();
    const int clear = GoToImage(*gif);
    const GifImageDesc& image = gif->Image;
    const ColorMapObject* colours = image.ColorMap != nullptr ? image.ColorMap : gif->SColorMap;
    if (!IsWithin(image, *gif) || colours == nullptr)
        RefuseGif();
    Pixels whole({static_cast<std::uint32_t>(gif->SWidth), static_cast<std::uint32_t>(gif->SHeight)});
    const std::size_t indent = Pixels::kBytes * static_cast<std::size_t>(image.Left);
    std::vector<GifPixelType> points(static_cast<std::size_t>(image.Width));
    for (const std::uint32_t line : LinesOf(image)) {
        Require(DGifGetLine(gif.get(), points.data(), image.Width));
        Paint(points, *colours, clear, whole.Line(static_cast<std::size_t>(image.Top) + line) + indent);
    }
    const picture::Size to = Within(whole.size, most);
    return Shrunk(std::move(whole), to);
}

} // namespace picture_formats
