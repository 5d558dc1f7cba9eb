#include "controller/rooms/Variables.h"

namespace controller {

Variables::Variables(const std::vector<Variable>& variables, IVariableStore& store, EventFeed& feed)
    : m_store(store)
    , m_feed(feed) {
    for (const Variable& variable : variables)
        m_variables.emplace(std::pair(variable.device, variable.variable), variable);
}

Variables::SetResult
Variables::Set(std::uint32_t device, std::uint32_t variable, const std::string& value, WriteDone done) {
    m_driverOnly.Assert();
    const auto place = m_variables.find({device, variable});
    if (place == m_variables.end())
        return SetResult::Unknown;
    if (value.size() > kMaxValue)
        return SetResult::TooLong;
    place->second.value = value;
    m_store.WriteVariable(device, variable, value, std::move(done));
    m_feed.Publish(events::VariableChanged{device, variable, value});
    return SetResult::Done;
}

std::optional<std::string> Variables::Value(std::uint32_t device, std::uint32_t variable) const {
    m_driverOnly.Assert();
    const auto place = m_variables.find({device, variable});
    return place == m_variables.end() ? std::nullopt : std::optional(place->second.value);
}

std::vector<Variables::Variable> Variables::All() const {
    m_driverOnly.Assert();
    std::vector<Variable> all;
    all.reserve(m_variables.size());
    for (const auto& [key, variable] : m_variables)
        all.push_back(variable);
    return all;
}

} // namespace controller
