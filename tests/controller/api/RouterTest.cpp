#include "controller/api/Router.h"

#include <gtest/gtest.h>

#include <set>

namespace controller {

namespace {

std::string NameAt(const std::string& method, const std::string& path) {
    const Router router(Operations());
    const auto route = router.Find(method, path);
    return route.operation != nullptr ? route.operation->name : "";
}

} // namespace

TEST(RouterTest, AddressLeadsToItsOperation) {
    EXPECT_EQ(NameAt("GET", "/api/announcements"), "list_announcements");
    EXPECT_EQ(NameAt("GET", "/api/announcements/5"), "get_announcement");
    EXPECT_EQ(NameAt("POST", "/api/announcements/5/play"), "play_announcement");
    EXPECT_EQ(NameAt("PUT", "/api/announcements/5/rooms/12"), "put_announcement_room");
    EXPECT_EQ(NameAt("GET", "/healthz"), "get_health");
}

TEST(RouterTest, OtherAddressesLeadNowhere) {
    for (const char* path :
         {"", "/", "/api", "/api/", "/api/announcements/", "/api/announcements/5/", "//api/announcements",
          "/api/announcements/5/play/x", "/API/announcements", "api/announcements", "*"})
        EXPECT_EQ(NameAt("GET", path), "") << path;
}

TEST(RouterTest, ParametersAreDecodedAndKeepWhatLooksLikeAPath) {
    const Router router(Operations());

    const auto route = router.Find("GET", "/api/media/..%2F..%2Fetc");

    ASSERT_NE(route.operation, nullptr);
    EXPECT_EQ(route.values, (ApiCall::Values{{"name", "../../etc"}}));
    EXPECT_EQ(router.Find("GET", "/api/media/%zz").operation, nullptr);
}

TEST(RouterTest, WrongMethodTellsTheRightOnes) {
    const auto route = Router(Operations()).Find("PATCH", "/api/announcements/5");

    EXPECT_EQ(route.operation, nullptr);
    EXPECT_EQ(route.allowed, "GET, PUT, DELETE");
}

TEST(RouterTest, TableHasEachNameAndEachAddressOnce) {
    std::set<std::string> names;
    std::set<std::string> addresses;
    for (const Operation& operation : Operations()) {
        EXPECT_TRUE(names.insert(operation.name).second) << operation.name;
        EXPECT_TRUE(addresses.insert(std::string(operation.method) + operation.path).second)
            << operation.path;
    }
}

} // namespace controller
