#include "announce/commands/Session.h"

House HouseOf(ApiClient& client) {
    return House([&client](const std::string& path) { return client.Get(path); });
}

bool Session::HasPrintedJson(const std::string& path) const {
    if (output.IsJson())
        output.Add(client.Get(path));
    return output.IsJson();
}

ExitStatus Session::Print(const Table& table, const std::string& none) const {
    if (table.IsEmpty() && !none.empty())
        output.Line(none);
    else
        output.Add(table);
    return ExitStatus::Done;
}

ExitStatus Session::Report(const Json& reply, const std::string& words) const {
    if (output.IsJson())
        output.Add(reply);
    ReportOne(words);
    return ExitStatus::Done;
}

void Session::ReportOne(const std::string& words) const {
    if (!output.IsJson() && !words.empty())
        output.Line(words);
}

std::string PathOf(const Json& announcement) {
    return "/api/announcements/" + announcement.at("id").dump();
}
