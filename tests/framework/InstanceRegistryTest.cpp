#include "framework/InstanceRegistry.h"

#include <gtest/gtest.h>

namespace {

class InstanceRegistryTest : public testing::Test {
protected:
    void* Find(const std::string& guid) const {
        void* found = const_cast<int*>(&m_other); // something else than what may be found
        m_registry.QueryInterface(guid, &found);
        return found;
    }

    InstanceRegistry m_registry;
    int m_first = 1;
    int m_second = 2;
    int m_other = 3;
};

TEST_F(InstanceRegistryTest, LookUpOfWhatIsNotPublishedGivesNull) {
    EXPECT_EQ(Find("{A}"), nullptr);
}

TEST_F(InstanceRegistryTest, PublishedObjectIsFoundUnderExactlyItsIdentifier) {
    m_registry.RegisterInterface("{A}", &m_first, 1);

    EXPECT_EQ(Find("{A}"), &m_first);
    EXPECT_EQ(Find("{a}"), nullptr);
    EXPECT_EQ(Find("{A} "), nullptr);
}

TEST_F(InstanceRegistryTest, LaterPublicationReplacesTheEarlierOne) {
    m_registry.RegisterInterface("{A}", &m_first, 1);
    m_registry.RegisterInterface("{A}", &m_second, 1);

    EXPECT_EQ(Find("{A}"), &m_second);
}

TEST_F(InstanceRegistryTest, WithdrawnObjectIsGoneAndTheOthersStay) {
    m_registry.RegisterInterface("{A}", &m_first, 1);
    m_registry.RegisterInterface("{B}", &m_second, 1);

    m_registry.UnregisterInterface("{A}");
    m_registry.UnregisterInterface("{A}");
    m_registry.UnregisterInterface("{C}");

    EXPECT_EQ(Find("{A}"), nullptr);
    EXPECT_EQ(Find("{B}"), &m_second);
}

} // namespace
