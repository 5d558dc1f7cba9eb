#include "controller/audio/AudioEngine.h"
#include "controller/audio/AudioEngineParts.h"
#include "controller/audio/HealthWatch.h"
#include "controller/audio/Loudness.h"
#include "controller/audio/SoundFormat.h"

#include <algorithm>
#include <set>
#include <system_error>
#include <utility>

namespace controller::audio {

void AudioEngine::Prepare(const PlayedSound& sound, const std::vector<std::uint32_t>& roomIds) {
    std::vector<RoomOutput::Preparation> preparations;
    for (const std::uint32_t id : roomIds) {
        const auto room = m_rooms.find(id);
        if (room == m_rooms.end())
            continue;
        if (auto preparation = room->second->GetPreparation())
            preparations.push_back(std::move(preparation));
    }
    if (preparations.empty())
        return;
    const auto work = [mailbox = m_context->mailbox, preparations = std::move(preparations),
                       path = sound.path, factor = FactorOf(sound.gain)] {
        mailbox->Post([preparations, file = MakeWholeSound(path, factor)] {
            for (const auto& preparation : preparations)
                preparation(file);
        });
    };
    try {
        m_context->workers.Start(work);
    } catch (const std::system_error&) {
        // It is fetched when it is played, then.
    }
}

void AudioEngine::Play(const PlayedSound& sound, OnDone onDone) {
    std::string refusal;
    if (!m_stream)
        refusal = "no stream is open";
    else if (m_play)
        refusal = "another file is still playing";
    else if (m_stream->rooms.empty())
        refusal = "no room was added to the stream";
    if (!refusal.empty()) {
        m_context->mailbox->Post([onDone = std::move(onDone), refusal] {
            if (onDone)
                onDone({refusal, {}});
        });
        return;
    }
    m_play = std::make_unique<CurrentPlay>();
    m_play->onDone = std::move(onDone);
    m_play->asked = std::chrono::steady_clock::now();
    if (m_stream->timeline->HasClip())
        RenewStream();
    else
        JoinWaiting(std::chrono::steady_clock::duration::max()); // A clip waits for those that have joined.
    StartPlayback(sound);
    CheckPlay(); // Every room may have failed before.
}

/// An output ends with its clip, so the rooms need new ones, and those a new clock.
void AudioEngine::RenewStream() {
    m_stream->timeline = std::make_shared<Timeline>();
    m_stream->take = ++m_takes;
    m_stream->joining.clear();
    for (const std::uint32_t id : m_stream->rooms)
        m_rooms.at(id)->Join(m_stream->timeline, m_stream->take, m_stream->isUrgent);
}

void AudioEngine::StartPlayback(const PlayedSound& sound) {
    std::chrono::milliseconds lead{0};
    for (const std::uint32_t id : m_stream->rooms)
        if (m_rooms.at(id)->GetState() != RoomOutput::State::Out) // One that has failed wants nothing.
            lead = std::max(lead, m_rooms.at(id)->LeadSilence());
    // The play is named by its number: the object behind it may be gone when word of it comes.
    const unsigned number = m_play->number = ++m_plays;
    const auto mailbox = m_context->mailbox;
    Playback::Order order;
    order.path = sound.path;
    order.factor = FactorOf(sound.gain);
    order.leadFrames = FramesOf(lead);
    order.readiness = m_context->limits.readiness;
    order.isKeptWhole = std::any_of(m_stream->rooms.begin(), m_stream->rooms.end(),
                                    [this](std::uint32_t id) { return m_rooms.at(id)->NeedsWholeSound(); });
    order.onStarted = [this, mailbox, number](Playback::Clock::time_point begin) {
        mailbox->Post([this, number, begin] { OnStarted(number, begin); });
    };
    order.onRefused = [this, mailbox, number](const std::string& reason) {
        mailbox->Post([this, number, reason] {
            if (m_play && m_play->number == number)
                FinishPlay(reason, {});
        });
    };
    m_play->playback = std::make_shared<Playback>(m_stream->timeline, std::move(order));
    try {
        m_context->workers.Start([playback = m_play->playback] { playback->Run(); });
    } catch (const std::system_error& error) {
        FinishPlay(std::string("no thread to read the file: ") + error.what(), {});
    }
}

void AudioEngine::OnStarted(unsigned number, std::chrono::steady_clock::time_point begin) {
    if (m_play && m_play->number == number)
        m_play->startDelay = std::chrono::duration_cast<std::chrono::microseconds>(begin - m_play->asked);
}

void AudioEngine::CheckPlay() {
    if (!m_play)
        return;
    std::set<std::uint32_t> heard = m_play->heard;
    bool hasEnded = !heard.empty();
    bool isOpening = !m_stream->joining.empty();
    for (const std::uint32_t id : m_stream->rooms) {
        const RoomOutput& room = *m_rooms.at(id);
        const auto state = room.GetState();
        if (state == RoomOutput::State::Playing)
            return;
        hasEnded = hasEnded || state == RoomOutput::State::Ended;
        if (state == RoomOutput::State::Ended && room.HasHeardClip())
            heard.insert(id);
        isOpening = isOpening || state == RoomOutput::State::Opening;
    }
    // A room that is still opening when the others have ended has missed it all.
    if (isOpening && !hasEnded && !m_play->isStopped)
        return;
    std::string error = hasEnded ? m_play->playback->Error() : "";
    if (error.empty() && heard.empty())
        error = WhyNoRoom();
    FinishPlay(error, {heard.begin(), heard.end()});
}

std::string AudioEngine::WhyNoRoom() const {
    std::string text;
    for (const std::uint32_t id : m_stream->rooms) {
        const RoomOutput& room = *m_rooms.at(id);
        text +=
            (text.empty() ? "no room can be heard: " : "; ") + room.Config().name + ": " + room.LastTrouble();
    }
    return text.empty() ? "every room was removed from the stream" : text;
}

void AudioEngine::StopPlay() {
    if (!m_play || std::exchange(m_play->isStopped, true))
        return;
    // Before the look at the timeline, for a clip that is given up is placed there no more.
    m_play->playback->Abandon();
    if (!m_stream->timeline->FadeOut())
        FinishPlay({}, {});
}

void AudioEngine::FinishPlay(const std::string& error, std::vector<std::uint32_t> rooms) {
    const auto play = std::exchange(m_play, nullptr);
    if (play->playback)
        play->playback->Abandon();
    PlayResult result{error, std::move(rooms), play->startDelay, play->isStopped};
    if (result.isStopped) {
        result.error.clear();
        result.rooms.clear();
    }
    if (m_health)
        for (const std::uint32_t room : result.rooms)
            m_health->Heard(room);
    if (!result.error.empty())
        m_context->services.log.Error("the file was not played: " + result.error);
    m_context->mailbox->Post([onDone = play->onDone, result = std::move(result)] {
        if (onDone)
            onDone(result);
    });
}

} // namespace controller::audio
