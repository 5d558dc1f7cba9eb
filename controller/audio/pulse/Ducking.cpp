#include "controller/audio/pulse/Ducking.h"

#include "controller/audio/pulse/DuckedVolume.h"

#include <algorithm>

namespace controller::audio {

namespace {

constexpr const char* kDefaultSink = "default";

bool IsHeard(const PulseStream& stream) {
    return !stream.isPaused && std::any_of(stream.volume.begin(), stream.volume.end(),
                                           [](std::uint32_t channel) { return channel > 0; });
}

const PulseStream* Find(const PulseState& state, std::uint32_t index) {
    const auto place = std::find_if(state.streams.begin(), state.streams.end(),
                                    [&](const PulseStream& stream) { return stream.index == index; });
    return place == state.streams.end() ? nullptr : &*place;
}

} // namespace

Ducking::Ducking(IScheduler& driver, Borrowings& borrowings, Server server)
    : m_driver(driver)
    , m_borrowings(borrowings)
    , m_server(std::move(server))
    , m_move(m_driver, "the volume of other programs")
    , m_retry(m_driver, "looking for the sound server") {
    if (!m_borrowings.Of(ducked_volume::kKind).empty())
        m_server.look();
}

Ducking::~Ducking() {
    for (const auto& [index, lowered] : m_lowered) {
        if (lowered.isWritten && lowered.step > 0)
            m_server.setVolume(index, lowered.before);
        Strike(lowered.entry);
    }
    m_borrowings.Strike(m_struck);
}

bool Ducking::HasGivenBack() const {
    return m_borrowings.Of(ducked_volume::kKind).empty() || (m_state.isThere && m_lowered.empty());
}

unsigned Ducking::Hold(const std::string& sink, double decibels, std::function<void()> onLowered) {
    if (m_holds.empty())
        m_left.clear(); // What was set while the former announcement ended says nothing of this one.
    m_holds[++m_lastHold] = {sink, decibels, std::move(onLowered)};
    m_server.look();
    return m_lastHold;
}

void Ducking::Release(unsigned hold) {
    m_holds.erase(hold);
    // What its user has changed meanwhile is not raised: looked at first.
    m_server.look();
}

/// The quietest that is asked for.
std::optional<double> Ducking::DecibelsOn(std::uint32_t sink) const {
    std::optional<double> decibels;
    for (const auto& [id, hold] : m_holds) {
        const auto place = m_state.sinks.find(hold.sink == kDefaultSink ? m_state.defaultSink : hold.sink);
        if (place != m_state.sinks.end() && place->second == sink)
            decibels = std::min(decibels.value_or(0), hold.decibels);
    }
    return decibels;
}

void Ducking::OnState(const PulseState& state) {
    m_state = state;
    if (m_holds.empty())
        m_left.clear();
    if (!state.isThere) {
        m_lowered.clear();
        if (!m_holds.empty() || !m_borrowings.Of(ducked_volume::kKind).empty())
            m_retry.Start(kRetry, [this] { m_server.look(); });
        TellLowered();
        return;
    }
    m_retry.Stop();
    Compare(state);
    m_borrowings.Strike(std::exchange(m_struck, {}));
    for (const PulseStream& stream : state.streams)
        if (m_lowered.count(stream.index) == 0)
            Consider(stream);
    m_borrowings.Strike(std::exchange(m_struck, {}));
    TakeNew();
    if (!m_move.IsRunning())
        Move();
}

/// Lets go of what is back, gone, or has been changed by its user. What is gone stays in the journal, for the
/// server remembers the lowered volume for its program's next stream.
void Ducking::Compare(const PulseState& state) {
    for (auto place = m_lowered.begin(); place != m_lowered.end();) {
        Lowered& lowered = place->second;
        const PulseStream* const stream = Find(state, place->first);
        const bool isOurs =
            stream != nullptr &&
            ducked_volume::IsOurs(lowered.before, ducked_volume::VolumeOf(lowered.entry.set), stream->volume);
        const bool isBack = isOurs && lowered.step == 0 && lowered.isWritten && !DecibelsOn(stream->sink) &&
                            ducked_volume::AreSame(stream->volume, lowered.before);
        if (isOurs && !isBack) {
            lowered.sink = stream->sink;
            ++place;
            continue;
        }
        if (stream != nullptr)
            Strike(lowered.entry);
        if (stream != nullptr && !isOurs)
            m_left.insert(place->first);
        place = m_lowered.erase(place);
    }
}

/// The entry of the stream, else one of a stream of the same program that is there no more.
std::optional<Borrowed> Ducking::EntryFor(const PulseStream& stream) const {
    std::optional<Borrowed> found;
    for (const Borrowed& entry : m_borrowings.Of(ducked_volume::kKind)) {
        if (ducked_volume::IsOf(entry, stream))
            return entry;
        const auto isThere = [&](const PulseStream& other) {
            return ducked_volume::IsOf(entry, other);
        };
        if (ducked_volume::IsOfProgram(entry, stream.program) &&
            std::none_of(m_state.streams.begin(), m_state.streams.end(), isThere))
            found = entry;
    }
    return found;
}

void Ducking::Consider(const PulseStream& stream) {
    if (stream.isOurs || m_left.count(stream.index) != 0)
        return;
    PulseVolume before = stream.volume;
    const std::optional<Borrowed> entry = EntryFor(stream);
    if (entry && ducked_volume::IsOurs(ducked_volume::VolumeOf(entry->before),
                                       ducked_volume::VolumeOf(entry->set), stream.volume))
        before = ducked_volume::VolumeOf(entry->before);
    const bool isLowered = !ducked_volume::AreSame(before, stream.volume);
    if (DecibelsOn(stream.sink) && IsHeard(stream)) {
        if (entry && !ducked_volume::IsOf(*entry, stream))
            Strike(*entry);
        Lower(stream, before, isLowered ? ducked_volume::kSteps - 1 : 0);
        return;
    }
    if (!entry)
        return;
    if (!isLowered) {
        Strike(*entry);
        return;
    }
    const double decibels = ducked_volume::DecibelsBetween(before, ducked_volume::VolumeOf(entry->set));
    m_lowered[stream.index] = {*entry, before, decibels, stream.sink, ducked_volume::kSteps, true};
}

void Ducking::Lower(const PulseStream& stream, const PulseVolume& before, int step) {
    const double decibels = *DecibelsOn(stream.sink);
    const Borrowed entry =
        ducked_volume::EntryOf(stream, before, ducked_volume::Step(before, decibels, ducked_volume::kSteps));
    m_lowered[stream.index] = {entry, before, decibels, stream.sink, step, false};
    m_new.push_back(stream.index);
}

void Ducking::TakeNew() {
    if (m_new.empty())
        return;
    const auto streams = std::exchange(m_new, {});
    std::vector<Borrowed> entries;
    entries.reserve(streams.size());
    for (const std::uint32_t index : streams)
        entries.push_back(m_lowered.at(index).entry);
    const auto change = [this, streams, isAlive = std::weak_ptr(m_isAlive)] {
        if (isAlive.expired())
            return;
        for (const std::uint32_t index : streams)
            if (const auto place = m_lowered.find(index); place != m_lowered.end())
                place->second.isWritten = true;
        if (!m_move.IsRunning())
            Move();
    };
    if (m_borrowings.Take(entries, change))
        return;
    for (const std::uint32_t index : streams) {
        m_lowered.erase(index);
        m_left.insert(index);
    }
}

int Ducking::GoalOf(const Lowered& lowered) const {
    return DecibelsOn(lowered.sink) ? ducked_volume::kSteps : 0;
}

/// One step of each, and the next one in time. What has arrived is looked at once more, `kPace` later.
void Ducking::Move() {
    bool isMoving = false;
    for (auto& [index, lowered] : m_lowered) {
        const int goal = GoalOf(lowered);
        if (!lowered.isWritten || lowered.step == goal)
            continue;
        lowered.step += goal > lowered.step ? 1 : -1;
        m_server.setVolume(index, ducked_volume::Step(lowered.before, lowered.decibels, lowered.step));
        isMoving = true;
    }
    if (isMoving)
        m_move.Start(kPace, [this] { Move(); });
    else
        TellLowered();
}

/// Unless something has still to be written down before it is lowered.
void Ducking::TellLowered() {
    const bool isWaiting = std::any_of(m_lowered.begin(), m_lowered.end(), [this](const auto& entry) {
        return !entry.second.isWritten && GoalOf(entry.second) != 0;
    });
    if (isWaiting)
        return;
    for (auto& [id, hold] : m_holds)
        if (const auto told = std::exchange(hold.onLowered, nullptr))
            told();
}

} // namespace controller::audio
