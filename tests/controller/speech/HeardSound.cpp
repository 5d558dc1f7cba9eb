#include "tests/controller/speech/HeardSound.h"

#include "tests/controller/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace controller {

namespace {

std::uint32_t Number(const std::string& bytes, std::size_t at, std::size_t size) {
    std::uint32_t number = 0;
    for (std::size_t index = size; index-- > 0;)
        number = number << 8U | static_cast<unsigned char>(bytes.at(at + index));
    return number;
}

} // namespace

HeardSound::HeardSound(const std::filesystem::path& file) {
    constexpr std::size_t kHead = 44;
    constexpr std::size_t kSeal = 8 + 64;
    const std::string bytes = TemporaryFolder::Read(file);
    if (bytes.size() < kHead + kSeal || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(36, 4, "data") != 0)
        throw std::runtime_error(file.string() + " is no WAV file");
    if (Number(bytes, 20, 2) != 1 || Number(bytes, 22, 2) != 1 || Number(bytes, 24, 4) != wave::kRate ||
        Number(bytes, 34, 2) != 16)
        throw std::runtime_error(file.string() + " is not 48 kHz, mono, 16 bit");
    if (bytes.compare(bytes.size() - kSeal, 4, "seal") != 0)
        throw std::runtime_error(file.string() + " has no seal at its end");
    for (std::size_t at = kHead; at + 1 < bytes.size() - kSeal; at += 2)
        samples.push_back(static_cast<std::int16_t>(Number(bytes, at, 2)));
    if (Number(bytes, 40, 4) != samples.size() * 2 || Number(bytes, 4, 4) != bytes.size() - 8)
        throw std::runtime_error(file.string() + " has lengths that are not true");
}

std::chrono::milliseconds HeardSound::Duration() const {
    return std::chrono::milliseconds((samples.size() * 1000 + wave::kRate - 1) / wave::kRate);
}

int HeardSound::Peak(std::size_t from, std::size_t to) const {
    int peak = 0;
    for (std::size_t at = from; at < std::min(to, samples.size()); ++at)
        peak = std::max(peak, std::abs(static_cast<int>(samples[at])));
    return peak;
}

} // namespace controller
