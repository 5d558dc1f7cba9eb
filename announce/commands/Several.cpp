#include "announce/commands/Several.h"

#include "announce/basics/TextWidth.h"

namespace {

/// Whether the others would fail as well.
bool IsForAll(const Failure& failure) {
    return failure.Status() == ExitStatus::NoConnection || failure.Status() == ExitStatus::NotAllowed ||
           failure.Status() == ExitStatus::Interrupted;
}

} // namespace

void Several::Do(const std::string& name, const std::function<void()>& work) {
    try {
        work();
        ++m_count;
    } catch (const Interrupted&) {
        throw;
    } catch (const Failure& failure) {
        if (m_all == 1)
            throw;
        const std::string text = text::Visible(name) + ": " + failure.what();
        if (IsForAll(failure))
            throw Failure(failure.Status(), text + "; " + Tally(), failure.Right());
        m_failures.emplace_back(name, failure);
        m_session.output.Flush();
        TellFailure({failure.Status(), text, failure.Right()});
    }
}

ExitStatus Several::End(Json reply) const {
    for (const auto& [name, failure] : m_failures)
        reply["failed"].push_back({{"name", name}, {"detail", failure.what()}, {"right", failure.Right()}});
    const ExitStatus status = m_session.Report(reply, "");
    if (!m_failures.empty())
        throw Failure(m_failures.front().second.Status(), Tally());
    return status;
}

std::string Several::Tally() const {
    return std::to_string(m_count) + " of " + std::to_string(m_all) + (m_count == 1 ? " is " : " are ") +
           m_done;
}
