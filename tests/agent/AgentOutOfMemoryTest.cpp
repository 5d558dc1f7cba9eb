#include "agent/AnnouncementAgent.h"
#include "framework/IDriverHost.h"
#include "framework/InstanceRegistry.h"
#include "tests/framework/FailingAllocation.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(AgentOutOfMemoryTest, AnAgentThatCannotBeMadeLeavesNothingBehind) {
    FakeHost host;
    InstanceRegistry instances;
    instances.RegisterInterface(IDriverHost::kGuid, static_cast<IDriverHost*>(&host.driverHost), 1);
    const auto face = [&] {
        void* found = nullptr;
        instances.QueryInterface(IAnnouncementAgent::kGuid, &found);
        return found;
    };
    std::unique_ptr<VqBaseDriver> agent;
    std::size_t failures = 0;
    while (!agent) {
        FailAllocation(failures + 1);
        try {
            agent.reset(AnnouncementAgent::Create(instances));
            FailAllocation(0);
        } catch (const std::bad_alloc&) {
            ++failures;
            EXPECT_EQ(face(), nullptr) << "at allocation " << failures;
        }
    }
    EXPECT_GT(failures, 1U);
    EXPECT_NE(face(), nullptr);
}

} // namespace
