#pragma once

#include <cassert>
#include <thread>

namespace controller {

/// Asserts that what its owner is asked for is asked on the thread that made it: the driver thread. Costs
/// nothing where assertions do not.
class DriverOnly {
public:
    void Assert() const noexcept { assert(std::this_thread::get_id() == m_thread); }

private:
    [[maybe_unused]] std::thread::id m_thread = std::this_thread::get_id();
};

} // namespace controller
