#include "rehearsal/Options.h"
#include "rehearsal/Program.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    try {
        int exitStatus = 0;
        const auto options = ReadOptions(argc, argv, exitStatus);
        return options ? RunProgram(*options) : exitStatus;
    } catch (const std::exception& error) {
        std::cerr << "announcement-rehearsal: " << error.what() << '\n';
        return 1;
    }
}
