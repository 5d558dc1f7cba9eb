// Where rooms could be heard, as the API wants it from the sound engine.
#include "controller/Household.h"
#include "controller/audio/FoundOutput.h"
#include "controller/audio/OutputSearch.h"

#include <functional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace controller {

namespace {

std::vector<OutputDesk::Place> PlacesFor(const std::vector<audio::FoundOutput>& found, const House& house) {
    std::vector<OutputDesk::Place> places;
    places.reserve(found.size());
    for (const audio::FoundOutput& one : found) {
        OutputDesk::Place place{
            one.kind, one.name, audio::TextOf(one.output), audio::LineFor(one.output), one.isDefault, {}};
        for (const House::Room& room : house.rooms)
            if (audio::IsAt(room.output, one.output))
                place.rooms.push_back(room.id);
        places.push_back(std::move(place));
    }
    return places;
}

/// What a test plays, or why there is nothing.
struct Tone {
    std::string file;
    std::string error;
};

Tone ToneIn(const std::string& folder) {
    try {
        return {TestTone(folder).File(), ""};
    } catch (const std::system_error& failure) {
        return {"", failure.what()};
    }
}

/// Calls on the driver thread.
void WithTone(IScheduler& driver, const std::string& folder, const std::function<void(const Tone&)>& play) {
    driver.Post("the test of an output", [play, tone = ToneIn(folder)] { play(tone); });
}

void TryAt(const std::string& output,
           audio::AudioEngine& engine,
           const Tone& tone,
           unsigned volume,
           const OutputDesk::Tried& tried) {
    if (!tone.error.empty()) {
        tried(tone.error);
        return;
    }
    try {
        engine.TryOutput(audio::ParseOutput(output), tone.file, volume, tried);
    } catch (const std::invalid_argument& error) {
        tried(error.what()); // A name that no house file can have.
    }
}

} // namespace

OutputDesk Household::Outputs() {
    OutputDesk desk;
    desk.find = [this](const OutputDesk::Found& found) {
        if (m_ownEngine)
            m_ownEngine->FindOutputs(
                [this, found](const auto& places) { found(PlacesFor(places, m_house)); });
        else
            found({});
    };
    desk.tryOut = [this](const std::string& output, unsigned volume, const OutputDesk::Tried& tried) {
        const auto play = [this, output, volume, tried](const Tone& tone) {
            TryAt(output, *m_ownEngine, tone, volume, tried);
        };
        m_measuring.Submit([this, play] { WithTone(m_driver, m_dataFolder.Path(), play); });
    };
    return desk;
}

} // namespace controller
