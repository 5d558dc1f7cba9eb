#include "host/VqBaseDriver.h"

extern "C" VQ_EXPORT DriverFactory GetCreationFunc() {
    return nullptr;
}
