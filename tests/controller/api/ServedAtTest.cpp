#include "controller/api/ServedAt.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

Texts Urls(const std::string& address, const Texts& machine, bool isTls = false) {
    House house;
    house.address = address;
    if (isTls)
        house.tls.certificate = "certificate.pem";
    return served_at::Urls(house, 8765, machine);
}

const Texts kMachine{"192.168.1.20", "10.0.0.7", "2001:db8::7"};

TEST(ServedAtTest, AnAddressOfItsOwnIsWhatPeopleOpen) {
    EXPECT_EQ(Urls("127.0.0.1", kMachine), Texts{"http://127.0.0.1:8765/"});
    EXPECT_EQ(Urls("192.168.1.20", kMachine, true), Texts{"https://192.168.1.20:8765/"});
    EXPECT_EQ(Urls("2001:db8::7", kMachine), Texts{"http://[2001:db8::7]:8765/"});
}

TEST(ServedAtTest, ForEveryAddressThoseOfTheMachineAreTold) {
    EXPECT_EQ(Urls("0.0.0.0", kMachine),
              (Texts{"http://192.168.1.20:8765/", "http://10.0.0.7:8765/", "http://127.0.0.1:8765/"}));
    EXPECT_EQ(Urls("::", kMachine), (Texts{"http://192.168.1.20:8765/", "http://10.0.0.7:8765/",
                                           "http://[2001:db8::7]:8765/", "http://127.0.0.1:8765/"}));
    EXPECT_EQ(Urls("0.0.0.0", {}), Texts{"http://127.0.0.1:8765/"});
}

TEST(ServedAtTest, OfManyAddressesOnlyAFewAreTold) {
    const Texts many(30, "10.0.0.7");
    EXPECT_EQ(Urls("0.0.0.0", many).size(), 5U);
}

TEST(ServedAtTest, TheMachinesOwnAddressesAreNoneThatOnlyItCanOpen) {
    for (const std::string& address : served_at::AddressesOfThisMachine()) {
        EXPECT_NE(address.substr(0, 4), "127.") << address;
        EXPECT_NE(address, "::1");
        EXPECT_NE(address.substr(0, 5), "fe80:") << address;
    }
}

} // namespace

} // namespace controller
