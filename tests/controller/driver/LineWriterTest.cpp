#include "controller/driver/LineWriter.h"

#include "controller/driver/Log.h"

#include <gtest/gtest.h>

#include <array>

#include <fcntl.h>
#include <unistd.h>

namespace controller {

namespace {

/// A pipe that somebody may read, or not.
class LineWriterTest : public testing::Test {
protected:
    LineWriterTest() { EXPECT_EQ(::pipe2(m_ends.data(), O_CLOEXEC), 0); }
    ~LineWriterTest() override {
        CloseInput();
        ::close(m_ends[0]);
    }

    void CloseInput() {
        if (m_ends[1] >= 0)
            ::close(m_ends[1]);
        m_ends[1] = -1;
    }

    [[nodiscard]] static std::string Missing(std::size_t dropped) {
        return "missing " + std::to_string(dropped) + "\n";
    }

    /// Waits for this much; empty at the end.
    [[nodiscard]] std::string Read(std::size_t size) const {
        std::string text(size, '\0');
        std::size_t done = 0;
        while (done < size) {
            const ssize_t read = ::read(m_ends[0], text.data() + done, size - done);
            if (read <= 0)
                break;
            done += static_cast<std::size_t>(read);
        }
        text.resize(done);
        return text;
    }

    /// A byte at a time, for nothing may follow it.
    [[nodiscard]] std::string ReadLine() const {
        std::string line;
        do
            line += Read(1);
        while (!line.empty() && line.back() != '\n');
        return line;
    }

    [[nodiscard]] std::string ReadToTheEnd() {
        CloseInput();
        std::string text;
        for (std::string part = Read(4096); !part.empty(); part = Read(4096))
            text += part;
        return text;
    }

    std::array<int, 2> m_ends{};
};

TEST_F(LineWriterTest, WhatIsReadStandsInItsOrderAndAtTheEndAllOfIt) {
    std::string all;
    {
        LineWriter writer(m_ends[1], Missing);
        for (int number = 0; number < 1000; ++number) {
            const std::string line = std::to_string(number) + "\n";
            all += line;
            writer.Write(line);
        }
    }
    EXPECT_EQ(ReadToTheEnd(), all);
}

TEST_F(LineWriterTest, WhatNobodyReadsIsDroppedCountedAndSaidInItsPlace) {
    const std::string line = std::string(1023, 'x') + "\n";
    constexpr std::size_t kLines = 4000; // four times what may wait
    LineWriter writer(m_ends[1], Missing);
    for (std::size_t count = 0; count < kLines; ++count)
        writer.Write(line);

    std::size_t kept = 0;
    std::string read = ReadLine();
    for (; read == line; read = ReadLine())
        ++kept;
    EXPECT_GE(kept, 1000U);
    EXPECT_EQ(read, Missing(kLines - kept));

    writer.Write("and on\n");
    EXPECT_EQ(Read(7), "and on\n");
}

TEST_F(LineWriterTest, AnEndWithoutAReaderComes) {
    const auto begin = std::chrono::steady_clock::now();
    {
        LineWriter writer(m_ends[1], Missing);
        for (int count = 0; count < 3000; ++count)
            writer.Write(std::string(1023, 'x') + "\n");
    }
    EXPECT_GE(std::chrono::steady_clock::now() - begin, LineWriter::kPatience);
}

TEST_F(LineWriterTest, ALineThatIsLongerThanAllThatMayWaitIsWrittenWhole) {
    const std::string line(LineWriter::kMaxWaiting * 2, 'x');
    LineWriter writer(m_ends[1], Missing);
    writer.Write(line);
    EXPECT_EQ(Read(line.size()), line);
}

TEST_F(LineWriterTest, AReaderThatHasGoneIsNoTrouble) {
    LineWriter writer(m_ends[1], Missing);
    ::close(m_ends[0]);
    for (int count = 0; count < 1000; ++count)
        writer.Write("into nothing\n");
    m_ends[0] = -1;
}

TEST_F(LineWriterTest, ADescriptorThatDoesNotWaitLosesNothingThatIsRead) {
    ASSERT_EQ(::fcntl(m_ends[1], F_SETFL, O_NONBLOCK), 0);
    const std::string line(200000, 'x'); // more than a pipe holds
    LineWriter writer(m_ends[1], Missing);
    writer.Write(line);
    EXPECT_EQ(Read(line.size()), line);
}

TEST_F(LineWriterTest, TheLogSaysWhatIsMissing) {
    std::size_t heard = 0;
    Log log(m_ends[1], Severity::Notice, Log::Form::Journal);
    log.SetListener([&heard](Severity /*severity*/, const std::string& /*text*/) { ++heard; });
    for (int count = 0; count < 1000; ++count)
        log.Warning(std::string(4000, 'x'));
    EXPECT_EQ(heard, 1000U);
    std::size_t kept = 0;
    std::string line = ReadLine();
    for (; line == "<4>" + std::string(4000, 'x') + "\n"; line = ReadLine())
        ++kept;
    EXPECT_EQ(line, "<4>Here " + std::to_string(1000 - kept) +
                        " lines of the log are missing, for nobody took them in time\n");
}

} // namespace

} // namespace controller
