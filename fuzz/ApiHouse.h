#pragma once

#include "controller/Household.h"
#include "controller/api/Api.h"
#include "controller/http/Connections.h"
#include "tests/controller/support/NoEngine.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <memory>
#include <string>

namespace controller {

/// A house with all that its API reaches, the agent included, but sound; one for each input, so that an input
/// does the same every time.
class ApiHouse {
public:
    ApiHouse();
    ApiHouse(const ApiHouse&) = delete;
    ApiHouse& operator=(const ApiHouse&) = delete;

    /// A client connects, sends bytes, after the head of the reply `then`, and no more. Gives all that it
    /// got. When there is something to send then, something happens in the house meanwhile.
    [[nodiscard]] std::string Converse(const std::string& bytes, const std::string& then = {});

private:
    class Client;

    [[nodiscard]] static House MakeHouse(const TemporaryFolder& folder);

    const TemporaryFolder m_folder;
    const int m_nowhere;
    Log m_log;
    NoEngine m_engine;
    Household m_household;
    const ControllerParts m_parts;
    Api m_api;
    std::shared_ptr<Connections> m_connections;
};

} // namespace controller
