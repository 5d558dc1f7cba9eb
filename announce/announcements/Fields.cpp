#include "announce/announcements/Fields.h"

#include "announce/announcements/Targets.h"
#include "announce/basics/Failure.h"
#include "announce/basics/Times.h"
#include "unicode/Unicode.h"

#include <algorithm>

namespace fields {
namespace {

constexpr const char* kNone = "none";

bool ReadYesNo(const std::string& what, const std::string& text) {
    const std::string answer = unicode::Folded(text);
    for (const char* yes : {"yes", "true", "on"}) {
        if (answer == yes)
            return true;
    }
    for (const char* no : {"no", "false", "off"}) {
        if (answer == no)
            return false;
    }
    throw Failure(ExitStatus::Usage, what + ": \"" + text + "\" is neither", "yes or no");
}

Json ReadVariable(const std::string& text, House& house) {
    const Json& variable = house.FindVariable(text);
    return {{"device", variable.at("device")},
            {"variable", variable.at("variable")},
            {"name", variable.at("name")}};
}

/// An image of the media folder, or the address of one.
std::string ReadImage(const std::string& text, House& house) {
    const bool isAddress = text.rfind("http://", 0) == 0 || text.rfind("https://", 0) == 0;
    return isAddress ? text : house.FindMedia(text, "image");
}

/// A sound of the media folder, without ".wav".
std::string ReadSound(const std::string& text, House& house) {
    const std::string name = house.FindMedia(text, "sound");
    return name.substr(0, name.rfind(".wav"));
}

std::string VariableName(const Json& variable) {
    const std::string name = variable.at("name");
    return name.empty() ? IdOf(variable) : name;
}

/// What is as it is when nothing is said may be left out.
Json ValueOf(const Field& field, const Json& announcement) {
    return announcement.value(field.member, field.otherwise);
}

/// The value in the words of a view; empty when there is nothing to say.
std::string Told(const Field& field, const Json& value) {
    if (field.kind == Kind::Variable) {
        const bool isNamed = !value.is_null() && !value.at("name").get<std::string>().empty();
        return value.is_null() ? "" : (isNamed ? "" : "variable ") + VariableName(value);
    }
    if (field.kind == Kind::Sound)
        return SoundName(value);
    if (field.kind != Kind::Length)
        return value;
    const auto length = value.get<std::uint64_t>();
    return length == 0 && field.zeroIs == 0 ? "" : times::LengthText(length != 0 ? length : field.zeroIs);
}

} // namespace

// Rows of a table, whatever their length.
// clang-format off
const std::vector<Field>& All() {
    static const std::vector<Field> kAll{
        {"name", Kind::Text, "--name", "NAME", "How it is called", "how it is called", "/name"_json_pointer, ""},
        {"sound", Kind::Sound, "--sound", "FILE", "The sound of the media folder that is played; none for none",
         "a sound of the media folder, or none", "/audio/file"_json_pointer, "", Completes::Sound},
        {"sound_delay", Kind::Length, "--sound-delay", "TIME", "How long after its beginning the sound comes: 500ms, 1.5s",
         "how long after the beginning the sound comes", "/audio/delay_ms"_json_pointer, 0, Completes::Nothing, "{} later"},
        {"rooms", Kind::Rooms, "--room", "ROOM[:VOLUME]",
         "A room where it is heard, and how loud (1 to 100; without one the room stays as loud as it is); may come again",
         "where it is heard: - {room: NAME, volume: 1 to 100}; without a volume as loud as the room is", "/rooms"_json_pointer,
         Json::array(), Completes::Room, "{}", 0, "A room where it is no longer heard; may come again"},
        {"text", Kind::Text, "--text", "TEXT", "What its popup says", "what the popup says", "/video/text"_json_pointer, ""},
        {"variable", Kind::Variable, "--variable", "VARIABLE", "The variable whose value its popup says instead; none for none",
         "the variable whose value the popup says instead, or none", "/video/variable"_json_pointer, nullptr,
         Completes::Variable, "the value of {}"},
        {"image", Kind::Image, "--image", "FILE|URL", "The image that its popup shows; none for none",
         "an image of the media folder, an http(s) address, or none", "/video/image"_json_pointer, "", Completes::Image},
        {"screens", Kind::Screens, "--screen", "SCREEN", "A screen where its popup is shown; may come again",
         "where the popup is shown: - NAME", "/navigators"_json_pointer, Json::array(), Completes::Screen, "{}", 0,
         "A screen where it is no longer shown; may come again"},
        {"popup_delay", Kind::Length, "--popup-delay", "TIME", "How long after its beginning the popup comes",
         "how long after the beginning the popup comes", "/video/delay_ms"_json_pointer, 0, Completes::Nothing, "{} later"},
        {"popup_time", Kind::Length, "--popup-time", "TIME", "How long the popup stands; 30 s when nothing is said",
         "how long the popup stands; 0 ms is 30 s", "/video/timeout_ms"_json_pointer, 0, Completes::Nothing, "for {}", 30000},
        {"ok_button", Kind::YesNo, "--ok-button", "yes|no", "Whether the popup has an OK button; it has when nothing is said",
         "yes or no", "/video/ok_button"_json_pointer, true, Completes::Nothing, "with an OK button|without an OK button"},
        {"urgent", Kind::YesNo, "--urgent", "yes|no",
         "Whether loudspeakers that have an urgent address get it there; they do not when nothing is said", "yes or no",
         "/urgent"_json_pointer, false, Completes::Nothing, "urgent|"},
    };
    return kAll;
}
// clang-format on

const Field& Named(const std::string& key) {
    return *std::find_if(All().begin(), All().end(), [&](const Field& field) { return field.key == key; });
}

Json Read(const Field& field, const std::string& what, const std::string& text, House& house) {
    const bool isNone = text.empty() || text == kNone;
    switch (field.kind) {
    case Kind::Sound:
        return isNone ? "" : ReadSound(text, house);
    case Kind::Image:
        return isNone ? "" : ReadImage(text, house);
    case Kind::Variable:
        return isNone ? Json(nullptr) : ReadVariable(text, house);
    case Kind::Length:
        return times::ReadMilliseconds(what, text);
    case Kind::YesNo:
        return ReadYesNo(what, text);
    case Kind::Text:
    case Kind::Rooms:
    case Kind::Screens:
        break;
    }
    return text;
}

std::string Write(const Field& field, const Json& announcement) {
    const Json value = ValueOf(field, announcement);
    if (field.kind == Kind::Length)
        return times::LengthText(value);
    if (field.kind == Kind::YesNo)
        return value.get<bool>() ? "yes" : "no";
    if (field.kind == Kind::Text)
        return value;
    if (field.kind == Kind::Variable)
        return value.is_null() ? kNone : VariableName(value);
    const std::string name = value;
    return name.empty() ? kNone : name;
}

std::string Phrase(const Field& field, const Json& announcement, House& house) {
    const Json value = ValueOf(field, announcement);
    if (field.IsList())
        return targets::Phrase(field, value, house);
    const std::string phrase = field.phrase;
    if (field.kind == Kind::YesNo)
        return value.get<bool>() ? phrase.substr(0, phrase.find('|')) : phrase.substr(phrase.find('|') + 1);
    const std::string told = Told(field, value);
    return told.empty() ? "" : std::string(phrase).replace(phrase.find("{}"), 2, told);
}

Json Nothing() {
    Json nothing;
    for (const Field& field : All())
        nothing[field.member] = field.otherwise;
    return nothing;
}

} // namespace fields
