#include "announce/announcements/ImportPlan.h"
#include "announce/announcements/Views.h"
#include "announce/basics/TextWidth.h"
#include "announce/basics/Words.h"
#include "announce/commands/Handlers.h"
#include "announce/commands/TextFile.h"

#include <algorithm>
#include <string>
#include <vector>

namespace handlers {
namespace {

void RefuseReplacing(const ImportPlan& plan) {
    std::vector<Json> different;
    for (const ImportPlan::Change& change : plan.changes) {
        if (!change.present.is_null())
            different.push_back(change.present);
    }
    if (different.empty())
        return;
    const std::string list = words::Listed(different, announcement_text::Title);
    throw Failure(ExitStatus::Conflict,
                  "there already, with other content: " + list + "; nothing is imported",
                  "--replace to put those of the file in their place");
}

Json Carry(ApiClient& client, const ImportPlan::Change& change) {
    if (change.present.is_null())
        return client.Post("/api/announcements", change.announcement);
    return client.Put(PathOf(change.present), change.announcement);
}

/// Says which one it was, and how far the import has come.
[[noreturn]] void Tell(const Failure& failure, const ImportPlan& plan, std::size_t done) {
    throw Failure(failure.Status(),
                  "\"" + text::Visible(plan.changes[done].announcement.at("name").get<std::string>()) +
                      "\": " + failure.what() + "; " + std::to_string(done) + " of " +
                      std::to_string(plan.changes.size()) + " are imported",
                  failure.Right());
}

/// "room 99": those of the list that the house does not have. What is no target at all the controller
/// refuses.
void AddMissing(std::vector<std::string>& missing,
                const Json& announcement,
                const char* list,
                const Json& known,
                const std::string& kind) {
    for (const Json& target : announcement.value(list, Json::array())) {
        if (!target.is_object() || !target.contains("id"))
            continue;
        const Json& id = target.at("id");
        const auto isIt = [&id](const Json& one) {
            return one.at("id") == id;
        };
        if (std::none_of(known.begin(), known.end(), isIt))
            missing.push_back(kind + " " + id.dump());
    }
}

/// They are stored all the same: the house may get the room. Nothing is heard or shown there until then.
void TellMissing(Session& session, const ImportPlan& plan) {
    for (const ImportPlan::Change& change : plan.changes) {
        std::vector<std::string> missing;
        AddMissing(missing, change.announcement, "rooms", session.house.Rooms(), "room");
        AddMissing(missing, change.announcement, "navigators", session.house.Screens(), "screen");
        std::string list;
        for (const std::string& one : missing)
            list += (list.empty() ? "" : ", ") + one;
        if (!missing.empty())
            Tell("\"" + text::Visible(change.announcement.at("name").get<std::string>()) +
                     "\" names what this house does not have: " + list,
                 Style::Warning);
    }
}

ExitStatus Report(const Session& session, const ImportPlan& plan, const Json& stored) {
    const bool isTrial = session.arguments.Has("dry-run");
    for (const ImportPlan::Change& change : plan.changes) {
        std::string name = text::Visible(change.announcement.at("name").get<std::string>());
        const std::string what = change.present.is_null() ? "added" : "replaced";
        session.ReportOne(name.append(isTrial ? " would be " : " is ").append(what));
    }
    return session.Report({{"announcements", stored}, {"unchanged", plan.unchanged}},
                          plan.unchanged > 0 ? std::to_string(plan.unchanged) + " are there already" : "");
}

} // namespace

ExitStatus Export(Session& session) {
    const std::string text = JsonText(session.client.Get("/api/announcements"));
    const std::string file = session.arguments.Text("file");
    if (file.empty() || file == "-")
        session.output.Raw(text);
    else
        text_file::Write(file, text);
    return ExitStatus::Done;
}

ExitStatus Import(Session& session) {
    const std::string file = session.arguments.Text("file");
    const auto wanted = ImportPlan::Read(file, text_file::Read(file));
    const ImportPlan plan =
        ImportPlan::Make(wanted, session.client.Get("/api/announcements").at("announcements"));
    if (!session.arguments.Has("replace"))
        RefuseReplacing(plan);
    Json stored = Json::array();
    for (std::size_t index = 0; index < plan.changes.size() && !session.arguments.Has("dry-run"); ++index) {
        try {
            stored.push_back(Carry(session.client, plan.changes[index]));
        } catch (const Interrupted&) {
            throw;
        } catch (const Failure& failure) {
            Tell(failure, plan, index);
        }
    }
    TellMissing(session, plan);
    return Report(session, plan, stored);
}

} // namespace handlers
