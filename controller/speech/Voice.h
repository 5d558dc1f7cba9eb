#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace controller {

/// One of the voices of the house, and who speaks with it.
struct Voice {
    enum class Engine { Espeak, Command, Wyoming };

    std::string name;
    Engine engine = Engine::Espeak;
    std::string language;
    std::string voice; ///< as the engine calls it; empty: the one that it chooses for the language
    std::vector<std::string> command; ///< of `Command`: the program, and its arguments
    std::string host;                 ///< of `Wyoming`
    std::uint16_t port = 0;
};

} // namespace controller
