#include "controller/running/ServiceManager.h"

#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace controller {

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

/// The service manager's own end: what arrives, datagram by datagram.
class ManagersEnd {
public:
    explicit ManagersEnd(const std::string& address) {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::memcpy(name.sun_path, address.data(), address.size());
        if (name.sun_path[0] == '@')
            name.sun_path[0] = '\0';
        const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + address.size());
        EXPECT_EQ(::bind(m_socket, reinterpret_cast<const sockaddr*>(&name), length), 0);
    }
    ManagersEnd(const ManagersEnd&) = delete;
    ManagersEnd& operator=(const ManagersEnd&) = delete;
    ~ManagersEnd() { ::close(m_socket); }

    [[nodiscard]] Texts Take() const {
        Texts texts;
        char bytes[4096];
        for (ssize_t size = 0; (size = ::recv(m_socket, bytes, sizeof bytes, MSG_DONTWAIT)) >= 0;)
            texts.emplace_back(bytes, static_cast<std::size_t>(size));
        return texts;
    }

private:
    int m_socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
};

class ServiceManagerTest : public testing::Test {
protected:
    ServiceManager& Start(std::optional<std::chrono::microseconds> watchdog = {}) {
        return m_service.emplace(ServiceManager::Environment{m_address, watchdog}, m_scheduler, m_feed,
                                 m_log.log);
    }

    TemporaryFolder m_folder;
    std::string m_address = (m_folder.Path() / "notify").string();
    ManagersEnd m_manager{m_address};
    FakeScheduler m_scheduler;
    EventFeed m_feed;
    TestLog m_log;
    std::optional<ServiceManager> m_service;
};

/// Sets variables of the environment, and takes them out again.
class ManagedEnvironment {
public:
    explicit ManagedEnvironment(const std::vector<std::pair<const char*, std::string>>& variables) {
        for (const char* name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"})
            ::unsetenv(name);
        for (const auto& [name, value] : variables)
            ::setenv(name, value.c_str(), 1);
    }
    ManagedEnvironment(const ManagedEnvironment&) = delete;
    ManagedEnvironment& operator=(const ManagedEnvironment&) = delete;
    ~ManagedEnvironment() {
        for (const char* name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"})
            ::unsetenv(name);
    }
};

TEST_F(ServiceManagerTest, NothingIsSaidBeforeTheHouseIsServed) {
    Start(10s);
    m_scheduler.Advance(60s);
    EXPECT_EQ(m_manager.Take(), Texts{});
}

TEST_F(ServiceManagerTest, ReadinessComesWithAStatus) {
    Start().Ready("Demo house: 2 rooms");
    EXPECT_EQ(m_manager.Take(), Texts{"READY=1\nSTATUS=Demo house: 2 rooms"});
    EXPECT_EQ(m_log.lines, Texts{});
}

TEST_F(ServiceManagerTest, WithAWatchdogSignsOfLifeComeTwiceInItsTime) {
    Start(10s).Ready("here");
    EXPECT_EQ(m_manager.Take(), (Texts{"READY=1\nSTATUS=here", "WATCHDOG=1"}));
    m_scheduler.Advance(4999ms);
    EXPECT_EQ(m_manager.Take(), Texts{});
    m_scheduler.Advance(1ms);
    EXPECT_EQ(m_manager.Take(), Texts{"WATCHDOG=1"});
    m_scheduler.Advance(10s);
    EXPECT_EQ(m_manager.Take(), (Texts{"WATCHDOG=1", "WATCHDOG=1"}));
}

TEST_F(ServiceManagerTest, WithoutAWatchdogNothingWakesTheThread) {
    Start().Ready("here");
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(ServiceManagerTest, AnnouncementsAndATroubledDiskStandInTheStatus) {
    Start().Ready("here");
    m_feed.Publish(events::AnnouncementStarted{7});
    m_feed.Publish(events::StateNotSaved{"disk\nfull"});
    m_feed.Publish(events::AnnouncementEnded{7});
    m_feed.Publish(events::StateSaved{});
    m_feed.Publish(events::StateSaved{});
    EXPECT_EQ(
        m_manager.Take(),
        (Texts{"READY=1\nSTATUS=here", "STATUS=here; playing announcement 7",
               "STATUS=here; playing announcement 7; the disk does not take the announcements: disk full",
               "STATUS=here; the disk does not take the announcements: disk full", "STATUS=here"}));
}

TEST_F(ServiceManagerTest, ALineBreakInAStatusBeginsNoMessageOfItsOwn) {
    Start().Ready("here\nSTOPPING=1");
    EXPECT_EQ(m_manager.Take(), Texts{"READY=1\nSTATUS=here STOPPING=1"});
}

TEST_F(ServiceManagerTest, WhileItEndsSignsOfLifeGoOnAndTheStatusStays) {
    ServiceManager& service = Start(10s);
    service.Ready("here");
    (void)m_manager.Take();
    service.Stopping();
    m_feed.Publish(events::AnnouncementEnded{7});
    m_feed.Publish(events::AnnouncementStarted{8});
    m_scheduler.Advance(5s);
    EXPECT_EQ(m_manager.Take(), (Texts{"STOPPING=1\nSTATUS=Ending", "WATCHDOG=1"}));
}

TEST_F(ServiceManagerTest, AManagerThatIsGoneIsNotedOnce) {
    m_address += "-gone";
    Start(10s).Ready("here");
    m_scheduler.Advance(60s);
    EXPECT_EQ(m_log.lines, Texts{"warning: The service manager cannot be reached at " + m_address});
}

TEST_F(ServiceManagerTest, WithoutAManagerNothingIsDone) {
    m_address.clear();
    ServiceManager& service = Start(10s);
    service.Ready("here");
    m_feed.Publish(events::AnnouncementStarted{7});
    service.Stopping();
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
    EXPECT_EQ(m_manager.Take(), Texts{});
    EXPECT_EQ(m_log.lines, Texts{});
}

TEST_F(ServiceManagerTest, AnAbstractAddressIsReached) {
    m_address = "@announcement-controller-test-" + std::to_string(::getpid());
    const ManagersEnd manager(m_address);
    Start().Ready("here");
    EXPECT_EQ(manager.Take(), Texts{"READY=1\nSTATUS=here"});
}

TEST_F(ServiceManagerTest, WhatIsNoAddressIsRefusedWithWhatWouldBeRight) {
    for (const std::string& wrong :
         {std::string("run/notify"), std::string("@"), "/" + std::string(200, 'x')}) {
        m_address = wrong;
        try {
            Start();
            ADD_FAILURE() << wrong << " is taken";
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(),
                      "NOTIFY_SOCKET is \"" + wrong +
                          "\", which is no address of a service manager: it must be a path, or @ and a "
                          "name");
        }
    }
}

TEST(ServiceEnvironmentTest, SocketAndWatchdogAreReadFromTheEnvironment) {
    const ManagedEnvironment set({{"NOTIFY_SOCKET", "/run/x"}, {"WATCHDOG_USEC", "3000000"}});
    const auto environment = ServiceManager::Environment::OfThisProcess();
    EXPECT_EQ(environment.socket, "/run/x");
    EXPECT_EQ(environment.watchdog, 3s);
}

TEST(ServiceEnvironmentTest, AWatchdogForThisProcessIsTakenAndForAnotherIsNot) {
    const ManagedEnvironment ours(
        {{"WATCHDOG_USEC", "3000000"}, {"WATCHDOG_PID", std::to_string(::getpid())}});
    EXPECT_EQ(ServiceManager::Environment::OfThisProcess().watchdog, 3s);
    const ManagedEnvironment others({{"WATCHDOG_USEC", "3000000"}, {"WATCHDOG_PID", "1"}});
    EXPECT_EQ(ServiceManager::Environment::OfThisProcess().watchdog, std::nullopt);
}

TEST(ServiceEnvironmentTest, AWatchdogThatIsNoNumberIsNone) {
    for (const char* wrong : {"", "0", "-1", "soon", "99999999999999999999"}) {
        const ManagedEnvironment set({{"WATCHDOG_USEC", std::string(wrong)}});
        EXPECT_EQ(ServiceManager::Environment::OfThisProcess().watchdog, std::nullopt) << wrong;
    }
}

TEST(ServiceEnvironmentTest, WithoutAManagerItIsEmpty) {
    const ManagedEnvironment none({});
    const auto environment = ServiceManager::Environment::OfThisProcess();
    EXPECT_EQ(environment.socket, "");
    EXPECT_EQ(environment.watchdog, std::nullopt);
}

} // namespace

} // namespace controller
