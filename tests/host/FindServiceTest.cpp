#include "host/FindService.h"

#include "framework/InstanceRegistry.h"
#include "host/ILogger.h"

#include <gtest/gtest.h>

namespace {

class SilentLogger final : public ILogger {
public:
    void Log(int /*level*/, const std::string& /*text*/) override {}
};

TEST(FindServiceTest, GivesWhatIsPublishedUnderTheServicesIdentifier) {
    InstanceRegistry instances;
    SilentLogger logger;
    instances.RegisterInterface("{6B6BF865-B6E0-44EE-B253-27897C1CADF0}", static_cast<ILogger*>(&logger), 1);

    EXPECT_EQ(FindService<ILogger>(instances), &logger);
}

TEST(FindServiceTest, GivesNullForAnAbsentService) {
    EXPECT_EQ(FindService<ILogger>(InstanceRegistry()), nullptr);
}

TEST(FindServiceTest, IdentifiersAreComparedToTheLetter) {
    InstanceRegistry instances;
    SilentLogger logger;
    instances.RegisterInterface("{6b6bf865-b6e0-44ee-b253-27897c1cadf0}", static_cast<ILogger*>(&logger), 1);

    EXPECT_EQ(FindService<ILogger>(instances), nullptr);
}

} // namespace
