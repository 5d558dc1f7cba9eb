#include "framework/DriverModule.h"

#include "framework/InstanceRegistry.h"
#include "tests/support/FakeDriverHost.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

/// What loading this file fails with; empty when it does not.
std::string FailureOf(const std::string& file) {
    try {
        const DriverModule module(file);
        return {};
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

class DriverModuleTest : public testing::Test {
protected:
    DriverModuleTest() {
        m_instances.RegisterInterface(IDriverHost::kGuid, static_cast<IDriverHost*>(&m_driverHost), 1);
    }

    CallLog m_log;
    FakeTimers m_timers{m_log};
    FakeDriverHost m_driverHost{m_log, m_timers};
    InstanceRegistry m_instances;
};

TEST_F(DriverModuleTest, MissingFileIsNamed) {
    const std::string failure = FailureOf("no/such/module.so");

    EXPECT_EQ(failure.find("cannot load the driver module no/such/module.so: "), 0U) << failure;
    EXPECT_NE(failure.find("No such file"), std::string::npos) << failure;
}

TEST_F(DriverModuleTest, BareNameIsAFileOfTheWorkingFolderAndNoSystemLibrary) {
    EXPECT_NE(FailureOf("libc.so.6").find("No such file"), std::string::npos);
}

TEST_F(DriverModuleTest, EmptyNameIsRefused) {
    EXPECT_NE(FailureOf(""), "");
}

TEST_F(DriverModuleTest, FileThatIsNoModuleIsRefused) {
    const std::string file = testing::TempDir() + "no_module.so";
    std::ofstream(file) << std::string(10000, 'x');

    const std::string failure = FailureOf(file);
    std::filesystem::remove(file);

    EXPECT_EQ(failure.find("cannot load the driver module " + file + ": "), 0U) << failure;
    EXPECT_NE(failure.find("invalid ELF header"), std::string::npos) << failure;
}

TEST_F(DriverModuleTest, FolderIsRefused) {
    EXPECT_NE(FailureOf(testing::TempDir()), "");
}

TEST_F(DriverModuleTest, ModuleWithoutTheEntryIsRefused) {
    EXPECT_EQ(FailureOf(MODULE_WITHOUT_ENTRY),
              "cannot use " MODULE_WITHOUT_ENTRY
              " as a driver module: it gives no factory through GetCreationFunc");
}

TEST_F(DriverModuleTest, ModuleWhoseEntryGivesNoFactoryIsRefused) {
    EXPECT_EQ(FailureOf(MODULE_WITHOUT_FACTORY),
              "cannot use " MODULE_WITHOUT_FACTORY
              " as a driver module: it gives no factory through GetCreationFunc");
}

TEST_F(DriverModuleTest, CreatesAsManyDriversAsAreAskedFor) {
    const DriverModule module(MODULE_WORKING);

    const auto first = module.Create(m_instances);
    const auto second = module.Create(m_instances);

    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(first->GetModel(), "from a module");
    EXPECT_EQ(second->GetModel(), "from a module");
}

TEST_F(DriverModuleTest, WhatADriversConstructorThrowsReachesTheCaller) {
    const DriverModule module(MODULE_WORKING);
    m_instances.RegisterInterface("refuse", this, 1);

    EXPECT_THROW((void)module.Create(m_instances), std::runtime_error);
}

TEST_F(DriverModuleTest, ModuleLoadsAgainAfterItWasUnloaded) {
    for (int time = 0; time < 3; ++time) {
        const DriverModule module(MODULE_WORKING);
        EXPECT_EQ(module.Create(m_instances)->GetModel(), "from a module");
    }
}

} // namespace
