#pragma once

#include "announce/client/Address.h"

#include <chrono>
#include <string>

/// How the controller is reached, and what allows it.
struct Connection {
    Address address;
    std::string token; ///< empty for none
    /// PEM file of the authorities to trust in place of the system's; empty for the system's.
    std::string caFile;
    std::chrono::seconds patience{10}; ///< with the connection, until it stands
    std::string otherAddress;          ///< for people: where another address could be given
};
