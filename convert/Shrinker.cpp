#include "convert/Shrinker.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

/// So many parts of a point to what becomes of several.
void Add(const std::uint8_t* point, std::uint64_t parts, float* sum) noexcept {
    const float weight = static_cast<float>(parts) * static_cast<float>(point[3]);
    for (std::size_t colour = 0; colour < 3; ++colour)
        sum[colour] += weight * static_cast<float>(point[colour]);
    sum[3] += weight;
}

} // namespace

Shrinker::Shrinker(picture::Size from, picture::Size to) : m_from(from), m_made(to), m_room(from.height) {
    m_narrow.resize(Pixels::kBytes * to.width);
    m_sums.resize(Pixels::kBytes * to.width);
}

void Shrinker::Take(const std::uint8_t* line) noexcept {
    const picture::Size to = m_made.size;
    if (m_done == to.height)
        return;
    if (to.width == m_from.width && to.height == m_from.height) {
        std::memcpy(m_made.Line(m_done++), line, Pixels::kBytes * to.width);
        return;
    }
    Narrow(line);
    // A line that comes has as many parts as there are lines to be made, and a line that is made is filled by
    // as many parts as there are lines that come.
    for (std::uint64_t left = to.height; left > 0;) {
        const std::uint64_t part = std::min(left, m_room);
        for (std::size_t place = 0; place < m_sums.size(); ++place)
            m_sums[place] += m_narrow[place] * static_cast<float>(part);
        left -= part;
        m_room -= part;
        if (m_room == 0)
            Finish();
    }
}

void Shrinker::Narrow(const std::uint8_t* line) noexcept {
    std::fill(m_narrow.begin(), m_narrow.end(), 0.0F);
    const std::uint64_t parts = m_made.size.width;
    float* sum = m_narrow.data();
    std::uint64_t room = m_from.width;
    for (std::uint32_t x = 0; x < m_from.width; ++x, line += Pixels::kBytes) {
        std::uint64_t left = parts;
        for (; left >= room; room = m_from.width, sum += Pixels::kBytes) {
            Add(line, room, sum);
            left -= room;
        }
        if (left > 0)
            Add(line, left, sum);
        room -= left;
    }
}

void Shrinker::Finish() noexcept {
    const float whole = static_cast<float>(m_from.width) * static_cast<float>(m_from.height);
    std::uint8_t* point = m_made.Line(m_done++);
    for (std::size_t place = 0; place < m_sums.size(); place += Pixels::kBytes, point += Pixels::kBytes) {
        const float opacity = m_sums[place + 3];
        for (std::size_t colour = 0; colour < 3 && opacity > 0; ++colour)
            point[colour] =
                static_cast<std::uint8_t>(std::min(255L, std::lround(m_sums[place + colour] / opacity)));
        point[3] = static_cast<std::uint8_t>(std::min(255L, std::lround(opacity / whole)));
    }
    std::fill(m_sums.begin(), m_sums.end(), 0.0F);
    m_room = m_from.height;
}

Pixels Shrunk(Pixels pixels, picture::Size to) {
    if (to.width == pixels.size.width && to.height == pixels.size.height)
        return pixels;
    Shrinker shrinker(pixels.size, to);
    for (std::uint32_t line = 0; line < pixels.size.height; ++line)
        shrinker.Take(pixels.Line(line));
    return shrinker.Give();
}
