#pragma once

#include <filesystem>
#include <string>

#include <sys/types.h>

/// Files that survive a loss of power. Everything throws `std::system_error`, which says what cannot be done
/// with which file.
namespace controller::durable {

/// Waits until what the file holds is on the disk.
void Sync(const std::filesystem::path& file);

/// Puts `from` in the place of `to`, which is one or the other at every moment. Both are in one folder, and
/// what `from` holds is on the disk.
void Replace(const std::filesystem::path& from, const std::filesystem::path& to);

/// Makes an empty file that nobody but its owner can open; there must be none, and no link either.
void MakePrivate(const std::filesystem::path& file);

/// A file that is filled under a name that nobody knows beforehand, beside the one whose place it takes,
/// whole or not at all. What is not put in place is removed.
class Draft {
public:
    /// `mode`: the rights on it, as far as the process's umask leaves them.
    explicit Draft(const std::filesystem::path& target, mode_t mode = 0644);
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft();

    /// Where it stands until it is put in place.
    [[nodiscard]] const std::filesystem::path& File() const noexcept { return m_file; }

    /// Gives it owner, group and rights of the file whose place it will take.
    void TakeOwnerAndMode();

    void Write(const std::string& content);

    /// Once; then it is on the disk, under the target's name.
    void Place();

    /// The same for what can be made anew, and is found out when it is damaged: nobody waits for the disk,
    /// and a loss of power may take it away.
    void PlaceUnsynced();

    /// Removes from the folder what drafts of programs that were killed have left. Those that are being
    /// written stay; so does what cannot be removed.
    static void Sweep(const std::filesystem::path& folder) noexcept;

private:
    [[noreturn]] void Fail(const std::string& what) const;
    void Close() noexcept;

    const std::filesystem::path m_target;
    std::filesystem::path m_file;
    int m_folder = -1;
    int m_number = -1;
    bool m_isPlaced = false;
};

} // namespace controller::durable
