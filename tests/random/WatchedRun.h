#pragma once

#include "agent/AnnouncementAgent.h"
#include "rehearsal/Rehearsal.h"
#include "tests/random/PlayRecorder.h"
#include "tests/random/ScenarioChecker.h"

#include <memory>
#include <string>

inline std::unique_ptr<VqBaseDriver> CreateAgent(IInstanceManager& instances) {
    return std::make_unique<AnnouncementAgent>(instances);
}

/// A scenario that is done line by line and kept, so that a failing one can be shown.
class WatchedRun {
public:
    explicit WatchedRun(Flavour flavour)
        : m_checker(flavour, {1, 2, 3, 4})
        , m_recorder(m_checker)
        , m_rehearsal(CreateAgent, m_recorder, false) {}

    void Do(const std::string& line) {
        m_lines += line + "\n";
        const Step step = Step::Read(line);
        m_rehearsal.Judge(step);
        m_rehearsal.Do(step);
    }

    std::string Save() {
        Do(R"({"do":"save"})");
        return m_checker.LastSaved();
    }

    std::string LoadAndSave(const std::string& state) {
        Do(R"({"do":"destroy"})");
        // Nothing in these states needs escaping in JSON.
        Do(R"({"do":"initialize","state":")" + state + R"("})");
        return Save();
    }

    /// What the agent does to these lines.
    std::string Recorded(std::initializer_list<std::string> lines) {
        m_recorder.Restart();
        for (const std::string& line : lines)
            Do(line);
        return m_recorder.Text();
    }

    ScenarioChecker& Checker() { return m_checker; }
    const std::string& Lines() const { return m_lines; }

private:
    ScenarioChecker m_checker;
    PlayRecorder m_recorder;
    Rehearsal m_rehearsal;
    std::string m_lines;
};
