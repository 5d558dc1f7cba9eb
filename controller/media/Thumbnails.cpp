#include "controller/media/Thumbnails.h"

#include "picture/PictureHead.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <system_error>

namespace controller {

namespace fs = std::filesystem;

namespace {

/// Which no name of the media folder has in it.
constexpr char kBehindTheName = '~';

std::string FileNameOf(const std::string& name, std::string tag) {
    tag.erase(std::remove(tag.begin(), tag.end(), '"'), tag.end());
    return name + kBehindTheName + tag;
}

} // namespace

Thumbnails::Thumbnails(const fs::path& folder) {
    if (!folder.empty())
        m_kept.emplace(folder, kMost);
}

std::shared_ptr<const std::string> Thumbnails::Find(const std::string& name, const std::string& tag) const {
    const std::string file = FileNameOf(name, tag);
    if (!m_kept || !m_kept->Use(file))
        return nullptr;
    std::ostringstream content;
    content << std::ifstream(m_kept->Path() / file, std::ios::binary).rdbuf();
    // It may have gone meanwhile, or been lost with the power.
    const bool isPicture = picture::TypeOf(content.str()) != picture::Type::None;
    return isPicture ? std::make_shared<const std::string>(content.str()) : nullptr;
}

void Thumbnails::Keep(const std::string& name, const std::string& tag, const std::string& content) noexcept {
    if (!m_kept)
        return;
    Remove(name);
    try {
        m_kept->Keep(FileNameOf(name, tag), content);
    } catch (const std::exception&) {
        // A disk that is full, or a folder that takes nothing: who asks for it waits for another one.
    }
}

void Thumbnails::Remove(const std::string& name) noexcept {
    if (!m_kept)
        return;
    const std::string beginning = name + kBehindTheName;
    std::error_code error;
    for (fs::directory_iterator place(m_kept->Path(), error), end; !error && place != end;
         place.increment(error)) {
        std::error_code gone;
        if (place->path().filename().string().rfind(beginning, 0) == 0)
            fs::remove(place->path(), gone);
    }
}

} // namespace controller
