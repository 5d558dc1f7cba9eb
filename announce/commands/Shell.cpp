#include "announce/client/Settings.h"
#include "announce/commands/Handlers.h"
#include "announce/definitions/Candidates.h"
#include "announce/documents/CompletionScripts.h"
#include "announce/documents/Manual.h"

namespace handlers {
namespace {

/// The options of the line that is being typed, as far as they say where the controller is.
Arguments ConnectionOptions(const std::vector<std::string>& words) {
    static const std::map<std::string, std::string> kOptions{{"--address", "address"},
                                                             {"-a", "address"},
                                                             {"--token", "token"},
                                                             {"--token-file", "token-file"},
                                                             {"--ca", "ca"}};
    Arguments::Values values;
    for (std::size_t index = 0; index + 1 < words.size(); ++index) {
        const auto option = kOptions.find(words[index]);
        const bool wantsInput = words[index + 1] == "-";
        if (option != kOptions.end() && !wantsInput)
            values[option->second] = {words[index + 1]};
    }
    return Arguments(std::move(values));
}

std::vector<candidates::Candidate> NamesOfTheHouse(Completes completes,
                                                   const std::vector<std::string>& words) {
    try {
        Connection connection = FindConnection(ConnectionOptions(words));
        // Somebody waits at a prompt.
        connection.patience = std::chrono::seconds(2);
        ApiClient client(connection);
        House house(client);
        return candidates::NamesFor(completes, house);
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
    session.output.Raw(session.arguments.Has("markdown") ? manual::AsMarkdown() : manual::AsRoff());
    return ExitStatus::Done;
}

ExitStatus Complete(Session& session) {
    std::vector<std::string> words = session.arguments.All("word");
    if (words.empty())
        words.emplace_back();
    candidates::Place place = candidates::FindPlace(words);
    if (place.completes == Completes::File) {
        session.output.Line(":files");
        return ExitStatus::Done;
    }
    auto all = place.fixed;
    if (place.completes != Completes::Nothing) {
        const auto names = NamesOfTheHouse(place.completes, words);
        all.insert(all.end(), names.begin(), names.end());
    }
    for (const auto& one : candidates::Fitting(all, place))
        session.output.Line(one.text + "\t" + one.description);
    return ExitStatus::Done;
}

} // namespace handlers
