#pragma once

#include "controller/driver/DriverOnly.h"
#include "controller/events/EventFeed.h"
#include "controller/state/IVariableStore.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace controller {

/// The variables of the house: texts that popups may show as they stand. Driver thread only.
class Variables {
public:
    /// The longest value, in bytes.
    static constexpr std::size_t kMaxValue = 4096;

    struct Variable {
        std::uint32_t device = 0;
        std::uint32_t variable = 0;
        std::string name;
        std::string value;
    };

    Variables(const std::vector<Variable>& variables, IVariableStore& store, EventFeed& feed);

    enum class SetResult { Done, Unknown, TooLong };

    /// `done` is told when the value stands on the disk; not at all unless the result is `Done`.
    SetResult Set(std::uint32_t device, std::uint32_t variable, const std::string& value, WriteDone done);

    /// The value, or nothing when the house has no such variable.
    [[nodiscard]] std::optional<std::string> Value(std::uint32_t device, std::uint32_t variable) const;

    /// All of them, by device and variable.
    [[nodiscard]] std::vector<Variable> All() const;

private:
    IVariableStore& m_store;
    EventFeed& m_feed;
    std::map<std::pair<std::uint32_t, std::uint32_t>, Variable> m_variables;
    DriverOnly m_driverOnly;
};

} // namespace controller
