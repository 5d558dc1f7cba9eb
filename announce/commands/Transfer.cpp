#include "announce/commands/Handlers.h"
#include "announce/commands/ShowAnnouncement.h"
#include "announce/commands/TextFile.h"
#include "announce/house/ImportPlan.h"
#include "announce/output/TextWidth.h"

namespace handlers {
namespace {

void RefuseReplacing(const ImportPlan& plan) {
    std::vector<std::string> different;
    for (const ImportPlan::Change& change : plan.changes) {
        if (!change.present.is_null())
            different.push_back(announcement_text::Title(change.present));
    }
    if (different.empty())
        return;
    std::string list;
    for (const std::string& title : different)
        list += (list.empty() ? "" : ", ") + title;
    throw Failure(ExitStatus::Conflict,
                  "there already, with other content: " + list + "; nothing is imported",
                  "--replace to put those of the file in their place");
}

Json Carry(ApiClient& client, const ImportPlan::Change& change) {
    if (change.present.is_null())
        return client.Post("/api/announcements", change.announcement);
    return client.Put("/api/announcements/" + change.present.at("id").dump(), change.announcement);
}

/// Says which one it was, and how far the import has come.
[[noreturn]] void Tell(const Failure& failure, const ImportPlan& plan, std::size_t done) {
    throw Failure(failure.Status(),
                  "\"" + text::Visible(plan.changes[done].announcement.at("name").get<std::string>()) +
                      "\": " + failure.what() + "; " + std::to_string(done) + " of " +
                      std::to_string(plan.changes.size()) + " are imported",
                  failure.Right());
}

void Report(Session& session, const ImportPlan& plan, const Json& stored) {
    const bool isTrial = session.arguments.Has("dry-run");
    if (session.output.IsJson()) {
        session.output.Add({{"announcements", stored}, {"unchanged", plan.unchanged}});
        return;
    }
    for (std::size_t index = 0; index < plan.changes.size(); ++index) {
        const auto& change = plan.changes[index];
        std::string name = text::Visible(change.announcement.at("name").get<std::string>());
        const std::string what = change.present.is_null() ? "added" : "replaced";
        session.output.Line(name.append(isTrial ? " would be " : " is ").append(what));
    }
    if (plan.unchanged > 0)
        session.output.Line(std::to_string(plan.unchanged) + " are there already");
}

} // namespace

ExitStatus Export(Session& session) {
    const std::string text = session.client.Get("/api/announcements").dump(2) + "\n";
    const std::string file = session.arguments.Text("file");
    if (file.empty() || file == "-") {
        session.output.Raw(text);
        return ExitStatus::Done;
    }
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
    Report(session, plan, stored);
    return ExitStatus::Done;
}

} // namespace handlers
