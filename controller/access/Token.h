#pragma once

#include "controller/access/Rights.h"

#include <string>

namespace controller {

/// Who may reach the controller, and what for.
struct Token {
    std::string name;
    std::string hash; ///< of its secret, as `token_secret::Hash` gives it
    Rights rights;
};

} // namespace controller
