#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <sys/types.h>

namespace controller {

/// The real program, run with arguments; what it prints (on both outputs) is collected.
class ControllerProcess {
public:
    /// `CONTROLLER_FILE` with the arguments. The program is killed when this dies.
    explicit ControllerProcess(const std::vector<std::string>& arguments);
    ControllerProcess(const ControllerProcess&) = delete;
    ControllerProcess& operator=(const ControllerProcess&) = delete;
    ~ControllerProcess();

    /// Types a line.
    void Type(const std::string& line) const;
    void CloseInput();
    void Signal(int signal) const;

    /// Waits until the output, from where the last wait ended, holds the text. When the program ends or too
    /// much time passes first the test has failed, with what the program printed; and it is false.
    [[nodiscard]] bool WaitFor(const std::string& text);

    /// Waits for the end; the exit status, or minus the signal. A program that does not end is killed, and
    /// the test has failed.
    [[nodiscard]] int WaitForEnd();

    /// Everything printed so far.
    [[nodiscard]] const std::string& Output() const { return m_output; }
    [[nodiscard]] pid_t Process() const { return m_process; }

private:
    [[nodiscard]] bool ReadMore(std::chrono::steady_clock::time_point end);
    [[nodiscard]] std::string State(std::chrono::steady_clock::time_point end);
    /// Takes the end of a program that has ended, or will in a moment; the exit status, or minus the signal.
    int Reap();

    pid_t m_process = -1;
    int m_status = 0;
    int m_input = -1;
    int m_out = -1;
    std::string m_output;
    std::size_t m_seen = 0;
};

} // namespace controller
