// Where rooms could be heard.
#include "announce/basics/Numbers.h"
#include "announce/basics/TextWidth.h"
#include "announce/basics/Words.h"
#include "announce/commands/Handlers.h"

#include <string>

namespace {

std::string KindText(std::string kind) {
    for (char& letter : kind)
        letter = letter == '_' ? ' ' : letter;
    return kind;
}

} // namespace

namespace handlers {

ExitStatus Outputs(Session& session) {
    if (session.HasPrintedJson("/api/outputs"))
        return ExitStatus::Done;
    Table table({{"OUTPUT"}, {"NAME"}, {"KIND"}, {"ROOMS"}, {"LINE"}});
    const Json reply = session.client.Get("/api/outputs");
    for (const Json& place : reply.at("outputs"))
        table.Add(
            {{place.at("output").get<std::string>(), Style::Bold},
             place.at("name").get<std::string>(),
             KindText(place.at("kind").get<std::string>()) +
                 (place.at("default").get<bool>() ? ", default" : ""),
             words::Listed(place.at("rooms"), [&](const Json& id) { return session.house.RoomName(id); }),
             place.at("line").get<std::string>()});
    return session.Print(table,
                         "Nothing was found: no sound server answers there, and there is no sound card.");
}

ExitStatus TestOutput(Session& session) {
    const std::string output = session.arguments.Text("output");
    Json order{{"output", output}};
    if (const auto volume = session.arguments.Find("volume"))
        order["volume"] = ReadNumber("--volume", *volume, 1, 100);
    const Json reply = session.client.Post("/api/outputs/test", order);
    const Json& trouble = reply.at("trouble");
    if (trouble.is_null())
        return session.Report(reply, text::Visible(output) + " has played the tone");
    (void)session.Report(reply, text::Visible(output) +
                                    " cannot be heard: " + text::Visible(trouble.get<std::string>()));
    return ExitStatus::Failed;
}

} // namespace handlers
