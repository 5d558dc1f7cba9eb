#include "framework/DriverModule.h"

#include <filesystem>
#include <stdexcept>

#include <dlfcn.h>

namespace {

void* Load(const std::string& file) {
    // Absolute, for a bare name would be searched for in the system's library folders.
    void* const handle = dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
        throw std::runtime_error("cannot load the driver module " + file + ": " + dlerror());
    return handle;
}

DriverFactory FindFactory(void* module) {
    const auto entry = reinterpret_cast<DriverFactory (*)()>(dlsym(module, "GetCreationFunc"));
    return entry != nullptr ? entry() : nullptr;
}

} // namespace

DriverModule::DriverModule(const std::string& file)
    : m_handle(Load(file))
    , m_factory(FindFactory(m_handle.get())) {
    if (m_factory == nullptr)
        throw std::runtime_error("cannot use " + file +
                                 " as a driver module: it gives no factory through GetCreationFunc");
}

void DriverModule::Unload::operator()(void* handle) const noexcept {
    (void)dlclose(handle); // fails only for what is no handle
}

std::unique_ptr<VqBaseDriver> DriverModule::Create(IInstanceManager& instances) const {
    return std::unique_ptr<VqBaseDriver>(m_factory(instances));
}
