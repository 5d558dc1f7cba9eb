#include "controller/CommandLine.h"

int main(int argc, char** argv) {
    return controller::RunCommandLine(argc, argv);
}
