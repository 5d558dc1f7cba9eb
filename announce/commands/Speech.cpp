#include "announce/basics/TextWidth.h"
#include "announce/basics/Times.h"
#include "announce/commands/Handlers.h"

namespace handlers {
namespace {

constexpr long kSlowest = 50;
constexpr long kFastest = 200;

Json RecipeOf(Session& session) {
    const Arguments& arguments = session.arguments;
    Json recipe{{"text", arguments.Text("text")},
                {"speed", arguments.Number("speed", kSlowest, kFastest, 100)}};
    if (const auto voice = arguments.Find("voice"))
        recipe["voice"] = *voice;
    if (const auto chime = arguments.Find("chime"))
        recipe["chime"] = session.house.FindMedia(*chime, "sound");
    return recipe;
}

std::string WordsFor(const Json& stored) {
    std::string words = stored.at("name").get<std::string>() + " is stored";
    if (stored.contains("duration_ms"))
        words += ", and lasts " + times::LengthText(stored.at("duration_ms"));
    if (stored.contains("trouble"))
        words += ", but not spoken: " + stored.at("trouble").get<std::string>();
    return text::Visible(words);
}

} // namespace

ExitStatus SpeakMedia(Session& session) {
    const Json stored = session.client.Put(
        "/api/media/" + PercentEncoded(session.arguments.Text("name")) + "/speech", RecipeOf(session));
    return session.Report(stored, WordsFor(stored));
}

ExitStatus Voices(Session& session) {
    if (session.HasPrintedJson("/api/voices"))
        return ExitStatus::Done;
    Table table({{"NAME"}, {"LANGUAGE"}, {"ENGINE"}, {"DEFAULT"}, {"TROUBLE"}});
    for (const Json& voice : session.house.Voices()) {
        const Json& trouble = voice.at("trouble");
        table.Add(
            {{voice.at("name").get<std::string>(), Style::Bold},
             voice.at("language").get<std::string>(),
             voice.at("engine").get<std::string>(),
             voice.at("is_default") == true ? "yes" : "",
             trouble.is_null() ? Table::Cell("") : Table::Cell(trouble.get<std::string>(), Style::Bad)});
    }
    return session.Print(table);
}

} // namespace handlers
