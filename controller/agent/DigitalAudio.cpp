#include "controller/agent/DigitalAudio.h"

#include "controller/agent/Guarded.h"
#include "host/FindService.h"
#include "host/IAnnouncementAgent.h"

#include <utility>

namespace controller {

DigitalAudio::~DigitalAudio() = default;

void DigitalAudio::Forget() {
    ++m_stream;
    m_isWanted = false;
    m_isPlaying = false;
    m_isStopped = false;
    m_latestAnswer.Stop();
    m_rooms.clear();
}

void DigitalAudio::AnnouncementEnded() {
    m_driverOnly.Assert();
    if (m_isWanted)
        ReleaseStream();
}

void DigitalAudio::CreateStream() {
    m_driverOnly.Assert();
    Forget();
    m_isWanted = true;
    m_parts.engine.OpenStream([this, stream = m_stream] {
        if (stream == m_stream)
            Tell(Answer::StreamCreated);
    });
}

void DigitalAudio::ReleaseStream() {
    m_driverOnly.Assert();
    Forget();
    // First, or what still plays would end at the volume of before.
    m_parts.engine.CloseStream({});
    // A room that was taken out of the announcement while it played gets no word from the agent.
    m_parts.volumes.GiveBackAll();
}

void DigitalAudio::AddRoom(std::uint32_t room) {
    m_driverOnly.Assert();
    m_parts.volumes.Take(room);
    if (m_rooms.insert(room).second)
        m_parts.engine.AddRoom(room);
}

void DigitalAudio::RemoveRoom(std::uint32_t room) {
    m_driverOnly.Assert();
    if (m_rooms.erase(room) != 0)
        m_parts.engine.RemoveRoom(room);
    m_parts.volumes.GiveBack(room);
}

void DigitalAudio::PlayFile(const std::string& path) {
    m_driverOnly.Assert();
    if (m_isPlaying) {
        m_parts.log.Warning(path + " is not played: another file still plays over the stream");
        return;
    }
    m_isTold = false;
    if (m_isStopped) {
        TellComplete();
        return;
    }
    m_isPlaying = true;
    m_latestAnswer.Start(kLatestAnswer, [this] { TellComplete(); });
    m_parts.locate(
        path, [this, stream = m_stream, path](const audio::PlayedSound& sound, const std::string& error) {
            // The first sample must not be heard at the volume of before.
            m_parts.volumes.WhenApplied([this, stream, path, sound, error] {
                if (stream == m_stream)
                    Start(path, sound, error);
            });
        });
}

void DigitalAudio::Stop() {
    m_driverOnly.Assert();
    m_isStopped = m_isWanted;
    m_parts.engine.StopPlay();
}

void DigitalAudio::Start(const std::string& path, const audio::PlayedSound& sound, const std::string& error) {
    if (m_isStopped) {
        m_isPlaying = false;
        TellComplete();
        return;
    }
    if (!error.empty()) {
        Ended(path, error);
        return;
    }
    m_parts.feed.Publish(events::SoundStarted{path});
    m_parts.engine.Play(sound, [this, stream = m_stream, path](const audio::PlayResult& result) {
        if (stream == m_stream)
            Ended(path, result.error);
    });
}

void DigitalAudio::Ended(const std::string& path, const std::string& error) {
    m_isPlaying = false;
    if (!error.empty())
        m_parts.log.Error(path + " could not be played: " + error);
    m_parts.feed.Publish(events::SoundEnded{path, error});
    TellComplete();
}

void DigitalAudio::TellComplete() {
    m_latestAnswer.Stop();
    if (!std::exchange(m_isTold, true))
        Tell(Answer::Complete);
}

void DigitalAudio::Tell(Answer answer) {
    m_parts.driver.Post("an answer of the audio service", [this, stream = m_stream, answer] {
        if (stream != m_stream)
            return;
        auto* agent = FindService<IAnnouncementAgent>(m_parts.services);
        if (agent == nullptr)
            return;
        const auto thrown = Guarded([&] {
            if (answer == Answer::StreamCreated)
                agent->AudioStreamCreated();
            else
                agent->AudioAnnouncementComplete();
        });
        if (thrown)
            m_parts.log.Error(Describe(*thrown, "an answer of the audio service"));
    });
}

void DigitalAudio::Close(std::function<void()> onClosed) {
    ReleaseStream();
    m_parts.engine.CloseStream(std::move(onClosed)); // Tells when the outputs of the former ones are closed.
}

} // namespace controller
