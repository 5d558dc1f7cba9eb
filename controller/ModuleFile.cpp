#include "controller/ModuleFile.h"

#include <system_error>

namespace controller {

std::filesystem::path FindModuleFile() {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    const fs::path places[] = {folder / CONTROLLER_MODULE_FROM_BIN, folder / "../lib/announcement_agent.so",
                               folder / "announcement_agent.so"};
    for (const fs::path& place : places)
        if (fs::exists(place, error))
            return place.lexically_normal();
    return places[0].lexically_normal();
}

} // namespace controller
