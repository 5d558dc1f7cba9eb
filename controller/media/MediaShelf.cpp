#include "controller/media/MediaShelf.h"

#include "controller/audio/MediaFolder.h"
#include "controller/audio/SoundFile.h"
#include "controller/driver/Descriptor.h"
#include "controller/driver/Durable.h"
#include "controller/media/MediaName.h"
#include "controller/media/Upload.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace controller {

namespace fs = std::filesystem;

namespace {

MediaError Missing(const std::string& name) {
    return {MediaError::Kind::Missing, "there is no file " + name + " in the media folder"};
}

struct stat StatOf(const fs::path& file, const std::string& name) {
    struct stat status {};
    if (::lstat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        throw Missing(name);
    return status;
}

std::chrono::system_clock::time_point ModifiedAt(const struct stat& status) {
    return std::chrono::system_clock::time_point(
        std::chrono::duration_cast<std::chrono::system_clock::duration>(
            std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec)));
}

std::string TagOf(const struct stat& status) {
    return '"' + std::to_string(status.st_mtim.tv_sec) + '-' + std::to_string(status.st_mtim.tv_nsec) + '-' +
           std::to_string(status.st_size) + '"';
}

std::string ReadAll(int file, std::size_t size) {
    std::string content(size, '\0');
    std::size_t done = 0;
    while (done < size) {
        const ssize_t read = ::read(file, content.data() + done, size - done);
        if (read < 0 && errno == EINTR)
            continue;
        if (read <= 0)
            break; // it has become shorter, or is unreadable: what there is, is all
        done += static_cast<std::size_t>(read);
    }
    content.resize(done);
    return content;
}

/// By the header; nothing of what cannot be read.
std::optional<picture::Size> SizeOf(const fs::path& file) {
    const Descriptor image(
        ::open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)); // NOLINT(*-vararg)
    return picture::SizeOf([&image](std::size_t place, std::size_t count) {
        std::string bytes(count, '\0');
        const ssize_t read = ::pread(image.Number(), bytes.data(), count, static_cast<off_t>(place));
        bytes.resize(read > 0 ? static_cast<std::size_t>(read) : 0);
        return bytes;
    });
}

void CheckSound(const fs::path& file, const std::string& name) {
    try {
        const audio::SoundFile sound(file.string(), name);
        if (sound.Duration() > audio::kLongestClip)
            throw TooLong(name, sound.Duration());
    } catch (const audio::SoundFileError& error) {
        throw MediaError(MediaError::Kind::Unsuitable, error.what(), "a whole sound file of at most 20 s")
            .With("damaged");
    }
}

} // namespace

MediaShelf::Description MediaShelf::Describe(const std::string& name) const {
    const fs::path file = m_folder / name;
    const struct stat status = StatOf(file, name);
    Description description;
    description.name = name;
    description.isSound = media_name::KindOf(name) == media_name::Kind::Sound;
    description.bytes = static_cast<std::uintmax_t>(status.st_size);
    description.modified = ModifiedAt(status);
    if (!description.isSound) {
        description.size = SizeOf(file);
        return description;
    }
    try {
        const audio::SoundFile sound(file.string());
        description.sound = Sound{sound.Duration(), sound.Rate(), sound.Channels()};
    } catch (const audio::SoundFileError& error) {
        description.trouble = error.what();
    }
    if (m_levels != nullptr)
        description.level = m_levels->Known(file);
    return description;
}

std::vector<MediaShelf::Description> MediaShelf::List() const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator place(m_folder, error), end; !error && place != end; place.increment(error)) {
        const std::string name = place->path().filename().string();
        if (media_name::KindOf(name) != media_name::Kind::None && names.size() < kMaxListed)
            names.push_back(name);
    }
    if (error)
        throw MediaError(MediaError::Kind::Unreadable, "the media folder cannot be read: " + error.message());
    std::sort(names.begin(), names.end());
    std::vector<Description> media;
    for (const std::string& name : names) {
        try {
            media.push_back(Describe(name));
        } catch (const MediaError&) {
            // A folder or link of such a name, or a file that has gone meanwhile.
        }
    }
    return media;
}

MediaShelf::File MediaShelf::Read(const std::string& name) {
    const Descriptor file(::open((m_folder / name).c_str(),
                                 O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)); // NOLINT(*-vararg)
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode))
        throw Missing(name);
    if (static_cast<std::size_t>(status.st_size) > kMaxFile)
        throw MediaError(MediaError::Kind::Unreadable, name + " is too large to be sent");
    File result;
    result.tag = TagOf(status);
    result.type = media_name::TypeOf(name);
    const std::lock_guard lock(m_mutex);
    for (auto place = m_shared.begin(); place != m_shared.end();)
        place = place->second.second.expired() ? m_shared.erase(place) : std::next(place);
    auto& [tag, shared] = m_shared[name];
    result.content = tag == result.tag ? shared.lock() : nullptr;
    if (!result.content) {
        result.content = std::make_shared<const std::string>(
            ReadAll(file.Number(), static_cast<std::size_t>(status.st_size)));
        tag = result.tag;
        shared = result.content;
    }
    return result;
}

MediaShelf::File MediaShelf::FindThumbnail(const std::string& name) const {
    if (media_name::KindOf(name) != media_name::Kind::Image)
        throw MediaError(MediaError::Kind::Missing, name + " is no image, and has no thumbnail");
    File result;
    result.tag = TagOf(StatOf(m_folder / name, name));
    result.content = m_thumbnails.Find(name, result.tag);
    if (result.content)
        result.type = picture::MediaTypeOf(picture::TypeOf(*result.content));
    return result;
}

MediaShelf::File MediaShelf::MakeThumbnail(const std::string& name) {
    File made = FindThumbnail(name); // somebody else may have waited for it
    if (made.content)
        return made;
    const File image = Read(name);
    made.tag = image.tag;
    made.content = std::make_shared<const std::string>(m_converter.Thumbnail(name, *image.content));
    made.type = picture::MediaTypeOf(picture::TypeOf(*made.content));
    m_thumbnails.Keep(name, made.tag, *made.content);
    return made;
}

MediaShelf::Stored
MediaShelf::Store(const std::string& name, const std::string& content, const SoundSpan& span) {
    const Upload upload = MakeUpload(name, content, span, m_converter);
    const fs::path target = m_folder / upload.name;
    try {
        durable::Draft draft(target);
        draft.Write(upload.content);
        if (media_name::KindOf(upload.name) == media_name::Kind::Sound)
            CheckSound(draft.File(), upload.name);
        struct stat status {};
        const bool isNew = ::lstat(target.c_str(), &status) != 0;
        if (!isNew && !S_ISREG(status.st_mode))
            throw MediaError(MediaError::Kind::Taken,
                             upload.name + " is in the media folder already, and is no file");
        draft.Place();
        if (!upload.thumbnail.empty())
            m_thumbnails.Keep(upload.name, TagOf(StatOf(target, upload.name)), upload.thumbnail);
        if (m_levels != nullptr && media_name::KindOf(upload.name) == media_name::Kind::Sound)
            (void)m_levels->Of(target); // so that nobody waits for it when it is played
        Stored stored{isNew, Describe(upload.name)};
        stored.description.isConverted = upload.isConverted;
        return stored;
    } catch (const std::system_error& error) {
        throw MediaError(MediaError::Kind::NoRoom,
                         upload.name + " cannot be written to the media folder: " + error.code().message());
    }
}

void MediaShelf::Remove(const std::string& name) {
    (void)StatOf(m_folder / name, name); // a link or folder is none of ours
    if (::unlink((m_folder / name).c_str()) != 0)
        throw MediaError(MediaError::Kind::NoRoom, name + " cannot be removed: " + std::strerror(errno));
    m_thumbnails.Remove(name);
}

MediaShelf::Length MediaShelf::LengthOf(const std::string& sound) const {
    try {
        const audio::MediaFolder folder(m_folder);
        const std::string path = audio::MediaFolder::kPrefix + sound + ".wav";
        return {audio::SoundFile(folder.Find(path).string()).Duration(), ""};
    } catch (const audio::UnknownSoundFormat&) {
        return {}; // a plug-in may play it, and only then tells its length
    } catch (const std::exception& error) {
        return {{}, error.what()};
    }
}

} // namespace controller
