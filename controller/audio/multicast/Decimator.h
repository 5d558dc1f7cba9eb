#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace controller::audio {

/// Brings sound of the engine's format to one channel and a lower rate, without delay: a sample is made of
/// what stands around it.
class Decimator final {
public:
    /// `factor`: so many frames become one sample.
    explicit Decimator(int factor);

    /// So many frames are needed before the first frame, and behind the last one.
    [[nodiscard]] std::int64_t Reach() const { return m_reach; }

    /// `in` holds what `out` is made of, with `Reach` frames on either side.
    void Run(const std::vector<float>& in, std::vector<float>& out) const;

private:
    std::int64_t m_factor;
    std::int64_t m_reach;
    std::vector<float> m_weights;
};

} // namespace controller::audio
