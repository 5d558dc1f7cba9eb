#pragma once

#include "host/Export.h"
#include "host/IInstanceManager.h"

#include <string>
#include <unordered_map>

/// An instance manager that keeps what is published in a table.
class VQ_EXPORT InstanceRegistry final : public IInstanceManager {
public:
    void QueryInterface(const std::string& guid, void** out) const override;
    void RegisterInterface(const std::string& guid, void* object, std::uint32_t version) override;
    void UnregisterInterface(const std::string& guid) override;

private:
    std::unordered_map<std::string, void*> m_objects;
};
