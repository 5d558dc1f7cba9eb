#include "announce/Program.h"

int main(int argc, char** argv) {
    return RunProgram({argv + (argc > 0 ? 1 : 0), argv + argc});
}
