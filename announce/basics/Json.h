#pragma once

#include <nlohmann/json.hpp>

/// Members stay in the order in which the controller gives them.
using Json = nlohmann::ordered_json;
