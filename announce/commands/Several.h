#pragma once

#include "announce/commands/Session.h"

#include <functional>
#include <string>
#include <vector>

/// Does the same to several things. One that fails keeps none of the others from being done: it is told at
/// once, and the command fails in the end. What would fail for all of them ends it, with a word about how far
/// it has come.
class Several {
public:
    /// `done` is what becomes of each, "removed". `session` is borrowed for life.
    Several(const Session& session, std::size_t all, std::string done)
        : m_session(session)
        , m_all(all)
        , m_done(std::move(done)) {}

    /// Does the next one, called `name`.
    void Do(const std::string& name, const std::function<void()>& work);

    /// All have been tried: prints `reply` for programs, with `"failed": [{"name", "detail", "right"}]` when
    /// one has failed. Throws Failure then, with the status of the first.
    [[nodiscard]] ExitStatus End(Json reply) const;

private:
    [[nodiscard]] std::string Tally() const;

    const Session& m_session;
    const std::size_t m_all;
    const std::string m_done;
    std::size_t m_count = 0; ///< that are done
    std::vector<std::pair<std::string, Failure>> m_failures;
};
