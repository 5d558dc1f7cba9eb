#include "announce/basics/TextWidth.h"
#include "announce/client/Settings.h"
#include "announce/commands/Handlers.h"
#include "announce/definitions/Candidates.h"
#include "announce/documents/CompletionScripts.h"
#include "announce/documents/Manual.h"

#include <algorithm>

namespace handlers {
namespace {

using candidates::Candidate;
using Candidates = std::vector<Candidate>;

Candidates NamesOf(const Json& list) {
    Candidates names;
    for (const Json& item : list) {
        const std::string name = item.at("name");
        const auto count = std::count_if(list.begin(), list.end(),
                                         [&](const Json& other) { return other.at("name") == name; });
        // A line a candidate: a name with a line break in it is offered by its id.
        const bool isUsable = count == 1 && text::Visible(name) == name && !name.empty();
        names.push_back(isUsable ? Candidate{name, IdOf(item)} : Candidate{IdOf(item), text::Visible(name)});
    }
    return names;
}

Candidates FilesOf(const Json& list, const std::string& kind) {
    Candidates names;
    for (const Json& file : list) {
        if (kind.empty() || file.at("kind") == kind)
            names.push_back({file.at("name"), file.at("kind")});
    }
    return names;
}

Candidates VoicesOf(const Json& list) {
    Candidates names;
    for (const Json& voice : list)
        names.push_back({voice.at("name"), voice.at("language")});
    return names;
}

Candidates Plain(const std::vector<std::string>& texts) {
    Candidates all;
    for (const std::string& text : texts)
        all.push_back({text, ""});
    return all;
}

Candidates NamesFor(Completes completes, House& house) {
    switch (completes) {
    case Completes::Announcement:
        return NamesOf(house.Announcements());
    case Completes::Room:
        return NamesOf(house.Rooms());
    case Completes::Screen:
        return NamesOf(house.Screens());
    case Completes::Variable:
        return NamesOf(house.Variables());
    case Completes::Sound:
        return FilesOf(house.Media(), "sound");
    case Completes::Image:
        return FilesOf(house.Media(), "image");
    case Completes::Media:
        return FilesOf(house.Media(), "");
    case Completes::Voice:
        return VoicesOf(house.Voices());
    case Completes::EventType:
        return Plain(house.EventTypes());
    case Completes::Shell:
        return {{"bash", ""}, {"zsh", ""}, {"fish", ""}};
    case Completes::File:
    case Completes::Nothing:
        break;
    }
    return {};
}

/// The options of the line that is being typed say where the controller is.
Candidates NamesOfTheHouse(const candidates::Place& place) {
    try {
        Connection connection = FindConnection(place.given);
        // Somebody waits at a prompt.
        connection.patience = std::chrono::seconds(2);
        ApiClient client(connection);
        House house = HouseOf(client);
        return NamesFor(place.completes, house);
    } catch (const std::exception&) {
        // A prompt is no place for messages; there is nothing to offer.
        return {};
    }
}

} // namespace

ExitStatus Completion(Session& session) {
    session.output.Raw(CompletionScript(session.arguments.Text("shell")));
    return ExitStatus::Done;
}

ExitStatus Manual(Session& session) {
    session.output.Raw(session.arguments.Has("markdown") ? manual::AsMarkdown(session.commands)
                                                         : manual::AsRoff(session.commands));
    return ExitStatus::Done;
}

ExitStatus Complete(Session& session) {
    std::vector<std::string> words = session.arguments.All("word");
    if (words.empty())
        words.emplace_back();
    const candidates::Place place = candidates::FindPlace(session.commands, words);
    if (place.completes == Completes::File) {
        session.output.Line(":files");
        return ExitStatus::Done;
    }
    auto all = place.fixed;
    if (place.completes != Completes::Nothing) {
        const auto names = NamesOfTheHouse(place);
        all.insert(all.end(), names.begin(), names.end());
    }
    for (const auto& one : candidates::Fitting(all, place))
        session.output.Line(one.text + "\t" + one.description);
    return ExitStatus::Done;
}

} // namespace handlers
