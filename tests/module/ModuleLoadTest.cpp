#include "framework/DriverModule.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Lines.h"
#include "tests/support/TestMessage.h"
#include "tests/support/Xml.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include <dlfcn.h>

namespace {

const std::string kAnnouncement = "<announcement><name>Dinner</name><navigators/></announcement>";

/// An agent at a host of its own.
struct Home {
    explicit Home(const DriverModule& module) : agent(module.Create(host)) { agent->RegisterCommands(); }

    [[nodiscard]] std::string Ask(const TestMessage& request) const {
        return TextOf(agent->UIRequest(request));
    }
    [[nodiscard]] std::string Add() const {
        return Ask(TestMessage("add_announcement", {{"announcement", kAnnouncement}}));
    }
    [[nodiscard]] std::string State() const { return TextOf(agent->GetPersistState(0)); }

    FakeHost host;
    std::unique_ptr<VqBaseDriver> agent;
};

TEST(ModuleLoadTest, ModuleIsLoadedByFileAndItsAgentWorks) {
    const DriverModule module(MODULE);
    Home home(module);

    EXPECT_EQ(home.Add(), "<success>1</success>");
    EXPECT_EQ(home.State().find("<announcements><announcement><id>1</id><name>Dinner</name>"), 0U);
}

TEST(ModuleLoadTest, ProcessHasOneCopyOfTheFramework) {
    // What the module makes, the program reads: they would not understand each other's nodes otherwise.
    const DriverModule module(MODULE);
    Home home(module);
    const auto state = home.agent->GetPersistState(0);
    state->AddChildString("added", "by the program");

    EXPECT_EQ(TextOf(state), "<announcements><added>by the program</added></announcements>");
}

TEST(ModuleLoadTest, TwoAgentsOfOneModuleDoNotMix) {
    const DriverModule module(MODULE);
    Home first(module);
    Home second(module);

    EXPECT_EQ(first.Add(), "<success>1</success>");
    EXPECT_EQ(first.Add(), "<success>2</success>");
    EXPECT_EQ(second.Add(), "<success>1</success>");

    EXPECT_EQ(second.Ask(TestMessage("remove_announcement", {{"id", "2"}})),
              "<fail>Invalid announcement id on remove</fail>");
    EXPECT_NE(first.host.Face(), second.host.Face());
}

TEST(ModuleLoadTest, TwoCopiesOfTheModuleDoNotMix) {
    const std::string copy = testing::TempDir() + "another_agent.so";
    std::filesystem::copy_file(MODULE, copy, std::filesystem::copy_options::overwrite_existing);
    {
        const DriverModule module(MODULE);
        const DriverModule another(copy);
        Home first(module);
        Home second(another);

        EXPECT_EQ(first.Add(), "<success>1</success>");
        EXPECT_EQ(second.State(), "<announcements/>");
        EXPECT_EQ(second.Add(), "<success>1</success>");
    }
    std::filesystem::remove(copy);
}

TEST(ModuleLoadTest, ModuleKeepsItsSymbolsToItself) {
    const DriverModule module(MODULE);

    EXPECT_EQ(dlsym(RTLD_DEFAULT, "GetCreationFunc"), nullptr);
}

TEST(ModuleLoadTest, DestroyedAgentWithdrawsItsFace) {
    const DriverModule module(MODULE);
    Home home(module);
    ASSERT_NE(home.host.Face(), nullptr);

    home.agent.reset();

    EXPECT_EQ(home.host.Face(), nullptr);
}

} // namespace
