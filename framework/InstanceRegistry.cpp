#include "framework/InstanceRegistry.h"

void InstanceRegistry::QueryInterface(const std::string& guid, void** out) const {
    const auto found = m_objects.find(guid);
    *out = found != m_objects.end() ? found->second : nullptr;
}

void InstanceRegistry::RegisterInterface(const std::string& guid, void* object, std::uint32_t /*version*/) {
    m_objects[guid] = object;
}

void InstanceRegistry::UnregisterInterface(const std::string& guid) {
    m_objects.erase(guid);
}
