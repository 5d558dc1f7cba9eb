#pragma once

#include "announce/client/ApiClient.h"
#include "announce/definitions/Arguments.h"
#include "announce/output/Output.h"

/// What a command works with.
struct Session {
    ApiClient& client;
    Output& output;
    const Arguments& arguments;
};
