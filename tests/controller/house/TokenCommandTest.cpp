#include "controller/house/TokenCommand.h"

#include "controller/access/TokenSecret.h"
#include "controller/house/HouseFile.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <functional>

namespace controller {

namespace {

namespace fs = std::filesystem;

class TokenCommandTest : public testing::Test {
protected:
    static std::string Printed(const std::function<void()>& command) {
        testing::internal::CaptureStdout();
        command();
        return testing::internal::GetCapturedStdout();
    }

    TemporaryFolder m_folder;
    const std::string m_text = "name: Home # ours\nmedia_folder: .\ndata_folder: data\n";
    const fs::path m_house = m_folder.Write("house.yaml", m_text);
};

TEST_F(TokenCommandTest, ATokenThatIsAddedIsPrintedAndOnlyItsHashKept) {
    const std::string printed = Printed([this] {
        token_command::Add(m_house, "phone", {"play", "navigator:5"});
    });

    const std::string token = printed.substr(0, printed.find('\n'));
    ASSERT_EQ(token.substr(0, 6), "phone.");
    const House house = ReadHouseFile(m_house);
    ASSERT_EQ(house.tokens.size(), 1U);
    EXPECT_EQ(house.tokens[0].name, "phone");
    EXPECT_EQ(house.tokens[0].rights.Texts(), (std::vector<std::string>{"play", "navigator:5"}));
    EXPECT_TRUE(token_secret::Matches(token.substr(6), house.tokens[0].hash));
    EXPECT_EQ(TemporaryFolder::Read(m_house).find(token.substr(6)), std::string::npos);
    EXPECT_EQ(Printed([this] { token_command::List(m_house); }), "phone: play navigator:5\n");
}

TEST_F(TokenCommandTest, RemovedItIsGoneAndTheRestOfTheFileStays) {
    (void)Printed([this] { token_command::Add(m_house, "phone", {"admin"}); });
    (void)Printed([this] { token_command::Remove(m_house, "phone"); });

    EXPECT_TRUE(ReadHouseFile(m_house).tokens.empty());
    EXPECT_EQ(TemporaryFolder::Read(m_house).substr(0, m_text.size()), m_text);
    EXPECT_EQ(Printed([this] { token_command::List(m_house); }),
              "There are no tokens: everybody on this machine may do everything.\n");
}

TEST_F(TokenCommandTest, WhatCannotBeATokenLeavesTheFileAsItWas) {
    EXPECT_THROW(token_command::Add(m_house, "my phone", {"play"}), std::runtime_error);
    EXPECT_THROW(token_command::Add(m_house, "phone", {"king"}), std::invalid_argument);
    EXPECT_THROW(token_command::Add(m_house, "phone", {"navigator:9999999999"}), std::invalid_argument);
    EXPECT_THROW(token_command::Remove(m_house, "phone"), std::runtime_error);
    EXPECT_THROW(token_command::Add(m_folder.Path() / "missing.yaml", "phone", {"play"}), std::runtime_error);
    EXPECT_EQ(TemporaryFolder::Read(m_house), m_text);
}

TEST_F(TokenCommandTest, TheFileKeepsItsPermissionsAndALinkStaysOne) {
    fs::permissions(m_house, fs::perms::owner_read | fs::perms::owner_write);
    const fs::path link = m_folder.Path() / "link.yaml";
    fs::create_symlink(m_house, link);

    (void)Printed([&] { token_command::Add(link, "phone", {"play"}); });

    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::status(m_house).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(ReadHouseFile(m_house).tokens.size(), 1U);
}

TEST_F(TokenCommandTest, ALinkThatSomebodyHasPutBesideTheFileIsNotFollowed) {
    const fs::path precious = m_folder.Write("precious", "precious");
    fs::create_symlink(precious, m_folder.Path() / "house.yaml.new");

    (void)Printed([this] { token_command::Add(m_house, "phone", {"play"}); });

    EXPECT_EQ(TemporaryFolder::Read(precious), "precious");
    EXPECT_TRUE(fs::is_symlink(m_folder.Path() / "house.yaml.new"));
    EXPECT_FALSE(fs::is_symlink(m_house));
    EXPECT_EQ(ReadHouseFile(m_house).tokens.size(), 1U);
}

TEST_F(TokenCommandTest, NothingIsLeftBesideTheFileAlsoOfACommandThatWasKilled) {
    m_folder.Write(".draft-0123456789abcdef0123456789abcdef.tmp", "half");

    (void)Printed([this] { token_command::Add(m_house, "phone", {"play"}); });

    const auto files = std::distance(fs::directory_iterator(m_folder.Path()), fs::directory_iterator());
    EXPECT_EQ(files, 1);
}

} // namespace

} // namespace controller
