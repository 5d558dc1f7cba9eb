#include "announce/house/EventText.h"

#include "announce/basics/Times.h"

#include <unordered_map>

namespace event_text {
namespace {

const std::unordered_map<std::string, std::string>& Phrases() {
    // {member} is its text, or the name of what has that id; what stands in [ ] is left out when the member
    // in it is null or not there.
    static const std::unordered_map<std::string, std::string> kPhrases{
        {"play_asked", "{announcement} is asked for"},
        {"queue_changed", "waiting: {queue}"},
        {"announcement_started", "{announcement} begins"},
        {"started", "{announcement} begins"},
        {"playing_changed", "what plays has come further"},
        {"announcement_stopped", "{announcement} is stopped"},
        {"announcement_ended", "{announcement} is over"},
        {"ended", "{announcement} is over"},
        {"announcement_stored", "{announcement} is stored"},
        {"announcement_removed", "{announcement} is removed"},
        {"stream_opened", "a stream is asked for"},
        {"stream_ready", "the stream is ready"},
        {"stream_closed", "the stream is closed"},
        {"room_set_up", "{room} is set up"},
        {"room_volume_changed", "{room} is at volume {volume}"},
        {"volume_set", "{room} is at volume {volume}"},
        {"room_restored", "{room} is as it was[, at volume {volume}]"},
        {"room_output_failed", "{room} cannot be heard: {reason}"},
        {"room_health_changed", "{room} is {health}[: {reason}]"},
        {"screens_woken", "the screens of {room} wake up"},
        {"screens_rested", "the screens of {room} go to rest"},
        {"sound_started", "{file} plays"},
        {"room_missing", "{room} is not in this house: nothing is heard there"},
        {"screen_missing", "{navigator} is not in this house: nothing is shown there"},
        {"sound_missing", "nothing is heard: {text}"},
        {"sound_ended", "the sound is over[: {error}]"},
        {"popup_shown",
         "{navigator} shows[ \"{message}\"][ the value of {variable}][ with {image}][ for {duration_ms}]"},
        {"popup_changed", "{navigator} shows \"{message}\" now"},
        {"popup_hidden", "the popup of {navigator} is gone[ ({why})]"},
        {"pages_changed", "{navigator} is open on pages: {pages}"},
        {"variable_changed", "variable {device}/{variable} is \"{value}\""},
        {"media_stored", "{name} is stored in the media folder"},
        {"media_removed", "{name} is removed from the media folder"},
        {"voice_failed", "the voice {voice} does not speak: {reason}"},
        {"voice_recovered", "the voice {voice} speaks again"},
        {"state_saved", "everything is saved"},
        {"state_not_saved", "it cannot be saved: {reason}"},
        {"log", "{level}: {text}"},
    };
    return kPhrases;
}

std::string WordsFor(std::string text) {
    for (char& letter : text)
        letter = letter == '_' ? ' ' : letter;
    return text;
}

/// The text of a member; empty when there is nothing to say.
std::string TextOf(const std::string& name, const Json& members, House& house) {
    if (!members.contains(name) || members.at(name).is_null())
        return "";
    const Json& member = members.at(name);
    if (name == "announcement")
        return house.AnnouncementName(member);
    if (name == "room")
        return house.RoomName(member);
    if (name == "navigator")
        return house.ScreenName(member);
    if (name == "file")
        return SoundName(member);
    if (name == "queue") {
        std::string names;
        for (const Json& one : member)
            names += (names.empty() ? "" : ", ") + one.at("name").get<std::string>();
        return names.empty() ? "nothing" : names;
    }
    if (name == "duration_ms")
        return times::LengthText(member == 0 ? Json(30000) : member); // 0 is the screens' own time
    if (member.is_object())
        return IdOf(member);
    const std::string text = member.is_string() ? member.get<std::string>() : member.dump();
    return name == "why" ? WordsFor(text) : text;
}

/// `pattern` with its members filled in; nothing when one of them has nothing to say and `isOptional`.
std::string Fill(const std::string& pattern, bool isOptional, const Json& members, House& house) {
    std::string filled;
    for (std::size_t place = 0; place < pattern.size(); ++place) {
        if (pattern[place] == '{') {
            const std::size_t end = pattern.find('}', place);
            const std::string text = TextOf(pattern.substr(place + 1, end - place - 1), members, house);
            if (text.empty() && isOptional)
                return "";
            filled += text;
            place = end;
        } else if (pattern[place] == '[') {
            const std::size_t end = pattern.find(']', place);
            filled += Fill(pattern.substr(place + 1, end - place - 1), true, members, house);
            place = end;
        } else {
            filled += pattern[place];
        }
    }
    return filled;
}

} // namespace

std::string Phrase(const std::string& kind, const Json& members, House& house) {
    const auto phrase = Phrases().find(kind);
    if (phrase == Phrases().end())
        return WordsFor(kind) + (members.empty() ? "" : " " + members.dump());
    Json flat = members;
    // A popup's own members stand one level deeper in an event.
    if (members.contains("popup") && members.at("popup").is_object())
        flat.update(members.at("popup"));
    return Fill(phrase->second, false, flat, house);
}

} // namespace event_text
