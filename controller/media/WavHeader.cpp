#include "controller/media/WavHeader.h"

#include <algorithm>
#include <cstddef>

namespace controller {

namespace {

constexpr std::size_t kRiffSize = 12;
constexpr std::size_t kChunkSize = 8;
constexpr std::size_t kFormatSize = 16;

std::uint32_t Number(std::string_view text, std::size_t place, unsigned bytes) {
    std::uint32_t number = 0;
    for (unsigned index = 0; index < bytes; ++index)
        number |= std::uint32_t{static_cast<unsigned char>(text[place + index])} << (8 * index);
    return number;
}

void Append(std::string& text, std::uint32_t number, unsigned bytes) {
    for (unsigned index = 0; index < bytes; ++index)
        text += static_cast<char>((number >> (8 * index)) & 0xffU);
}

void ReadFormat(std::string_view content, std::size_t place, WavHeader& header) {
    header.format = Number(content, place, 2);
    header.channels = Number(content, place + 2, 2);
    header.rate = Number(content, place + 4, 4);
    header.bits = Number(content, place + 14, 2);
}

} // namespace

bool WavHeader::IsStreamed() const noexcept {
    constexpr std::uint32_t kNoLength = 0x7ff00000; // what is written for "unknown" lies above it
    return promised >= kNoLength || (promised == 0 && there > 0);
}

bool WavHeader::IsPlain() const noexcept {
    constexpr unsigned kPcm = 1;
    return format == kPcm && bits == 16 && (channels == 1 || channels == 2) && !IsStreamed();
}

std::optional<WavHeader> ReadWavHeader(std::string_view content) {
    if (content.size() < kRiffSize || content.substr(0, 4) != "RIFF" || content.substr(8, 4) != "WAVE")
        return std::nullopt;
    WavHeader header;
    for (std::size_t place = kRiffSize; place + kChunkSize <= content.size();) {
        const std::string_view name = content.substr(place, 4);
        const std::uint32_t size = Number(content, place + 4, 4);
        place += kChunkSize;
        if (name == "fmt " && size >= kFormatSize && place + kFormatSize <= content.size())
            ReadFormat(content, place, header);
        if (name == "data") {
            header.promised = size;
            header.there = content.size() - place;
            return header;
        }
        place += size + std::size_t{size % 2};
    }
    return std::nullopt;
}

std::string WavOf(std::string_view samples, unsigned channels, unsigned rate) {
    const auto size = static_cast<std::uint32_t>(samples.size());
    std::string wav = "RIFF";
    Append(wav, 36 + size, 4);
    wav += "WAVEfmt ";
    Append(wav, kFormatSize, 4);
    Append(wav, 1, 2);
    Append(wav, channels, 2);
    Append(wav, rate, 4);
    Append(wav, rate * channels * 2, 4);
    Append(wav, channels * 2, 2);
    Append(wav, 16, 2);
    wav += "data";
    Append(wav, size, 4);
    return wav.append(samples);
}

} // namespace controller
