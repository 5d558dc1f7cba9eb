#pragma once

#include "controller/house/House.h"

namespace controller {

/// Prints where rooms could be heard on this machine, and with the servers that the house's rooms name, each
/// with its line for the house file.
void PrintOutputs(const House& house);

} // namespace controller
