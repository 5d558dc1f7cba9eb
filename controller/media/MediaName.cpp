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

/// Images that people bring, too, and that cannot be taken.
struct OtherImage {
    std::string_view ending;
    std::string_view what;
};

constexpr OtherImage kOtherImages[] = {
    {".svg", "an SVG"},  {".bmp", "a BMP"},    {".tif", "a TIFF"}, {".tiff", "a TIFF"},
    {".heic", "a HEIC"}, {".avif", "an AVIF"}, {".ico", "an ICO"},
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

std::string NameFor(std::string_view name, std::string_view type) {
    std::string good = GoodName(name);
    const Ending* const own = EndingOf(good);
    if (own != nullptr && own->type == type)
        return good;
    constexpr std::size_t kLongestEnding = 5;
    const std::size_t dot = name.rfind('.');
    const std::string_view last = dot != std::string_view::npos ? name.substr(dot + 1) : std::string_view();
    // "Take 1. Final" has none.
    if (!last.empty() && last.size() <= kLongestEnding &&
        std::all_of(last.begin(), last.end(), IsLetterOrDigit))
        name = name.substr(0, dot);
    const auto* const ending = std::find_if(std::begin(kEndings), std::end(kEndings),
                                            [&](const Ending& one) { return one.type == type; });
    return GoodName(std::string(name.empty() ? "file" : name) +
                    std::string(ending != std::end(kEndings) ? ending->ending : ""));
}

std::optional<Refusal> RefusalOf(const std::string& name) {
    const OtherImage* const other = FindEnding(kOtherImages, name);
    if (other == nullptr)
        return std::nullopt;
    return Refusal{name + " is " + std::string(other->what) + " image, which not every screen can show",
                   "an image that ends in one of " + EndingsOf(Kind::Image)};
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

bool IsTypeTaken(std::string_view contentType) {
    std::string type = Lower(contentType.substr(0, contentType.find(';')));
    while (!type.empty() && type.back() == ' ')
        type.pop_back();
    const std::string_view kind = std::string_view(type).substr(0, type.find('/'));
    // Browsers call what they have recorded, and sounds of phones, videos.
    return kind == "audio" || kind == "video" || kind == "image" || type == "application/ogg" ||
           type == "application/octet-stream";
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
