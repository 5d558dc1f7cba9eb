#pragma once

#include "controller/audio/snapcast/LineConnection.h"
#include "controller/audio/snapcast/SnapcastPlace.h"

#include <functional>
#include <memory>
#include <string>

namespace controller::audio {

/// Finds the addresses of a server, which may take for ever: it is done on a thread of its own, which keeps
/// the context, and is left behind when the program ends. `found` is called on the context's thread, with
/// none and the reason where there are none.
void SearchSnapcastHost(
    const SnapcastHost& host,
    const std::shared_ptr<boost::asio::io_context>& context,
    std::function<void(const LineConnection::Endpoints& endpoints, const std::string& error)> found);

} // namespace controller::audio
