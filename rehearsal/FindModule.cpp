#include "rehearsal/FindModule.h"

#include <filesystem>
#include <stdexcept>

std::string FindModule() {
    const std::filesystem::path here = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    std::string places;
    // As installed first, for that is the one folder that is named for this very program.
    for (const char* const folder : {MODULE_FOLDER_FROM_PROGRAM, "../lib", "."}) {
        const std::filesystem::path file = (here / folder / "announcement_agent.so").lexically_normal();
        if (std::filesystem::exists(file))
            return file.string();
        places.append(places.empty() ? "" : ", ").append(file.string());
    }
    throw std::runtime_error("cannot find the agent's module, looked for as " + places +
                             "; name it with --module");
}
