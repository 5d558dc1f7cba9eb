#include "controller/media/MediaName.h"

#include "controller/driver/Text.h"

#include <algorithm>
#include <cctype>

namespace controller::media_name {
namespace {

struct Ending {
    std::string_view ending;
    Kind kind;
    std::string_view type;
};

constexpr Ending kEndings[] = {
    {".wav", Kind::Sound, "audio/wav"},  {".png", Kind::Image, "image/png"},
    {".jpg", Kind::Image, "image/jpeg"}, {".jpeg", Kind::Image, "image/jpeg"},
    {".gif", Kind::Image, "image/gif"},  {".webp", Kind::Image, "image/webp"},
};

/// Other names under which browsers and tools send sounds.
constexpr std::string_view kSoundTypes[] = {"audio/x-wav", "audio/wave", "audio/vnd.wave"};

const Ending* EndingOf(std::string_view name) noexcept {
    for (const Ending& ending : kEndings) {
        if (name.size() > ending.ending.size() &&
            name.substr(name.size() - ending.ending.size()) == ending.ending)
            return &ending;
    }
    return nullptr;
}

} // namespace

Kind KindOf(std::string_view name) noexcept {
    const bool isPlain = std::all_of(name.begin(), name.end(), [](unsigned char letter) {
        return letter < 128 && (std::isalnum(letter) != 0 || letter == '-' || letter == '_' || letter == '.');
    });
    if (!isPlain || name.empty() || name.size() > kMaxLength || name.front() == '.' || name.front() == '-' ||
        name.front() == '_')
        return Kind::None;
    const Ending* const ending = EndingOf(name);
    return ending != nullptr ? ending->kind : Kind::None;
}

std::string Right() {
    std::string endings;
    for (const Ending& ending : kEndings)
        endings += (endings.empty() ? "" : ", ") + std::string(ending.ending);
    return "1 to " + std::to_string(kMaxLength) +
           " letters, digits, -, _ and ., a letter or digit first, ending in one of " + endings;
}

std::string_view TypeOf(std::string_view name) noexcept {
    const Ending* const ending = EndingOf(name);
    return ending != nullptr ? ending->type : "application/octet-stream";
}

bool IsTypeFor(std::string_view name, std::string_view contentType) {
    std::string type = Lower(contentType.substr(0, contentType.find(';')));
    while (!type.empty() && type.back() == ' ')
        type.pop_back();
    if (type == "application/octet-stream" || type == TypeOf(name))
        return true;
    return KindOf(name) == Kind::Sound &&
           std::find(std::begin(kSoundTypes), std::end(kSoundTypes), type) != std::end(kSoundTypes);
}

std::string SoundOf(std::string_view path) {
    constexpr std::string_view kFolder = "/media/announcements/";
    constexpr std::string_view kEnding = ".wav";
    if (path.substr(0, kFolder.size()) == kFolder)
        path.remove_prefix(kFolder.size());
    if (path.size() >= kEnding.size() && path.substr(path.size() - kEnding.size()) == kEnding)
        path.remove_suffix(kEnding.size());
    return std::string(path);
}

} // namespace controller::media_name
