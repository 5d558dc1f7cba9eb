#pragma once

#include "announce/basics/ExitStatus.h"

#include <stdexcept>
#include <string>

/// Why a command cannot go on: told on standard error, and what the program ends with.
class Failure : public std::runtime_error {
public:
    /// `message` says what is wrong and where; `right` what would be right, when there is something to say.
    Failure(ExitStatus status, const std::string& message, std::string right = "")
        : std::runtime_error(message)
        , m_status(status)
        , m_right(std::move(right)) {}

    [[nodiscard]] ExitStatus Status() const noexcept { return m_status; }
    [[nodiscard]] const std::string& Right() const noexcept { return m_right; }
    /// Both, on one line.
    [[nodiscard]] std::string Reason() const {
        return what() + (m_right.empty() ? "" : "; right: " + m_right);
    }

private:
    ExitStatus m_status;
    std::string m_right;
};

/// The user wants to leave: SIGINT or SIGTERM.
class Interrupted : public Failure {
public:
    Interrupted() : Failure(ExitStatus::Interrupted, "interrupted") {}
};
