#include "announce/announcements/Form.h"
#include "announce/announcements/Options.h"
#include "announce/announcements/Views.h"
#include "announce/commands/Editor.h"
#include "announce/commands/Handlers.h"
#include "announce/commands/TextFile.h"

namespace handlers {
namespace {

using announcement_form::Mistakes;

/// One announcement that is being edited.
class Editing {
public:
    Editing(Session& session, const Json& found)
        : m_session(session)
        , m_path(PathOf(found))
        , m_original(session.client.GetTagged(m_path)) {}

    ExitStatus ByOptions() {
        Json changed = m_original.value;
        announcement_options::Apply(m_session.arguments, m_session.house, changed);
        return Store(changed);
    }

    ExitStatus ByForm(const std::string& file) {
        Mistakes mistakes;
        const Json changed =
            announcement_form::Read(announcement_form::WithoutMistakes(text_file::Read(file)),
                                    m_original.value, m_session.house, mistakes);
        if (mistakes.empty())
            return Store(changed);
        std::string all;
        for (const auto& mistake : mistakes)
            all += (all.empty() ? "" : "\n  ") + file + ": " + mistake.Told();
        throw Failure(ExitStatus::Usage, all);
    }

    ExitStatus InEditor() {
        Editor editor;
        const std::string first = announcement_form::Write(m_original.value, m_session.house);
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
            const Mistakes mistakes = TakeText(text, editor);
            if (mistakes.empty())
                return ExitStatus::Done;
            offered = announcement_form::WithMistakes(text, mistakes);
        }
    }

private:
    /// Stores what the text says; gives what the user may mend in it. Whatever else ends the program, the
    /// text is kept.
    Mistakes TakeText(const std::string& text, Editor& editor) {
        Mistakes mistakes;
        try {
            const Json changed = announcement_form::Read(announcement_form::WithoutMistakes(text),
                                                         m_original.value, m_session.house, mistakes);
            if (mistakes.empty()) {
                Store(changed);
                editor.Discard();
            }
        } catch (const Failure& failure) {
            if (failure.Status() != ExitStatus::Refused)
                throw Failure(failure.Status(), failure.what() + ("; the text is in " + editor.File()),
                              failure.Right());
            mistakes.push_back({0, failure.Reason()});
        }
        return mistakes;
    }

    ExitStatus Store(const Json& changed) {
        if (changed == m_original.value)
            return ReportUnchanged();
        const Json stored = m_session.client.PutOver(m_path, changed, m_original.etag);
        return m_session.Report(stored, announcement_text::Title(stored) + " is changed");
    }

    ExitStatus ReportUnchanged() {
        return m_session.Report(m_original.value,
                                announcement_text::Title(m_original.value) + " is as it was");
    }

    Session& m_session;
    const std::string m_path;
    const ApiClient::Tagged m_original;
};

} // namespace

ExitStatus Edit(Session& session) {
    Editing editing(session, session.Announcement());
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
