#include "controller/OutputsCommand.h"

#include "controller/EngineRooms.h"
#include "controller/audio/AudioEngine.h"
#include "controller/audio/FoundOutput.h"
#include "controller/driver/DriverThread.h"
#include "controller/driver/Text.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

namespace controller {

namespace {

std::string NameOf(const audio::FoundOutput& place) {
    return OneLine(place.name) + (place.isDefault ? " (default)" : "");
}

/// As wide as the widest, by letters.
std::size_t Width(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char letter) { return (letter & 0xC0) != 0x80; }));
}

void Print(const std::vector<audio::FoundOutput>& places) {
    if (places.empty()) {
        std::cout << "Nothing was found: no sound server answers here, and there is no sound card.\n"
                  << std::flush;
        return;
    }
    std::size_t width = 0;
    for (const audio::FoundOutput& place : places)
        width = std::max(width, Width(NameOf(place)));
    for (const audio::FoundOutput& place : places) {
        const std::string name = NameOf(place);
        std::cout << name << std::string(width - Width(name) + 2, ' ') << audio::LineFor(place.output)
                  << '\n';
    }
    std::cout << std::flush;
}

} // namespace

void PrintOutputs(const House& house) {
    Log log(STDERR_FILENO, Severity::Notice, Log::FormOfStandardError());
    DriverThread driver(log);
    // Rooms only, and nothing that it may change: what other programs play is none of its business.
    audio::AudioEngine engine(EngineRooms(house), audio::EngineServices{driver, log, {}});
    engine.FindOutputs([&driver](const std::vector<audio::FoundOutput>& places) {
        Print(places);
        driver.Stop();
    });
    driver.Run();
}

} // namespace controller
