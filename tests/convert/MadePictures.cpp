#include "tests/convert/MadePictures.h"

#include "convert/PictureFormats.h"
#include "tests/picture/PictureBytes.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>

// It makes use of what <cstdio> declares, and includes nothing itself.
#include <jpeglib.h>
#include <webp/mux.h>
#include <zlib.h>

namespace made_pictures {

namespace {

using namespace std::string_literals;

constexpr std::array<std::array<std::uint8_t, 3>, 4> kCorners{
    {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}}};
const std::string kPlace = "it was taken at 51.5N";

using picture::test::Bytes;
using picture::test::JpegSegment;

std::string PngChunk(const std::string& name, const std::string& content) {
    const std::string summed = name + content;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(summed.data()), // NOLINT(*-reinterpret-cast)
                           static_cast<uInt>(summed.size()));
    return Bytes(static_cast<std::uint32_t>(content.size()), 4) + summed +
           Bytes(static_cast<std::uint32_t>(sum), 4);
}

std::uint8_t CornerOf(std::uint32_t x, std::uint32_t y, picture::Size size) {
    return static_cast<std::uint8_t>((x * 2 >= size.width ? 1 : 0) + (y * 2 >= size.height ? 2 : 0));
}

/// As the format's programs pack: codes of growing width for texts that have stood there.
class LzwWriter {
public:
    std::string Packed(const std::vector<std::uint8_t>& points) {
        Put(kClear);
        std::string text;
        for (const std::uint8_t point : points) {
            const std::string longer = text + static_cast<char>(point);
            if (longer.size() == 1 || m_codes.count(longer) != 0) {
                text = longer;
                continue;
            }
            Put(CodeOf(text));
            Learn(longer);
            text = longer.substr(longer.size() - 1);
        }
        Put(CodeOf(text));
        Put(kClear + 1);
        m_bytes += static_cast<char>(m_held & 0xffU);
        return m_bytes;
    }

private:
    static constexpr unsigned kClear = 4; // points of two bits

    unsigned CodeOf(const std::string& text) {
        return text.size() == 1 ? static_cast<unsigned>(text[0]) : m_codes.at(text);
    }
    void Learn(const std::string& text) {
        if (m_next == 4096) {
            Put(kClear);
            m_codes.clear();
            m_next = kClear + 2;
            m_width = 3;
            return;
        }
        m_codes[text] = m_next++;
        if (m_next > 1U << m_width && m_width < 12)
            ++m_width;
    }
    void Put(unsigned code) {
        m_held |= code << m_count;
        for (m_count += m_width; m_count >= 8; m_count -= 8, m_held >>= 8U)
            m_bytes += static_cast<char>(m_held & 0xffU);
    }

    std::map<std::string, unsigned> m_codes;
    unsigned m_next = kClear + 2;
    unsigned m_width = 3;
    unsigned m_held = 0;
    unsigned m_count = 0;
    std::string m_bytes;
};

std::vector<std::uint32_t> LineOrder(std::uint32_t height, bool isInterlaced) {
    std::vector<std::uint32_t> lines;
    const std::array<std::array<std::uint32_t, 2>, 4> passes{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
    for (const auto& [first, step] : passes)
        for (std::uint32_t line = first; isInterlaced && line < height; line += step)
            lines.push_back(line);
    for (std::uint32_t line = 0; !isInterlaced && line < height; ++line)
        lines.push_back(line);
    return lines;
}

std::string GifPieces(const Pixels& pixels, bool isInterlaced) {
    std::vector<std::uint8_t> points;
    for (const std::uint32_t y : LineOrder(pixels.size.height, isInterlaced))
        for (std::uint32_t x = 0; x < pixels.size.width; ++x)
            points.push_back(CornerOf(x, y, pixels.size));
    const std::string packed = LzwWriter().Packed(points);
    std::string pieces;
    for (std::size_t place = 0; place < packed.size(); place += 255) {
        const std::string piece = packed.substr(place, 255);
        pieces += static_cast<char>(piece.size()) + piece;
    }
    return pieces + '\0';
}

} // namespace

Pixels Corners(picture::Size size, std::uint8_t opacity) {
    Pixels pixels(size);
    for (const std::uint32_t y : {0U, size.height - 1})
        for (std::uint32_t x = 0; x < size.width; ++x) {
            std::uint8_t* const point = pixels.Line(y) + x * Pixels::kBytes;
            std::memcpy(point, kCorners[CornerOf(x, y, size)].data(), 3);
            point[3] = opacity;
        }
    for (std::uint32_t y = 1; y + 1 < size.height; ++y)
        std::memcpy(pixels.Line(y), pixels.Line(y * 2 >= size.height ? size.height - 1 : 0),
                    Pixels::kBytes * size.width);
    return pixels;
}

std::string CornersOf(const Pixels& pixels) {
    constexpr int kNear = 40;
    const auto [width, height] = pixels.size;
    std::string corners;
    for (const auto& [x, y] :
         {std::array{width / 4, height / 4}, std::array{width * 3 / 4, height / 4},
          std::array{width / 4, height * 3 / 4}, std::array{width * 3 / 4, height * 3 / 4}}) {
        const std::uint8_t* const point = pixels.Line(y) + x * Pixels::kBytes;
        char found = point[3] == 0 ? '-' : '?';
        for (std::size_t corner = 0; corner < kCorners.size() && found == '?'; ++corner) {
            int difference = 0;
            for (std::size_t colour = 0; colour < 3; ++colour)
                difference += std::abs(point[colour] - kCorners[corner][colour]);
            if (difference < kNear)
                found = "rgbw"[corner];
        }
        corners += found;
    }
    return corners;
}

std::string Camera(unsigned orientation) {
    return "MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0"s + static_cast<char>(orientation) +
           "\0\0\0\0\0\0"s + kPlace;
}

std::string Jpeg(const Pixels& pixels, unsigned orientation) {
    const std::string plain = picture_formats::WriteJpeg(pixels, {});
    return plain.substr(0, 2) + JpegSegment('\xe1', "Exif\0\0"s + Camera(orientation)) +
           JpegSegment('\xed', "Photoshop 3.0\0"s + kPlace) + JpegSegment('\xfe', kPlace) + plain.substr(2);
}

std::string Png(const Pixels& pixels, unsigned orientation) {
    constexpr std::size_t kBehindTheHead = 33;
    std::string content = picture_formats::WritePng(pixels, {});
    content.insert(kBehindTheHead, PngChunk("eXIf", Camera(orientation)) +
                                       PngChunk("tEXt", "Place\0"s + kPlace) +
                                       PngChunk("tIME", "\x07\xe0\x01\x01\0\0\0"s));
    return content;
}

std::string WebP(const Pixels& pixels, unsigned orientation) {
    const std::string plain = picture_formats::WriteWebP(pixels, {});
    const std::string camera = Camera(orientation);
    const WebPData image{reinterpret_cast<const std::uint8_t*>(plain.data()), plain.size()}; // NOLINT(*-cast)
    const WebPData says{reinterpret_cast<const std::uint8_t*>(camera.data()),
                        camera.size()}; // NOLINT(*-cast)
    const std::unique_ptr<WebPMux, void (*)(WebPMux*)> mux(WebPMuxNew(), &WebPMuxDelete);
    WebPData whole{};
    if (WebPMuxSetImage(mux.get(), &image, 0) != WEBP_MUX_OK ||
        WebPMuxSetChunk(mux.get(), "EXIF", &says, 0) != WEBP_MUX_OK ||
        WebPMuxSetChunk(mux.get(), "XMP ", &says, 0) != WEBP_MUX_OK ||
        WebPMuxAssemble(mux.get(), &whole) != WEBP_MUX_OK)
        throw std::runtime_error("no WebP was made");
    std::string content(reinterpret_cast<const char*>(whole.bytes), whole.size); // NOLINT(*-cast)
    WebPDataClear(&whole);
    return content;
}

std::string Gif(const Pixels& pixels, GifKind kind) {
    const std::string sides = Bytes(pixels.size.width, 2, false) + Bytes(pixels.size.height, 2, false);
    std::string content = "GIF89a" + sides + "\x81\0\0"s;
    for (const auto& colour : kCorners)
        content.append(colour.begin(), colour.end());
    content += "!\xfe"s + static_cast<char>(kPlace.size()) + kPlace + '\0';
    if (kind.pictures > 1)
        content += "!\xff\x0bNETSCAPE2.0\x03\x01\0\0\0"s;
    for (unsigned picture = 0; picture < kind.pictures; ++picture)
        content += "!\xf9\x04\x01\0\0\x03\0,\0\0\0\0"s + sides +
                   (kind.isInterlaced ? "\x40\x02"s : "\0\x02"s) + GifPieces(pixels, kind.isInterlaced);
    return content + ';';
}

std::string MovingWebP(const Pixels& pixels) {
    const std::unique_ptr<WebPMux, void (*)(WebPMux*)> mux(WebPMuxNew(), &WebPMuxDelete);
    const std::string plain = picture_formats::WriteWebP(pixels, {});
    WebPMuxFrameInfo frame{};
    frame.bitstream = {reinterpret_cast<const std::uint8_t*>(plain.data()), plain.size()}; // NOLINT(*-cast)
    frame.duration = 100;
    frame.id = WEBP_CHUNK_ANMF;
    const std::string camera = Camera(1);
    const WebPData says{reinterpret_cast<const std::uint8_t*>(camera.data()),
                        camera.size()}; // NOLINT(*-cast)
    const WebPMuxAnimParams endless{0, 0};
    WebPData whole{};
    if (WebPMuxPushFrame(mux.get(), &frame, 1) != WEBP_MUX_OK ||
        WebPMuxPushFrame(mux.get(), &frame, 1) != WEBP_MUX_OK ||
        WebPMuxSetAnimationParams(mux.get(), &endless) != WEBP_MUX_OK ||
        WebPMuxSetChunk(mux.get(), "EXIF", &says, 1) != WEBP_MUX_OK ||
        WebPMuxAssemble(mux.get(), &whole) != WEBP_MUX_OK)
        throw std::runtime_error("no WebP was made");
    std::string content(reinterpret_cast<const char*>(whole.bytes), whole.size); // NOLINT(*-cast)
    WebPDataClear(&whole);
    return content;
}

std::string InkJpeg(const Pixels& pixels) {
    jpeg_error_mgr errors{};
    jpeg_compress_struct file{};
    file.err = jpeg_std_error(&errors);
    jpeg_create_compress(&file);
    unsigned char* made = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&file, &made, &size);
    file.image_width = pixels.size.width;
    file.image_height = pixels.size.height;
    file.input_components = Pixels::kBytes;
    file.in_color_space = JCS_CMYK;
    jpeg_set_defaults(&file);
    jpeg_start_compress(&file, TRUE);
    // Ink that is turned over is light, and opacity the black that is not there.
    while (file.next_scanline < file.image_height) {
        auto* line = const_cast<JSAMPLE*>(pixels.Line(file.next_scanline)); // NOLINT(*-const-cast)
        (void)jpeg_write_scanlines(&file, &line, 1);
    }
    jpeg_finish_compress(&file);
    std::string content(reinterpret_cast<const char*>(made), size); // NOLINT(*-reinterpret-cast)
    jpeg_destroy_compress(&file);
    std::free(made); // NOLINT(*-no-malloc): the library's own
    return content;
}

std::vector<std::string> Claims() {
    const std::string png =
        "\x89PNG\r\n\x1a\n"s + PngChunk("IHDR", Bytes(100000, 4) + Bytes(100000, 4) + "\x08\x02\0\0\0"s);
    const std::string jpeg =
        "\xff\xd8"s + JpegSegment('\xc0', "\x08\xff\xdc\xff\xdc\x01\x01\x11\0"s) + "\xff\xd9";
    const std::string gif = "GIF89a\xff\xff\xff\xff\0\0\0;"s;
    const std::string webp = "RIFF\x16\0\0\0WEBPVP8X\x0a\0\0\0\0\0\0\0\xff\x3f\0\xff\x3f\0"s;
    return {png, jpeg, gif, webp};
}

std::string MemoryBomb() {
    const std::string parts = "\x01\x11\0\x02\x11\0\x03\x11\0\x04\x11\0"s;
    return "\xff\xd8"s + JpegSegment('\xc2', "\x08\x27\x0f\x27\x0f\x04"s + parts) +
           JpegSegment('\xda', "\x01\x01\0\0\0\0"s) + std::string(1000, 'x') + "\xff\xd9";
}

} // namespace made_pictures
