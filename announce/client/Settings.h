#pragma once

#include "announce/client/Connection.h"
#include "announce/definitions/Arguments.h"

#include <filesystem>

/// Where the user's own settings are read from: announce/config.yaml in XDG_CONFIG_HOME.
[[nodiscard]] std::filesystem::path ConfigurationFile();

/// Address, token and authority from the options, else the environment, else the configuration file. Warns on
/// standard error of a file with a token that others can read. Throws Failure (Usage) when one of them is
/// wrong.
[[nodiscard]] Connection FindConnection(const Arguments& arguments);
