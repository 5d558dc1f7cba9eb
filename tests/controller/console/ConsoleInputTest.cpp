#include "controller/console/ConsoleInput.h"

#include "controller/driver/DriverThread.h"
#include "tests/controller/support/TestLog.h"

#include <boost/asio/io_context.hpp>
#include <gtest/gtest.h>

#include <unistd.h>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

class ConsoleInputTest : public testing::Test {
protected:
    ConsoleInputTest() { EXPECT_EQ(::pipe(m_pipe), 0); }
    ~ConsoleInputTest() override {
        ::close(m_pipe[0]);
        CloseInput();
    }

    void Type(const std::string& text) const {
        ASSERT_EQ(::write(m_pipe[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void CloseInput() {
        if (m_pipe[1] >= 0)
            ::close(m_pipe[1]);
        m_pipe[1] = -1;
    }

    ConsoleInput::Hooks Hooks() {
        ConsoleInput::Hooks hooks;
        hooks.take = [this](const ConsoleInput::Line& line, const ConsoleInput::Answered& answered) {
            m_told.push_back(line.error.empty() ? line.command.verb : "error");
            m_answered = answered;
            if (m_isAnswering)
                answered();
            else
                m_driver.Stop();
        };
        hooks.ended = [this] {
            m_told.emplace_back("(end)");
            m_driver.Stop();
        };
        return hooks;
    }

    TestLog m_log;
    DriverThread m_driver{m_log.log};
    Texts m_told;
    ConsoleInput::Answered m_answered;
    bool m_isAnswering = true;
    int m_pipe[2] = {-1, -1};
};

TEST_F(ConsoleInputTest, LinesComeInOrderTheLastOneAlsoWithoutItsEnd) {
    Type("one\n\n# nothing\ntwo 2\n\"open\nthree");
    CloseInput();
    const ConsoleInput input(m_pipe[0], m_driver, Hooks());
    m_driver.Run();
    EXPECT_EQ(m_told, (Texts{"one", "two", "error", "three", "(end)"}));
}

TEST_F(ConsoleInputTest, TheNextLineWaitsForTheAnswer) {
    m_isAnswering = false;
    Type("one\ntwo\n");
    CloseInput();
    const ConsoleInput input(m_pipe[0], m_driver, Hooks());
    m_driver.Run();
    EXPECT_EQ(m_told, Texts{"one"});
    m_isAnswering = true;
    m_driver.Context().restart();
    m_answered();
    m_driver.Run();
    EXPECT_EQ(m_told, (Texts{"one", "two", "(end)"}));
}

TEST_F(ConsoleInputTest, ItStopsAtOnceAlsoWhileNothingIsTypedOrAnAnswerIsMissing) {
    { const ConsoleInput input(m_pipe[0], m_driver, Hooks()); }
    m_isAnswering = false;
    Type("one\n");
    {
        const ConsoleInput input(m_pipe[0], m_driver, Hooks());
        m_driver.Run();
    }
    m_answered();
    EXPECT_EQ(m_told, Texts{"one"});
}

TEST_F(ConsoleInputTest, ALineWithoutEndIsRefused) {
    const ConsoleInput input(m_pipe[0], m_driver, Hooks());
    std::thread typist([this] {
        const std::string much(65536, 'x');
        for (std::size_t typed = 0; typed <= ConsoleInput::kMaxLine; typed += much.size())
            if (::write(m_pipe[1], much.data(), much.size()) < 0)
                return;
    });
    m_driver.Run();
    typist.join();
    EXPECT_EQ(m_told, (Texts{"error", "(end)"}));
}

} // namespace

} // namespace controller
