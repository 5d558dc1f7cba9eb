#include "rehearsal/Options.h"
#include "rehearsal/Program.h"

int main(int argc, char** argv) {
    int exitStatus = 0;
    const auto options = ReadOptions(argc, argv, exitStatus);
    return options ? RunProgram(*options) : exitStatus;
}
