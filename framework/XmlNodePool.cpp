#include "framework/XmlNodePool.h"

#include "framework/XmlNode.h"

#include <atomic>
#include <cassert>
#include <cstdint>

namespace {

constexpr std::uint32_t kPlaces = 256;

struct Block;

struct Place {
    Block* block;
    alignas(XmlNode) std::byte node[sizeof(XmlNode)];
};

struct Block {
    std::atomic<std::uint32_t> outstanding{kPlaces}; ///< places that have not been given back
    Place places[kPlaces];
};

void Settle(Block& block, std::uint32_t places) noexcept {
    if (block.outstanding.fetch_sub(places, std::memory_order_acq_rel) == places)
        delete &block;
}

/// The block that a thread fills. The only state of its kind here, for `operator new` has no object to ask.
class Filling {
public:
    Filling() = default;
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;
    ~Filling() {
        if (m_left > 0)
            Settle(*m_block, m_left);
        m_left = 0;
    }

    Place& Next() {
        if (m_left == 0) {
            m_block = new Block;
            m_left = kPlaces;
        }
        Place& place = m_block->places[kPlaces - m_left];
        --m_left;
        place.block = m_block;
        return place;
    }

private:
    Block* m_block = nullptr; ///< with none left it may be gone already
    std::uint32_t m_left = 0;
};

// The framework is loaded with its program, so that a thread's own needs no look-up at each node.
[[gnu::tls_model("initial-exec")]] thread_local Filling t_filling;

} // namespace

void* XmlNodePool::Take([[maybe_unused]] std::size_t size) {
    assert(size == sizeof(XmlNode));
    return t_filling.Next().node;
}

void XmlNodePool::GiveBack(void* memory) noexcept {
    auto* const place = reinterpret_cast<Place*>(static_cast<std::byte*>(memory) - offsetof(Place, node));
    Block& block = *place->block;
    Settle(block, 1);
}
