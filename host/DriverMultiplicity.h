#pragma once

/// How many instances of a driver one controller may hold.
enum class DriverMultiplicity {
    Single = 0,
    Multiple = 1,
};
