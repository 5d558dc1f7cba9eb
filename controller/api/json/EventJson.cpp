#include "controller/api/json/EventJson.h"

#include "controller/api/ApiTime.h"
#include "controller/api/json/HouseJson.h"
#include "controller/media/MediaName.h"

#include <nlohmann/json.hpp>

namespace controller {

using Json = nlohmann::ordered_json;

namespace event_json {
namespace {

std::string Dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

const char* WhyOf(events::PopupEnd why) noexcept {
    switch (why) {
    case events::PopupEnd::TimeIsUp:
        return "time_is_up";
    case events::PopupEnd::Hidden:
        return "hidden";
    case events::PopupEnd::Dismissed:
        return "dismissed";
    case events::PopupEnd::Replaced:
        break;
    }
    return "replaced";
}

Json PopupOf(const events::PopupShown& shown, std::chrono::system_clock::time_point time) {
    return {{"number", shown.number},
            {"message", shown.message},
            {"image", house_json::ImageAddress(shown.image)},
            {"ok_button", shown.hasOkButton},
            {"remaining_ms", shown.duration.count()},
            {"ends", ApiTime(time + shown.duration)}};
}

template <class... Lambdas>
struct Overloaded : Lambdas... {
    using Lambdas::operator()...;
};
template <class... Lambdas>
Overloaded(Lambdas...) -> Overloaded<Lambdas...>;

struct TypeNames {
    using T = const char*;
    T operator()(const events::PlayAsked&) const noexcept { return "play_asked"; }
    T operator()(const events::AnnouncementStarted&) const noexcept { return "announcement_started"; }
    T operator()(const events::AnnouncementEnded&) const noexcept { return "announcement_ended"; }
    T operator()(const events::AnnouncementStored&) const noexcept { return "announcement_stored"; }
    T operator()(const events::AnnouncementRemoved&) const noexcept { return "announcement_removed"; }
    T operator()(const events::RoomSetUp&) const noexcept { return "room_set_up"; }
    T operator()(const events::RoomVolumeChanged&) const noexcept { return "room_volume_changed"; }
    T operator()(const events::RoomRestored&) const noexcept { return "room_restored"; }
    T operator()(const events::RoomOutputFailed&) const noexcept { return "room_output_failed"; }
    T operator()(const events::ScreensWoken&) const noexcept { return "screens_woken"; }
    T operator()(const events::ScreensRested&) const noexcept { return "screens_rested"; }
    T operator()(const events::SoundStarted&) const noexcept { return "sound_started"; }
    T operator()(const events::SoundEnded&) const noexcept { return "sound_ended"; }
    T operator()(const events::PopupShown&) const noexcept { return "popup_shown"; }
    T operator()(const events::PopupChanged&) const noexcept { return "popup_changed"; }
    T operator()(const events::PopupHidden&) const noexcept { return "popup_hidden"; }
    T operator()(const events::PagesChanged&) const noexcept { return "pages_changed"; }
    T operator()(const events::VariableChanged&) const noexcept { return "variable_changed"; }
    T operator()(const events::StateSaved&) const noexcept { return "state_saved"; }
    T operator()(const events::StateNotSaved&) const noexcept { return "state_not_saved"; }
    T operator()(const events::LogLine&) const noexcept { return "log"; }
};

struct DataWriter {
    std::chrono::system_clock::time_point time;

    Json operator()(const events::PlayAsked& data) const { return {{"announcement", data.announcement}}; }
    Json operator()(const events::AnnouncementStarted& data) const {
        return {{"announcement", data.announcement}};
    }
    Json operator()(const events::AnnouncementEnded& data) const {
        return {{"announcement", data.announcement}};
    }
    Json operator()(const events::AnnouncementStored& data) const {
        return {{"announcement", data.announcement}};
    }
    Json operator()(const events::AnnouncementRemoved& data) const {
        return {{"announcement", data.announcement}};
    }
    Json operator()(const events::RoomSetUp& data) const {
        return {{"room", data.room}, {"volume", data.volume}};
    }
    Json operator()(const events::RoomVolumeChanged& data) const {
        return {{"room", data.room}, {"volume", data.volume}};
    }
    Json operator()(const events::RoomRestored& data) const {
        return {{"room", data.room}, {"volume", data.volume}, {"changed_meanwhile", data.isChangedMeanwhile}};
    }
    Json operator()(const events::RoomOutputFailed& data) const {
        return {{"room", data.room}, {"reason", data.reason}};
    }
    Json operator()(const events::ScreensWoken& data) const { return {{"room", data.room}}; }
    Json operator()(const events::ScreensRested& data) const { return {{"room", data.room}}; }
    Json operator()(const events::SoundStarted& data) const {
        return {{"file", media_name::SoundOf(data.file)}};
    }
    Json operator()(const events::SoundEnded& data) const {
        return {{"file", media_name::SoundOf(data.file)},
                {"error", data.error.empty() ? Json(nullptr) : Json(data.error)}};
    }
    Json operator()(const events::PopupShown& data) const {
        return {{"navigator", data.navigator}, {"popup", PopupOf(data, time)}};
    }
    Json operator()(const events::PopupChanged& data) const {
        return {{"navigator", data.navigator}, {"number", data.number}, {"message", data.message}};
    }
    Json operator()(const events::PopupHidden& data) const {
        return {{"navigator", data.navigator}, {"number", data.number}, {"why", WhyOf(data.why)}};
    }
    Json operator()(const events::PagesChanged& data) const {
        return {{"navigator", data.navigator}, {"pages", data.pages}};
    }
    Json operator()(const events::VariableChanged& data) const {
        return {{"device", data.device}, {"variable", data.variable}, {"value", data.value}};
    }
    Json operator()(const events::StateSaved& /*data*/) const { return Json::object(); }
    Json operator()(const events::StateNotSaved& data) const { return {{"reason", data.reason}}; }
    Json operator()(const events::LogLine& data) const {
        return {{"level", SeverityName(data.severity)}, {"text", data.text}};
    }
};

std::string Frame(std::uint64_t number,
                  std::chrono::system_clock::time_point time,
                  const char* type,
                  const std::string& data) {
    return R"({"seq":)" + std::to_string(number) + R"(,"time":")" + ApiTime(time) + R"(","type":")" + type +
           R"(","data":)" + data + "}";
}

} // namespace

const char* TypeOf(const Event& event) {
    return std::visit(TypeNames{}, event.data);
}

std::string DataOf(const Event& event) {
    return Dump(std::visit(DataWriter{event.time}, event.data));
}

std::string Message(const Event& event, const char* type, const std::string& data) {
    return Frame(event.number, event.time, type, data);
}

std::string Message(std::uint64_t number, const char* type, const std::string& data) {
    return Frame(number, std::chrono::system_clock::now(), type, data);
}

PageMessage ForPage(const Event& event) {
    return std::visit(
        Overloaded{[](const events::ScreensWoken&) {
                       return PageMessage{"wake", "{}"};
                   },
                   [](const events::ScreensRested&) {
                       return PageMessage{"rest", "{}"};
                   },
                   [&event](const events::PopupShown& shown) {
                       return PageMessage{"popup_shown", Dump({{"popup", PopupOf(shown, event.time)}})};
                   },
                   [](const events::PopupChanged& changed) {
                       return PageMessage{"popup_changed",
                                          Dump({{"number", changed.number}, {"message", changed.message}})};
                   },
                   [](const events::PopupHidden& hidden) {
                       return PageMessage{"popup_hidden",
                                          Dump({{"number", hidden.number}, {"why", WhyOf(hidden.why)}})};
                   },
                   [](const auto& /*other*/) {
                       return PageMessage{};
                   }},
        event.data);
}

} // namespace event_json

} // namespace controller
