#pragma once

#include "controller/access/Token.h"
#include "controller/audio/OutputDescription.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace controller {

/// The house as its file describes it. Folders are absolute, or relative to the working folder; the house
/// file's own folder has been put before relative ones.
struct House {
    struct Room {
        std::uint32_t id = 0;
        std::string name;
        audio::OutputDescription output;
        unsigned maxVolume = 100;
        unsigned startVolume = 40; ///< never above `maxVolume`
        unsigned leadSilenceMs = 0;
        bool isAnswering = true; ///< its output tells when it is not heard
    };
    struct Navigator {
        std::uint32_t id = 0;
        std::string name;
        std::uint32_t room = 0;
    };
    struct Variable {
        std::uint32_t device = 0;
        std::uint32_t variable = 0;
        std::string name;
        std::string value;
    };
    /// The first is the one that speaks when none is named.
    struct Voice {
        std::string name;
        std::string engine; ///< "espeak", "command" or "wyoming"
        std::string language;
        std::string voice;                ///< as the engine calls it; may be empty
        std::vector<std::string> command; ///< of "command": program and arguments
        std::string host;                 ///< of "wyoming"
        std::uint16_t port = 0;
    };
    struct Tls {
        std::filesystem::path certificate; ///< empty: no TLS
        std::filesystem::path key;
    };

    /// What the file says may be meant, but probably is not.
    struct Doubt {
        int line = 0;
        std::string key; ///< as "rooms[2].output"
        std::string text;
    };

    std::string name;
    std::string address = "127.0.0.1";
    std::uint16_t port = 8765;
    bool isLoudnessAsItIs = false; ///< no sound is brought to the loudness of the others
    std::filesystem::path mediaFolder;
    std::filesystem::path dataFolder;
    std::filesystem::path firstAnnouncements; ///< empty: none
    std::vector<Room> rooms;
    std::vector<Navigator> navigators;
    std::vector<Variable> variables;
    std::vector<Voice> voices; ///< none: the installed espeak-ng
    std::vector<Token> tokens;
    Tls tls;
    std::vector<Doubt> doubts;
};

} // namespace controller
