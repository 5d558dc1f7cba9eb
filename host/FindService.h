#pragma once

#include "host/IInstanceManager.h"

/// The service published under `Service::kGuid`, borrowed; null when there is none.
template <class Service>
[[nodiscard]] Service* FindService(const IInstanceManager& instances) {
    void* found = nullptr;
    instances.QueryInterface(Service::kGuid, &found);
    return static_cast<Service*>(found);
}
