#include "controller/driver/Durable.h"

#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <set>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace controller {

namespace {

namespace fs = std::filesystem;

class DraftTest : public testing::Test {
protected:
    [[nodiscard]] std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(m_folder.Path()))
            names.insert(entry.path().filename().string());
        return names;
    }

    static struct stat StatOf(const fs::path& file) {
        struct stat status {};
        EXPECT_EQ(::lstat(file.c_str(), &status), 0) << file;
        return status;
    }

    TemporaryFolder m_folder;
    const fs::path m_target = m_folder.Path() / "target";
};

TEST_F(DraftTest, TheFileHasTheOldTextUntilTheWholeNewOneIsPutInPlace) {
    m_folder.Write("target", "old");
    durable::Draft draft(m_target);
    draft.Write("ne");
    draft.Write("w");
    EXPECT_EQ(TemporaryFolder::Read(m_target), "old");
    EXPECT_EQ(Names().size(), 2U);
    draft.Place();
    EXPECT_EQ(TemporaryFolder::Read(m_target), "new");
    EXPECT_EQ(Names(), std::set<std::string>{"target"});
}

TEST_F(DraftTest, WhatIsNotPutInPlaceIsRemoved) {
    {
        durable::Draft draft(m_target);
        draft.Write("half");
    }
    EXPECT_TRUE(Names().empty());
}

TEST_F(DraftTest, ItsNameIsAnotherEachTimeAndNobodysGuess) {
    std::set<fs::path> files;
    for (int count = 0; count < 20; ++count) {
        const durable::Draft draft(m_target);
        EXPECT_EQ(draft.File().filename().string().size(), std::string(".draft-.tmp").size() + 32);
        files.insert(draft.File());
    }
    EXPECT_EQ(files.size(), 20U);
}

TEST_F(DraftTest, HasTheRightsThatAreAskedForOrThoseOfTheFileBefore) {
    {
        durable::Draft draft(m_target, 0600);
        EXPECT_EQ(StatOf(draft.File()).st_mode & 07777U, 0600U);
        draft.Place();
    }
    ASSERT_EQ(::chmod(m_target.c_str(), 0640), 0);
    const bool isRoot = ::getuid() == 0;
    if (isRoot) {
        ASSERT_EQ(::chown(m_target.c_str(), 65534, 65534), 0);
    }
    const struct stat folder = StatOf(m_folder.Path());
    durable::Draft draft(m_target, 0600);
    draft.TakeOwnerAndMode();
    draft.Place();
    EXPECT_EQ(StatOf(m_target).st_mode & 07777U, 0640U);
    EXPECT_EQ(StatOf(m_target).st_uid, isRoot ? 65534U : ::getuid());
    EXPECT_EQ(StatOf(m_target).st_gid, isRoot ? 65534U : folder.st_gid);
    EXPECT_EQ(StatOf(m_folder.Path()).st_mode, folder.st_mode);
    EXPECT_EQ(StatOf(m_folder.Path()).st_uid, folder.st_uid);
}

TEST_F(DraftTest, WhereNothingCanBeWrittenTheFileAndTheReasonAreSaid) {
    try {
        const durable::Draft draft(m_folder.Path() / "missing" / "target");
        FAIL();
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.what(), (m_folder.Path() / "missing" / "target").string() +
                                    " cannot be written: No such file or directory");
    }
}

TEST_F(DraftTest, WhatAKilledProgramHasLeftIsSweptAndNothingElse) {
    const pid_t child = ::fork();
    if (child == 0) {
        durable::Draft draft(m_target);
        draft.Write("half");
        (void)std::raise(SIGKILL);
    }
    int status = 0;
    (void)::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    m_folder.Write(".upload-21498-1.tmp", "of a former version");
    for (const char* name : {".draft-", "draft-1.tmp", ".draft-1.tmp.wav", ".upload-.wav"})
        m_folder.Write(name, "somebody's");
    fs::create_directory(m_folder.Path() / ".draft-folder.tmp");
    fs::create_symlink(m_folder.Path() / "draft-1.tmp", m_folder.Path() / ".draft-link.tmp");
    durable::Draft underWay(m_target);

    durable::Draft::Sweep(m_folder.Path());

    EXPECT_EQ(Names(), (std::set<std::string>{".draft-", "draft-1.tmp", ".draft-1.tmp.wav", ".upload-.wav",
                                              ".draft-folder.tmp", ".draft-link.tmp",
                                              underWay.File().filename().string()}));
    underWay.Place();
    durable::Draft::Sweep(m_folder.Path() / "missing");
}

TEST(DurableTest, APrivateFileIsItsOwnersAloneAndNeverAnotherOne) {
    const TemporaryFolder folder;
    const mode_t before = ::umask(0);
    durable::MakePrivate(folder.Path() / "file");
    (void)::umask(before);
    struct stat status {};
    ASSERT_EQ(::stat((folder.Path() / "file").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    EXPECT_THROW(durable::MakePrivate(folder.Path() / "file"), std::system_error);
    fs::create_symlink(folder.Path() / "elsewhere", folder.Path() / "link");
    EXPECT_THROW(durable::MakePrivate(folder.Path() / "link"), std::system_error);
    EXPECT_FALSE(fs::exists(folder.Path() / "elsewhere"));
}

} // namespace

} // namespace controller
