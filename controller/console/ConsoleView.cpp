#include "controller/console/ConsoleView.h"

#include "controller/driver/Text.h"

#include <algorithm>
#include <utility>

namespace controller {

namespace {

std::string Seconds(std::chrono::milliseconds duration) {
    const auto tenths = (duration.count() + 50) / 100;
    const std::string whole = std::to_string(tenths / 10);
    return tenths % 10 == 0 ? whole + " s" : whole + "." + std::to_string(tenths % 10) + " s";
}

/// What was made for one announcement has a name that says nothing to people; it is hidden, too.
std::string SoundName(const std::string& path) {
    const std::string name = path.substr(path.find_last_of('/') + 1);
    return name.rfind('.', 0) == 0 ? "its sound" : name;
}

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

template <class Entry>
std::string NameIn(const std::vector<Entry>& entries, std::uint32_t id, const std::string& kind) {
    const auto place =
        std::find_if(entries.begin(), entries.end(), [id](const Entry& entry) { return entry.id == id; });
    return place != entries.end() ? place->name : kind + " " + std::to_string(id);
}

const char* Reason(events::PopupEnd why) {
    switch (why) {
    case events::PopupEnd::TimeIsUp:
        return "its time is up";
    case events::PopupEnd::Dismissed:
        return "dismissed";
    case events::PopupEnd::Replaced:
        return "another one takes its place";
    case events::PopupEnd::Hidden:
        return "the controller ends";
    }
    return "";
}

} // namespace

ConsoleView::ConsoleView(const House& house, EventFeed& feed, NameOf nameOf, Print print)
    : m_house(house)
    , m_nameOf(std::move(nameOf))
    // Texts come from outside; each stays on its line.
    , m_print([print = std::move(print)](const std::string& line) { print(OneLine(line)); })
    , m_subscription(feed.Subscribe([this](const Event& event) {
        std::visit([this](const auto& data) { Show(data); }, event.data);
    })) {}

std::string ConsoleView::Announcement(std::uint32_t id) const {
    const std::string name = m_nameOf(id);
    return "Announcement " + std::to_string(id) + (name.empty() ? "" : " (" + name + ")");
}

std::string ConsoleView::Room(std::uint32_t id) const {
    return NameIn(m_house.rooms, id, "room");
}

std::string ConsoleView::Navigator(std::uint32_t id) const {
    return NameIn(m_house.navigators, id, "navigator");
}

void ConsoleView::Show(const events::AnnouncementStarted& event) {
    m_roomsInSound.clear();
    m_print(Announcement(event.announcement) + " begins");
}

void ConsoleView::Show(const events::AnnouncementStopped& event) {
    m_print(Announcement(event.announcement) + " is stopped");
}

void ConsoleView::Show(const events::AnnouncementEnded& event) {
    m_print(Announcement(event.announcement) + " is over");
}

void ConsoleView::Show(const events::RoomSetUp& event) {
    m_roomsInSound += (m_roomsInSound.empty() ? "" : ", ") + Room(event.room);
}

void ConsoleView::Show(const events::RoomRestored& event) {
    m_roomsInSound.clear();
    m_print(Room(event.room) + (event.isChangedMeanwhile ? " stays at volume " : " is back at volume ") +
            std::to_string(event.volume));
}

/// What nobody has missed needs no word when it is there.
void ConsoleView::Show(const events::RoomHealthChanged& event) {
    if (!event.reason.empty()) {
        m_unheard.insert(event.room);
        m_print(Room(event.room) + " cannot be heard: " + event.reason);
    } else if (m_unheard.erase(event.room) != 0)
        m_print(Room(event.room) + " can be heard again");
}

void ConsoleView::Show(const events::SoundStarted& event) {
    m_print("Playing " + SoundName(event.file) + " in " + m_roomsInSound);
}

void ConsoleView::Show(const events::SoundEnded& event) {
    const std::string end =
        event.error.empty() ? " was played to its end" : " could not be played: " + event.error;
    m_print(SoundName(event.file) + end);
}

void ConsoleView::Show(const events::PopupShown& event) {
    m_print("Popup on " + Navigator(event.navigator) + ": " + Quoted(event.message) +
            (event.image.empty() ? "" : ", image " + Quoted(event.image)) + " (" + Seconds(event.duration) +
            (event.hasOkButton ? ", OK button)" : ")"));
}

void ConsoleView::Show(const events::PopupChanged& event) {
    m_print("Popup on " + Navigator(event.navigator) + " now says " + Quoted(event.message));
}

void ConsoleView::Show(const events::PopupHidden& event) {
    m_print("Popup on " + Navigator(event.navigator) + " is gone: " + Reason(event.why));
}

} // namespace controller
