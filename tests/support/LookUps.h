#pragma once

#include <string>

/// The call by which a room, or a navigator, looks for those who lead it to its device.
inline const std::string kFindDeviceManager =
    "IInstanceManager.QueryInterface({731E9F66-23F5-4100-AA7B-C3F189BAABFD})";
