#include "controller/audio/RiffCheck.h"

#include "controller/audio/SoundFile.h"

#include <array>
#include <cstring>
#include <optional>

#include <unistd.h>

namespace controller::audio {

namespace {

constexpr std::int64_t kRiffHeaderSize = 12;
constexpr std::int64_t kChunkHeaderSize = 8;
constexpr int kMostChunks = 10'000;

struct Chunk {
    std::array<char, 4> name;
    std::uint32_t size;

    [[nodiscard]] bool Is(const char* text) const { return std::memcmp(name.data(), text, 4) == 0; }
};

std::optional<Chunk> ReadChunk(int descriptor, std::int64_t offset) {
    std::array<unsigned char, kChunkHeaderSize> bytes{};
    if (pread(descriptor, bytes.data(), bytes.size(), offset) != kChunkHeaderSize)
        return std::nullopt;
    Chunk chunk{};
    std::memcpy(chunk.name.data(), bytes.data(), 4);
    for (unsigned i = 0; i < 4; ++i)
        chunk.size |= static_cast<std::uint32_t>(bytes.at(4 + i)) << (8 * i);
    return chunk;
}

bool IsRiffWave(int descriptor) {
    std::array<char, kRiffHeaderSize> bytes{};
    return pread(descriptor, bytes.data(), bytes.size(), 0) == kRiffHeaderSize &&
           std::memcmp(bytes.data(), "RIFF", 4) == 0 && std::memcmp(bytes.data() + 8, "WAVE", 4) == 0;
}

} // namespace

void RequireWholeRiff(int descriptor, std::int64_t fileSize, const std::string& name) {
    if (!IsRiffWave(descriptor))
        return;
    std::int64_t offset = kRiffHeaderSize;
    for (int count = 0; count < kMostChunks; ++count) {
        const auto chunk = ReadChunk(descriptor, offset);
        if (!chunk)
            break;
        const std::int64_t begin = offset + kChunkHeaderSize;
        if (chunk->Is("data")) {
            if (chunk->size == 0)
                throw SoundFileError(name + ": a WAV header without any sound behind it");
            if (chunk->size > fileSize - begin)
                throw SoundFileError(name + ": truncated: its header promises " +
                                     std::to_string(chunk->size) + " bytes of sound, only " +
                                     std::to_string(fileSize - begin) + " are there");
            return;
        }
        offset = begin + chunk->size + chunk->size % 2;
    }
    throw SoundFileError(name + ": a WAV file that ends before its sound begins (no \"data\" chunk)");
}

} // namespace controller::audio
