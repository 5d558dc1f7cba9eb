#include "convert/PictureFormats.h"
#include "convert/Report.h"
#include "convert/Shrinker.h"

#include <algorithm>
#include <cstring>

#include <png.h>

namespace picture_formats {

namespace {

/// The library's own state of one picture; it comes to an end whatever happens.
class PngImage {
public:
    PngImage() { m_image.version = PNG_IMAGE_VERSION; }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;
    ~PngImage() { png_image_free(&m_image); }

    [[nodiscard]] png_image* Get() noexcept { return &m_image; }

    void Require(int isDone) const {
        if (isDone == 0)
            throw report::Refusal(report::kDamaged, std::string("is damaged: ") + m_image.message);
    }

private:
    png_image m_image{};
};

std::vector<std::uint8_t> WithoutOpacity(const Pixels& pixels) {
    std::vector<std::uint8_t> colours;
    colours.reserve(pixels.bytes.size() / Pixels::kBytes * 3);
    for (std::size_t place = 0; place < pixels.bytes.size(); place += Pixels::kBytes)
        colours.insert(colours.end(), pixels.bytes.begin() + static_cast<std::ptrdiff_t>(place),
                       pixels.bytes.begin() + static_cast<std::ptrdiff_t>(place) + 3);
    return colours;
}

/// What says otherwise of the colours goes, and the profile stands behind the head.
std::string PngWithProfile(const std::string& content, const std::vector<picture::Block>& profile) {
    std::string result;
    const auto blocks = picture::BlocksOf(picture::Type::Png, content);
    for (const picture::Block& block : blocks.value_or(std::vector<picture::Block>())) {
        if (block.kind == "sRGB" || block.kind == "gAMA" || block.kind == "cHRM")
            continue;
        result += block.whole;
        if (block.kind == "IHDR")
            result += profile.front().whole;
    }
    return result;
}

} // namespace

Pixels ReadPng(std::string_view content, std::uint32_t most) {
    PngImage image;
    image.Require(png_image_begin_read_from_memory(image.Get(), content.data(), content.size()));
    image.Get()->format = PNG_FORMAT_RGBA;
    Pixels pixels(picture::Size{image.Get()->width, image.Get()->height});
    image.Require(png_image_finish_read(image.Get(), nullptr, pixels.bytes.data(), 0, nullptr));
    const picture::Size to = Within(pixels.size, most);
    return Shrunk(std::move(pixels), to);
}

std::string WritePng(const Pixels& pixels, const std::vector<picture::Block>& profile) {
    PngImage image;
    image.Get()->width = pixels.size.width;
    image.Get()->height = pixels.size.height;
    const bool isOpaque = pixels.IsOpaque();
    image.Get()->format = isOpaque ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
    const std::vector<std::uint8_t> colours = isOpaque ? WithoutOpacity(pixels) : pixels.bytes;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(*image.Get());
    std::string content(size, '\0');
    image.Require(
        png_image_write_to_memory(image.Get(), content.data(), &size, 0, colours.data(), 0, nullptr));
    content.resize(size);
    return profile.empty() ? content : PngWithProfile(content, profile);
}

} // namespace picture_formats
