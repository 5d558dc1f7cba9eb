#include "convert/PictureFormats.h"
#include "convert/Report.h"
#include "convert/Shrinker.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include <webp/decode.h>
#include <webp/demux.h>
#include <webp/encode.h>
#include <webp/mux.h>

namespace picture_formats {

namespace {

struct MemoryEnd {
    void operator()(std::uint8_t* memory) const { WebPFree(memory); }
};
struct DemuxerEnd {
    void operator()(WebPDemuxer* demuxer) const { WebPDemuxDelete(demuxer); }
};
struct MuxEnd {
    void operator()(WebPMux* mux) const { WebPMuxDelete(mux); }
};

[[noreturn]] void RefuseWebP() {
    throw report::Refusal(report::kDamaged, "is damaged: it is cut short or broken");
}

const std::uint8_t* BytesOf(std::string_view text) {
    return reinterpret_cast<const std::uint8_t*>(text.data()); // NOLINT(*-reinterpret-cast)
}

/// The library makes it smaller while it decodes.
Pixels ReadStill(std::string_view content, std::uint32_t most) {
    WebPDecoderConfig config;
    if (WebPInitDecoderConfig(&config) == 0 ||
        WebPGetFeatures(BytesOf(content), content.size(), &config.input) != VP8_STATUS_OK)
        RefuseWebP();
    const picture::Size size{static_cast<std::uint32_t>(config.input.width),
                             static_cast<std::uint32_t>(config.input.height)};
    Pixels pixels(Within(size, most));
    config.options.use_scaling = pixels.size.width != size.width ? 1 : 0;
    config.options.scaled_width = static_cast<int>(pixels.size.width);
    config.options.scaled_height = static_cast<int>(pixels.size.height);
    config.output.colorspace = MODE_RGBA;
    config.output.is_external_memory = 1;
    config.output.u.RGBA.rgba = pixels.bytes.data();
    config.output.u.RGBA.stride = static_cast<int>(pixels.size.width * Pixels::kBytes);
    config.output.u.RGBA.size = pixels.bytes.size();
    const VP8StatusCode status = WebPDecode(BytesOf(content), content.size(), &config);
    WebPFreeDecBuffer(&config.output);
    if (status == VP8_STATUS_OUT_OF_MEMORY)
        throw std::bad_alloc();
    if (status != VP8_STATUS_OK)
        RefuseWebP();
    return pixels;
}

/// The first of several, in its place of the whole.
Pixels ReadFirst(std::string_view content, std::uint32_t most) {
    const WebPData data{BytesOf(content), content.size()};
    const std::unique_ptr<WebPDemuxer, DemuxerEnd> demuxer(WebPDemux(&data));
    WebPIterator frame{};
    if (!demuxer || WebPDemuxGetFrame(demuxer.get(), 1, &frame) == 0)
        RefuseWebP();
    Pixels whole({WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_WIDTH),
                  WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_HEIGHT)});
    const std::string_view bytes(reinterpret_cast<const char*>(frame.fragment.bytes), // NOLINT(*-cast)
                                 frame.fragment.size);
    const picture::Size at{static_cast<std::uint32_t>(frame.x_offset),
                           static_cast<std::uint32_t>(frame.y_offset)};
    WebPDemuxReleaseIterator(&frame); // which owns nothing of the bytes
    const Pixels first = ReadStill(bytes, UINT32_MAX);
    if (at.width + first.size.width > whole.size.width || at.height + first.size.height > whole.size.height)
        RefuseWebP();
    for (std::uint32_t line = 0; line < first.size.height; ++line)
        std::memcpy(whole.Line(at.height + line) + at.width * Pixels::kBytes, first.Line(line),
                    first.size.width * Pixels::kBytes);
    const picture::Size to = Within(whole.size, most);
    return Shrunk(std::move(whole), to);
}

std::string WebPWithProfile(const std::uint8_t* bytes, std::size_t size, std::string_view profile) {
    const std::unique_ptr<WebPMux, MuxEnd> mux(WebPMuxNew());
    const WebPData image{bytes, size};
    const WebPData colours{BytesOf(profile), profile.size()};
    WebPData whole{};
    if (!mux || WebPMuxSetImage(mux.get(), &image, 0) != WEBP_MUX_OK ||
        WebPMuxSetChunk(mux.get(), "ICCP", &colours, 0) != WEBP_MUX_OK ||
        WebPMuxAssemble(mux.get(), &whole) != WEBP_MUX_OK)
        throw std::bad_alloc();
    std::string content(reinterpret_cast<const char*>(whole.bytes), whole.size); // NOLINT(*-cast)
    WebPDataClear(&whole);
    return content;
}

} // namespace

Pixels ReadWebP(std::string_view content, std::uint32_t most) {
    WebPBitstreamFeatures features;
    if (WebPGetFeatures(BytesOf(content), content.size(), &features) != VP8_STATUS_OK)
        RefuseWebP();
    return features.has_animation != 0 ? ReadFirst(content, most) : ReadStill(content, most);
}

std::string WriteWebP(const Pixels& pixels, const std::vector<picture::Block>& profile) {
    constexpr float kQuality = 85;
    std::uint8_t* bytes = nullptr;
    const std::size_t size = WebPEncodeRGBA(
        pixels.bytes.data(), static_cast<int>(pixels.size.width), static_cast<int>(pixels.size.height),
        static_cast<int>(pixels.size.width * Pixels::kBytes), kQuality, &bytes);
    const std::unique_ptr<std::uint8_t, MemoryEnd> owner(bytes);
    if (size == 0)
        throw std::bad_alloc();
    return profile.empty() ? std::string(reinterpret_cast<const char*>(bytes), size) // NOLINT(*-cast)
                           : WebPWithProfile(bytes, size, profile.front().body);
}

} // namespace picture_formats
