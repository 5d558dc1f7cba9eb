#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include <stdlib.h>

namespace controller {

/// A folder of its own for a test, gone afterwards.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "controller-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        m_path = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }

    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }

    std::filesystem::path Write(const std::string& name, const std::string& content) const {
        auto file = m_path / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

    [[nodiscard]] static std::string Read(const std::filesystem::path& file) {
        std::ostringstream content;
        content << std::ifstream(file, std::ios::binary).rdbuf();
        return content.str();
    }

private:
    std::filesystem::path m_path;
};

} // namespace controller
