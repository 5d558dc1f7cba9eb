#include "announce/commands/Editor.h"
#include "announce/commands/Handlers.h"
#include "announce/commands/ShowAnnouncement.h"
#include "announce/commands/TextFile.h"
#include "announce/house/AnnouncementForm.h"
#include "announce/house/AnnouncementOptions.h"

namespace handlers {
namespace {

using announcement_form::Mistakes;

/// One announcement that is being edited.
class Editing {
public:
    Editing(Session& session, const Json& found)
        : m_session(session)
        , m_house(session.client)
        , m_path("/api/announcements/" + found.at("id").dump())
        , m_original(session.client.GetTagged(m_path)) {}

    ExitStatus ByOptions() {
        Json changed = m_original.value;
        announcement_options::Apply(m_session.arguments, m_house, changed);
        return Store(changed);
    }

    ExitStatus ByForm(const std::string& file) {
        Mistakes mistakes;
        const Json changed = announcement_form::Read(
            announcement_form::WithoutMistakes(text_file::Read(file)), m_original.value, m_house, mistakes);
        if (mistakes.empty())
            return Store(changed);
        std::string all;
        for (const auto& mistake : mistakes)
            all += (all.empty() ? "" : "\n  ") + file + ": " + mistake.Told();
        throw Failure(ExitStatus::Usage, all);
    }

    ExitStatus InEditor() {
        Editor editor;
        const std::string first = announcement_form::Write(m_original.value, m_house);
        for (std::string offered = first;;) {
            const std::string text = editor.Edit(offered);
            if (announcement_form::IsEmpty(text) || announcement_form::WithoutMistakes(text) == first) {
                editor.Discard();
                return ReportUnchanged();
            }
            if (text == offered)
                throw Failure(ExitStatus::Usage,
                              "the mistakes are still there; nothing is changed, and the text is in " +
                                  editor.File(),
                              "announce edit " + m_original.value.at("id").dump() + " --file " +
                                  editor.File() + ", once they are mended");
            Mistakes mistakes;
            const Json changed = ReadKept(text, editor, mistakes);
            if (mistakes.empty() && StoreOrNote(changed, editor, mistakes)) {
                editor.Discard();
                return ExitStatus::Done;
            }
            offered = announcement_form::WithMistakes(text, mistakes);
        }
    }

private:
    /// Reads the form; whatever ends the program meanwhile, the text is kept.
    Json ReadKept(const std::string& text, const Editor& editor, Mistakes& mistakes) {
        try {
            return announcement_form::Read(announcement_form::WithoutMistakes(text), m_original.value,
                                           m_house, mistakes);
        } catch (const Failure& failure) {
            throw Kept(failure, editor);
        }
    }

    /// Stores it; says false when the controller refuses it and the user may mend it.
    bool StoreOrNote(const Json& changed, const Editor& editor, Mistakes& mistakes) {
        try {
            return Store(changed) == ExitStatus::Done;
        } catch (const Failure& failure) {
            if (failure.Status() != ExitStatus::Refused)
                throw Kept(failure, editor);
            mistakes.push_back(
                {0, failure.what() + (failure.Right().empty() ? "" : "; right: " + failure.Right())});
            return false;
        }
    }

    static Failure Kept(const Failure& failure, const Editor& editor) {
        return {failure.Status(), std::string(failure.what()) + "; the text is in " + editor.File(),
                failure.Right()};
    }

    ExitStatus Store(const Json& changed) {
        if (changed == m_original.value)
            return ReportUnchanged();
        const Json stored = m_session.client.PutOver(m_path, changed, m_original.etag);
        if (m_session.output.IsJson())
            m_session.output.Add(stored);
        else
            m_session.output.Line(announcement_text::Title(stored) + " is changed");
        return ExitStatus::Done;
    }

    ExitStatus ReportUnchanged() {
        if (m_session.output.IsJson())
            m_session.output.Add(m_original.value);
        else
            m_session.output.Line(announcement_text::Title(m_original.value) + " is as it was");
        return ExitStatus::Done;
    }

    Session& m_session;
    House m_house;
    const std::string m_path;
    const ApiClient::Tagged m_original;
};

} // namespace

ExitStatus Edit(Session& session) {
    House house(session.client);
    Editing editing(session, house.FindAnnouncement(session.arguments.Text("announcement")));
    const auto file = session.arguments.Find("file");
    const bool hasOptions = announcement_options::AreAny(session.arguments);
    if (file && hasOptions)
        throw Failure(ExitStatus::Usage, "--file describes all of it, and there are options too",
                      "either of them");
    if (file)
        return editing.ByForm(*file);
    return hasOptions ? editing.ByOptions() : editing.InEditor();
}

} // namespace handlers
