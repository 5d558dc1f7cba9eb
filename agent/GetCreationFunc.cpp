#include "agent/AnnouncementAgent.h"

/// The module's one exported entry: hosts find it by this plain name.
extern "C" VQ_EXPORT DriverFactory GetCreationFunc() {
    return &AnnouncementAgent::Create;
}
