#include "controller/driver/BoundedFolder.h"

#include "controller/driver/Durable.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace controller {

namespace fs = std::filesystem;

namespace {

struct KeptFile {
    fs::file_time_type used;
    std::uintmax_t bytes;
    fs::path file;
};

/// Those that are hidden are being written.
std::vector<KeptFile> KeptIn(const fs::path& folder) {
    std::vector<KeptFile> all;
    std::error_code error;
    for (fs::directory_iterator place(folder, error), end; !error && place != end; place.increment(error)) {
        std::error_code gone;
        KeptFile kept{place->last_write_time(gone), place->file_size(gone), place->path()};
        if (!gone && kept.file.filename().string().front() != '.')
            all.push_back(std::move(kept));
    }
    return all;
}

} // namespace

BoundedFolder::BoundedFolder(fs::path folder, std::uintmax_t most)
    : m_folder(std::move(folder))
    , m_most(most) {
    durable::Draft::Sweep(m_folder);
}

void BoundedFolder::Keep(const std::string& name, const std::string& content) {
    fs::create_directories(m_folder);
    durable::Draft draft(m_folder / name, 0600);
    draft.Write(content);
    draft.PlaceUnsynced(); // what a loss of power takes is made again
    MakeRoom(m_folder / name);
}

bool BoundedFolder::Use(const std::string& name) const noexcept {
    std::error_code error;
    const fs::path file = m_folder / name;
    if (!fs::is_regular_file(file, error))
        return false;
    // A folder that takes nothing keeps what it has all the same.
    fs::last_write_time(file, fs::file_time_type::clock::now(), error);
    return true;
}

void BoundedFolder::MakeRoom(const fs::path& but) {
    const std::lock_guard lock(m_mutex);
    std::vector<KeptFile> all = KeptIn(m_folder);
    std::sort(all.begin(), all.end(),
              [](const KeptFile& one, const KeptFile& other) { return one.used < other.used; });
    std::uintmax_t total = 0;
    for (const KeptFile& kept : all)
        total += kept.bytes;
    for (const KeptFile& kept : all) {
        if (total <= m_most)
            return;
        std::error_code error;
        if (kept.file != but && fs::remove(kept.file, error))
            total -= kept.bytes;
    }
}

} // namespace controller
