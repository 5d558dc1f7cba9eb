#include "tests/controller/support/EventTexts.h"

#include <utility>

namespace controller {

namespace {

std::string Id(std::uint64_t id) {
    return std::to_string(id);
}

struct ToText {
    std::string operator()(const events::PlayAsked& e) const { return "asked for " + Id(e.announcement); }
    std::string operator()(const events::QueueChanged& e) const {
        std::string text = "queue";
        for (const Queued& one : e.queue)
            text += " " + Id(one.announcement);
        return text;
    }
    std::string operator()(const events::AnnouncementStarted& e) const {
        return "started " + Id(e.announcement);
    }
    std::string operator()(const events::PlayingChanged& e) const {
        return e.playing ? "now " + Id(e.playing->announcement) : "now nothing";
    }
    std::string operator()(const events::AnnouncementStopped& e) const {
        return "stopped " + Id(e.announcement);
    }
    std::string operator()(const events::AnnouncementEnded& e) const { return "ended " + Id(e.announcement); }
    std::string operator()(const events::AnnouncementStored& e) const {
        return "stored " + Id(e.announcement);
    }
    std::string operator()(const events::AnnouncementRemoved& e) const {
        return "removed " + Id(e.announcement);
    }
    std::string operator()(const events::RoomSetUp& e) const {
        return "set up " + Id(e.room) + " at " + Id(e.volume);
    }
    std::string operator()(const events::RoomVolumeChanged& e) const {
        return "volume " + Id(e.room) + " " + Id(e.volume);
    }
    std::string operator()(const events::RoomRestored& e) const {
        return "restored " + Id(e.room) + " " + Id(e.volume) + (e.isChangedMeanwhile ? " changed" : "");
    }
    std::string operator()(const events::RoomOutputFailed& e) const {
        return "trouble " + Id(e.room) + " " + e.reason;
    }
    std::string operator()(const events::RoomHealthChanged& e) const {
        return "health " + Id(e.room) + " " + Id(static_cast<std::uint32_t>(e.health)) + " " + e.reason;
    }
    std::string operator()(const events::ScreensWoken& e) const { return "woken " + Id(e.room); }
    std::string operator()(const events::ScreensRested& e) const { return "rested " + Id(e.room); }
    std::string operator()(const events::SoundStarted& e) const { return "playing " + e.file; }
    std::string operator()(const events::SoundEnded& e) const {
        return "played " + e.file + (e.error.empty() ? "" : ": " + e.error);
    }
    std::string operator()(const events::PopupShown& e) const {
        return "shown " + Id(e.number) + " on " + Id(e.navigator) + " \"" + e.message + "\" " + e.image +
               " " + std::to_string(e.duration.count()) + (e.hasOkButton ? " ok" : "");
    }
    std::string operator()(const events::PopupChanged& e) const {
        return "changed " + Id(e.number) + " on " + Id(e.navigator) + " \"" + e.message + "\"";
    }
    std::string operator()(const events::PopupHidden& e) const {
        static const char* const kWhy[] = {"time is up", "hidden", "dismissed", "replaced"};
        return "gone " + Id(e.number) + " on " + Id(e.navigator) + " " + kWhy[static_cast<int>(e.why)];
    }
    std::string operator()(const events::PagesChanged& e) const {
        return "pages " + Id(e.pages) + " on " + Id(e.navigator);
    }
    std::string operator()(const events::VariableChanged& e) const {
        return "variable " + Id(e.device) + " " + Id(e.variable) + " \"" + e.value + "\"";
    }
    std::string operator()(const events::MediaStored& e) const { return "media stored " + e.name; }
    std::string operator()(const events::MediaRemoved& e) const { return "media removed " + e.name; }
    std::string operator()(const events::VoiceFailed& e) const {
        return "voice " + e.voice + " failed: " + e.reason;
    }
    std::string operator()(const events::VoiceRecovered& e) const { return "voice " + e.voice + " speaks"; }
    std::string operator()(const events::StateSaved& /*e*/) const { return "saved"; }
    std::string operator()(const events::StateNotSaved& e) const { return "not saved: " + e.reason; }
    std::string operator()(const events::LogLine& e) const { return "log " + e.text; }
};

} // namespace

EventTexts::EventTexts(EventFeed& feed)
    : m_subscription(feed.Subscribe(
          [this](const Event& event) { m_texts.push_back(std::visit(ToText{}, event.data)); })) {}

std::vector<std::string> EventTexts::Take() {
    return std::exchange(m_texts, {});
}

} // namespace controller
