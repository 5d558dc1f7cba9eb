#include "controller/media/MediaName.h"

#include "controller/driver/Text.h"
#include "unicode/Unicode.h"

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

/// Files that people bring, too, and that cannot be taken.
struct OtherEnding {
    std::string_view ending;
    Kind kind;
    std::string_view what;
};

constexpr OtherEnding kOtherEndings[] = {
    {".mp3", Kind::Sound, "an MP3"},   {".ogg", Kind::Sound, "an Ogg"},  {".oga", Kind::Sound, "an Ogg"},
    {".opus", Kind::Sound, "an Opus"}, {".flac", Kind::Sound, "a FLAC"}, {".m4a", Kind::Sound, "an AAC"},
    {".aac", Kind::Sound, "an AAC"},   {".wma", Kind::Sound, "a WMA"},   {".aif", Kind::Sound, "an AIFF"},
    {".aiff", Kind::Sound, "an AIFF"}, {".mid", Kind::Sound, "a MIDI"},  {".midi", Kind::Sound, "a MIDI"},
    {".svg", Kind::Image, "an SVG"},   {".bmp", Kind::Image, "a BMP"},   {".tif", Kind::Image, "a TIFF"},
    {".tiff", Kind::Image, "a TIFF"},  {".heic", Kind::Image, "a HEIC"}, {".avif", Kind::Image, "an AVIF"},
    {".ico", Kind::Image, "an ICO"},
};

bool EndsIn(std::string_view name, std::string_view ending) noexcept {
    return name.size() > ending.size() && name.substr(name.size() - ending.size()) == ending;
}

template <class Table>
auto FindEnding(const Table& table, std::string_view name) noexcept {
    const auto* const row = std::find_if(std::begin(table), std::end(table),
                                         [&](const auto& one) { return EndsIn(name, one.ending); });
    return row != std::end(table) ? row : nullptr;
}

const Ending* EndingOf(std::string_view name) noexcept {
    return FindEnding(kEndings, name);
}

bool IsLetterOrDigit(char letter) noexcept {
    return static_cast<unsigned char>(letter) < 128 && std::isalnum(static_cast<unsigned char>(letter)) != 0;
}

/// `.png, .jpg`: the endings of a kind; of all for `None`.
std::string EndingsOf(Kind kind) {
    std::string endings;
    for (const Ending& ending : kEndings) {
        if (kind == Kind::None || ending.kind == kind)
            endings += (endings.empty() ? "" : ", ") + std::string(ending.ending);
    }
    return endings;
}

} // namespace

std::string GoodName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    const bool hasEnding = dot != std::string_view::npos && dot > 0;
    const std::string ending = hasEnding ? Lower(name.substr(dot)).substr(0, kMaxLength - 1) : "";
    std::string base;
    for (const char letter : unicode::WithoutMarks(hasEnding ? name.substr(0, dot) : name)) {
        if (IsLetterOrDigit(letter) || letter == '-' || letter == '_')
            base += letter;
        else if (base.empty() || base.back() != '-')
            base += '-';
    }
    base.erase(
        0, static_cast<std::size_t>(std::find_if(base.begin(), base.end(), IsLetterOrDigit) - base.begin()));
    base.erase(base.find_last_not_of('-') + 1);
    return (base.empty() ? "file" : base).substr(0, kMaxLength - ending.size()) + ending;
}

std::optional<Refusal> RefusalOf(const std::string& name) {
    if (KindOf(name) != Kind::None)
        return std::nullopt;
    const OtherEnding* const other = FindEnding(kOtherEndings, name);
    if (other == nullptr)
        return Refusal{name + " is neither a sound nor an image by its ending",
                       "a sound (" + EndingsOf(Kind::Sound) + ") or an image (" + EndingsOf(Kind::Image) +
                           ")"};
    const std::string what = name + " is " + std::string(other->what);
    if (other->kind == Kind::Image)
        return Refusal{what + " image, which not every screen can show",
                       "an image that ends in one of " + EndingsOf(Kind::Image)};
    const std::string wav = name.substr(0, name.size() - other->ending.size()) + ".wav";
    return Refusal{what + " file, and a sound must be a WAV file for now",
                   "a WAV file of at most 20 s; \"ffmpeg -i " + name + " " + wav + "\" makes one"};
}

Kind KindOf(std::string_view name) noexcept {
    const bool isPlain = std::all_of(name.begin(), name.end(), [](char letter) {
        return IsLetterOrDigit(letter) || letter == '-' || letter == '_' || letter == '.';
    });
    if (!isPlain || name.empty() || name.size() > kMaxLength || name.front() == '.' || name.front() == '-' ||
        name.front() == '_')
        return Kind::None;
    const Ending* const ending = EndingOf(name);
    return ending != nullptr ? ending->kind : Kind::None;
}

std::string Right() {
    return "1 to " + std::to_string(kMaxLength) +
           " letters, digits, -, _ and ., a letter or digit first, ending in one of " + EndingsOf(Kind::None);
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
