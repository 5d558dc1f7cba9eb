#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Runs the program by a shell, in a folder of its own.
class ProgramTest : public testing::Test {
protected:
    ProgramTest() {
        std::string name = (std::filesystem::temp_directory_path() / "rehearsal-XXXXXX").string();
        m_folder = mkdtemp(name.data());
    }
    ~ProgramTest() override { std::filesystem::remove_all(m_folder); }

    /// Gives the exit status; what was printed stands in the members.
    int Rehearse(const std::string& arguments) {
        const std::string command = "cd '" + m_folder.string() + "' && '" PROGRAM "' " + arguments;
        const int status = std::system((command + " 2>error").c_str());
        m_error = Text("error");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Text(const std::string& file) const { return FileText((m_folder / file).string()); }
    void Write(const std::string& file, const std::string& text) const {
        std::ofstream(m_folder / file) << text;
    }

    std::filesystem::path m_folder;
    std::string m_error;
};

const std::string kHost = "{\"do\":\"host\"}\n";
const std::string kHostTrace = "{\"t\":0,\"step\":{\"do\":\"host\"}}\n";

TEST_F(ProgramTest, RunsAFileAndSucceeds) {
    Write("a.jsonl", kHost);
    EXPECT_EQ(Rehearse("a.jsonl >out"), 0);
    EXPECT_EQ(Text("out"), kHostTrace);
    EXPECT_EQ(m_error, "");
}

TEST_F(ProgramTest, ReadsStandardInputWhenTheNameIsADashOrMissing) {
    Write("a.jsonl", kHost);
    EXPECT_EQ(Rehearse("<a.jsonl >out"), 0);
    EXPECT_EQ(Text("out"), kHostTrace);
    EXPECT_EQ(Rehearse("--look-ups - <a.jsonl >out"), 0);
    EXPECT_EQ(Text("out"), kHostTrace);
}

TEST_F(ProgramTest, ABadLineGivesOneMessageWithItsNumberAndStatus2) {
    Write("a.jsonl", kHost + "\n{\"do\":\"advance\"}\n" + kHost);
    EXPECT_EQ(Rehearse("a.jsonl >out"), 2);
    EXPECT_EQ(Text("out"), kHostTrace);
    EXPECT_EQ(m_error,
              "announcement-rehearsal: a.jsonl, line 3: \"ms\" is missing; it must be a whole number of "
              "milliseconds from 0 to 18446744073709551615\n");
    EXPECT_EQ(Rehearse("--timeline - <a.jsonl >out"), 2);
    EXPECT_EQ(Text("out"), "     0.000  > host stays as it is\n");
    EXPECT_EQ(m_error.substr(0, 47), "announcement-rehearsal: standard input, line 3:");
}

TEST_F(ProgramTest, AScenarioThatCannotBeReadGivesStatus2) {
    EXPECT_EQ(Rehearse("missing.jsonl >out"), 2);
    EXPECT_EQ(m_error, "announcement-rehearsal: missing.jsonl: cannot be read: No such file or directory\n");
    EXPECT_EQ(Rehearse(". >out"), 2);
    EXPECT_EQ(m_error, "announcement-rehearsal: ., line 1: cannot be read: Is a directory\n");
}

TEST_F(ProgramTest, AModuleThatCannotBeLoadedGivesStatus1) {
    Write("a.jsonl", kHost);
    Write("no.so", "not a module");
    EXPECT_EQ(Rehearse("--module missing.so a.jsonl >out"), 1);
    EXPECT_NE(m_error.find("missing.so"), std::string::npos);
    EXPECT_EQ(Rehearse("--module no.so a.jsonl >out"), 1);
    EXPECT_NE(m_error.find("no.so"), std::string::npos);
    EXPECT_EQ(Text("out"), "");
}

TEST_F(ProgramTest, AnotherModuleCanBeNamed) {
    Write("a.jsonl", "{\"do\":\"create\"}\n");
    std::filesystem::copy(MODULE, m_folder / "other.so");
    EXPECT_EQ(Rehearse("--module other.so a.jsonl >out"), 0);
    EXPECT_EQ(SplitLines(Text("out")).size(), 4U);
}

TEST_F(ProgramTest, ATraceThatCannotBeWrittenGivesStatus1) {
    Write("a.jsonl", kHost);
    EXPECT_EQ(Rehearse("a.jsonl >/dev/full"), 1);
    EXPECT_EQ(m_error, "announcement-rehearsal: the trace cannot be written: No space left on device\n");
    EXPECT_EQ(Rehearse("--timeline a.jsonl >/dev/full"), 1);
    EXPECT_EQ(m_error, "announcement-rehearsal: the timeline cannot be written: No space left on device\n");
}

TEST_F(ProgramTest, ABadCommandLineGivesStatus2AndHelpStatus0) {
    EXPECT_EQ(Rehearse("--sing >out"), 2);
    EXPECT_NE(m_error.find("--sing"), std::string::npos);
    EXPECT_EQ(Rehearse("--help >out"), 0);
    for (const char* const word : {"--look-ups", "--timeline", "--module", "SCENARIO", "Exit status"})
        EXPECT_NE(Text("out").find(word), std::string::npos) << word;
}

TEST_F(ProgramTest, WhoeverSpeaksToItByPipesSeesEachStepAtOnce) {
    int toProgram[2];
    int fromProgram[2];
    ASSERT_EQ(pipe(toProgram), 0);
    ASSERT_EQ(pipe(fromProgram), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        dup2(toProgram[0], STDIN_FILENO);
        dup2(fromProgram[1], STDOUT_FILENO);
        for (const int end : {toProgram[0], toProgram[1], fromProgram[0], fromProgram[1]})
            close(end);
        execl(PROGRAM, PROGRAM, static_cast<char*>(nullptr));
        _exit(127);
    }
    close(toProgram[0]);
    close(fromProgram[1]);
    // Twice, so that the second is seen to be answered as well.
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(write(toProgram[1], kHost.data(), kHost.size()), static_cast<ssize_t>(kHost.size()));
        std::string line(kHostTrace.size(), ' ');
        ASSERT_EQ(read(fromProgram[0], line.data(), line.size()), static_cast<ssize_t>(line.size()));
        EXPECT_EQ(line, kHostTrace);
    }
    close(toProgram[1]);
    close(fromProgram[0]);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
