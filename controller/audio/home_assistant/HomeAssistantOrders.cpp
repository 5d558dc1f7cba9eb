// What a player of Home Assistant is told, and whether it does that.
#include "controller/audio/ISoundAddresses.h"
#include "controller/audio/SoundFormat.h"
#include "controller/audio/home_assistant/HomeAssistantDesk.h"
#include "controller/audio/home_assistant/HomeAssistantPlay.h"

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <utility>

namespace controller::audio {

namespace {

constexpr const char* kPlayMedia = "/api/services/media_player/play_media";
constexpr const char* kMediaStop = "/api/services/media_player/media_stop";

/// A player that fetches later than this does not play it any more.
constexpr std::chrono::seconds kOffered{60};

/// So often it is looked whether the sound has been fetched.
constexpr std::chrono::milliseconds kLook{20};

} // namespace

/// A player that is not to be heard is not asked: some take no volume for their usual one.
void HomeAssistantPlay::OrderWhenItBegins() {
    const auto whole = m_clip->clip->Whole();
    if (!whole) {
        Fail("has come too late for this announcement, which was begun without it");
        return;
    }
    whole->WhenMade([weak = weak_from_this()](const WholeSound::File& file) {
        if (const auto self = weak.lock())
            self->m_desk.Post([self, file] { self->Order(file); });
    });
}

void HomeAssistantPlay::Order(const WholeSound::File& file) {
    // What is given up is stopped, or left, in a moment.
    if (!m_isOpen || m_clip->clip->IsAbandoned())
        return;
    m_ordered = Clock::now();
    if (m_volume == 0 && file) {
        After(m_ordered + Length(), &HomeAssistantPlay::End);
        return;
    }
    ISoundAddresses* const addresses = m_order.context.addresses;
    m_path = file && addresses != nullptr ? addresses->Offer(file, kOffered) : "";
    if (m_path.empty()) {
        Fail(file ? "there is no address at which a player could fetch the sound"
                  : "the sound cannot be handed on as a file, for it cannot be decoded or lasts longer than "
                    "a minute");
        return;
    }
    const nlohmann::json body{{"entity_id", m_room.player},
                              {"media_content_id", OurUrl() + m_path},
                              {"media_content_type", "music"},
                              {"announce", true},
                              {"extra", {{"volume", m_volume.load()}}}};
    try {
        HttpOrder order = OrderOf(kPlayMedia, body.dump());
        order.limit += m_desk.Limits().fetch + std::chrono::ceil<std::chrono::milliseconds>(Length());
        m_playing = BeginHttpCall(
            m_desk.Means(), std::move(order),
            [this, self = shared_from_this()](const HttpOutcome& outcome) { Ordered(outcome); },
            [this, self = shared_from_this()] { Lost(); });
    } catch (const std::runtime_error& error) {
        Fail(error.what());
        return;
    }
    LookWhetherFetched();
}

/// Some answer when they have begun to play, and some when they have ended.
void HomeAssistantPlay::Ordered(const HttpOutcome& outcome) {
    if (!m_isOpen)
        return;
    const std::string reason = WhyNot(outcome);
    m_isAnswered = reason.empty();
    if (!reason.empty())
        Fail(reason);
}

/// The server, or something between, has ended the connection: which of them is seen by asking again.
void HomeAssistantPlay::Lost() {
    if (!m_isOpen)
        return;
    Ask("/api/states/" + m_room.player, "", [this, self = shared_from_this()](const HttpOutcome& outcome) {
        if (const std::string reason = WhyNot(outcome); m_isOpen && !reason.empty())
            Fail("in the midst of the sound: " + reason);
    });
}

void HomeAssistantPlay::LookWhetherFetched() {
    if (!m_isOpen)
        return;
    const auto now = Clock::now();
    if (m_order.context.addresses->WasFetched(m_path)) {
        After(now + Length(), &HomeAssistantPlay::End);
        return;
    }
    if (now < m_ordered + m_desk.Limits().fetch) {
        After(now + kLook, &HomeAssistantPlay::LookWhetherFetched);
        return;
    }
    const std::string within = " within " + std::to_string(m_desk.Limits().fetch.count()) + " ms";
    if (!m_isAnswered)
        Fail(m_room.server.Name() + " has not answered" + within);
    else
        Fail(m_room.player + " has not fetched the sound from " + OurUrl() + within);
}

void HomeAssistantPlay::StopPlayer(const std::function<void(const std::string& error)>& stopped) {
    ++m_turn; // What is due comes no more, also when its time has been.
    if (m_playing)
        std::exchange(m_playing, nullptr)->Cancel();
    if (m_path.empty()) {
        stopped("");
        return;
    }
    m_order.context.addresses->Withdraw(std::exchange(m_path, ""));
    const nlohmann::json body{{"entity_id", m_room.player}};
    m_isStopping = true;
    Ask(kMediaStop, body.dump(), [this, self = shared_from_this(), stopped](const HttpOutcome& outcome) {
        m_isStopping = false;
        const std::string reason = WhyNot(outcome);
        stopped(reason.empty() ? "" : m_room.player + " could not be stopped: " + reason);
    });
}

std::string HomeAssistantPlay::OurUrl() const {
    if (!m_room.ourUrl.empty())
        return m_room.ourUrl;
    const auto served = m_order.context.addresses->GetServed();
    const std::string host = m_ourAddress.substr(0, m_ourAddress.find('%'));
    return HttpPlace{served.isSecure, host, served.port, ""}.Name();
}

HomeAssistantPlay::Clock::duration HomeAssistantPlay::Length() const {
    return TimeOf(m_clip->clip->TotalFrames().value_or(0));
}

} // namespace controller::audio
