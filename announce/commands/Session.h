#pragma once

#include "announce/basics/Failure.h"
#include "announce/client/ApiClient.h"
#include "announce/definitions/Arguments.h"
#include "announce/definitions/Definitions.h"
#include "announce/house/House.h"
#include "announce/output/Output.h"

#include <string>

/// The house that the controller has.
[[nodiscard]] House HouseOf(ApiClient& client);

/// What a command works with, once.
struct Session {
    const CommandTable& commands;
    ApiClient& client;
    Output& output;
    const Arguments& arguments;
    House house = HouseOf(client);

    /// The announcement that the user has named.
    [[nodiscard]] const Json& Announcement() {
        return house.FindAnnouncement(arguments.Text("announcement"));
    }

    /// When programs read it: prints what the API gives, and says so.
    [[nodiscard]] bool HasPrintedJson(const std::string& path) const;

    /// Prints the rows; `none` when there are none.
    ExitStatus Print(const Table& table, const std::string& none = "") const;

    /// Prints what has been done: the API's JSON for programs, the words for people.
    ExitStatus Report(const Json& reply, const std::string& words) const;

    /// The words alone, for people, of one of several; the JSON follows at the end.
    void ReportOne(const std::string& words) const;
};

/// Where the API has this announcement.
[[nodiscard]] std::string PathOf(const Json& announcement);
