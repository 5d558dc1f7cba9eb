#pragma once

#include "controller/api/ApiError.h"
#include "controller/api/json/Fields.h"
#include "controller/http/HttpMessage.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What bodies and replies of single operations hold; `docs/api.md` says what the members mean.
namespace controller::view {

using fields::Object;

/// Nothing at all: `{}`.
struct Nothing {
    static Object Table();
};

struct User {
    std::uint32_t id = 0;
    std::string name;

    static Object Table();
};

/// What programs know a text by, in whatever language they say it; `Meaning.h` has the table.
struct MeaningCode {
    std::string text;

    static const fields::Type& Table();
};

/// Texts by name: a body has the parameters of one of the agent's own commands and requests.
struct Parameters {
    std::vector<std::pair<std::string, std::string>> values;

    static const fields::Type& Table();
};

/// An error, as `application/problem+json`.
struct Problem {
    std::string type = "about:blank";
    std::string title;
    unsigned status = 0;
    std::string detail;
    std::string right;
    std::vector<User> users; ///< the announcements that use what was to be removed
    MeaningCode code = {};
    Parameters params = {};
    std::optional<std::int64_t> durationMs = std::nullopt;

    static Object Table();
};

struct Played {
    std::uint32_t announcement = 0;
    std::string state;
    std::uint64_t entry = 0;

    static Object Table();
};

struct Dismissed {
    std::optional<std::uint32_t> announcement;

    static Object Table();
};

struct Stopped {
    bool isStopped = false;

    static Object Table();
};

struct Confirmed {
    bool isDismissed = false;

    static Object Table();
};

/// A body.
struct Volume {
    unsigned volume = 0;

    static Object Table();
};

struct RoomVolume {
    std::uint32_t id = 0;
    unsigned volume = 0;

    static Object Table();
};

/// A body.
struct VariableValue {
    std::string value;

    static Object Table();
};

struct Ticket {
    std::string ticket;
    std::int64_t expiresInMs = 0;
    std::vector<std::string> rights;

    static Object Table();
};

struct Health {
    std::string status;

    static Object Table();
};

} // namespace controller::view

namespace controller {

/// The refusal as a reply: an error, with the announcements that use what was to be removed.
[[nodiscard]] HttpReply Problem(const HttpRefusal& refusal,
                                std::vector<view::User> users = {},
                                const ApiError::ForPrograms& forPrograms = {});

} // namespace controller
