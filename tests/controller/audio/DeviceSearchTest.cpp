#include "controller/audio/DeviceSearch.h"

#include <gtest/gtest.h>

namespace controller::audio::test {

TEST(DeviceSearchTest, EachAnnouncementAsksAnewAndItsRoomsShareTheAnswer) {
    int asked = 0;
    DeviceSearch search([&] {
        ++asked;
        return GstPtr<GstDevice>();
    });
    EXPECT_EQ(search.FindDefault(1), nullptr);
    EXPECT_EQ(search.FindDefault(1), nullptr);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(search.FindDefault(2), nullptr);
    EXPECT_EQ(search.FindDefault(2), nullptr);
    EXPECT_EQ(asked, 2) << "a device may have come, whatever the machine looks like";
}

} // namespace controller::audio::test
