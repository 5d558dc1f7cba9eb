#include "controller/audio/multicast/Zone.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include <netinet/in.h>

namespace controller::audio::test {

namespace {

void ExpectZoneRefused(const std::string& text, const std::string& reason) {
    try {
        (void)ReadZone(text);
        ADD_FAILURE() << text << " was taken";
    } catch (const std::invalid_argument& error) {
        EXPECT_NE(std::string(error.what()).find(reason), std::string::npos) << text << ": " << error.what();
    }
}

std::string OnlyDoubtAbout(const std::string& text) {
    const auto doubts = DoubtsAbout(ReadZone(text));
    EXPECT_LE(doubts.size(), 1U) << text;
    return doubts.empty() ? "" : doubts.front();
}

} // namespace

TEST(ZoneTest, AnAddressAloneIsUsualTelephony) {
    const Zone zone = ReadZone("239.255.10.1:5004");
    EXPECT_EQ(zone.place, "239.255.10.1:5004");
    EXPECT_EQ(zone.address.ss_family, AF_INET);
    EXPECT_EQ(zone.addressLength, sizeof(sockaddr_in));
    EXPECT_STREQ(zone.codec->name, "pcmu");
    EXPECT_EQ(zone.codec->payloadType, 0);
    EXPECT_EQ(zone.codec->PayloadBytes(), 160U);
    EXPECT_EQ(zone.route.ttl, 1U);
    EXPECT_EQ(zone.route.dscp, 46U);
    EXPECT_EQ(zone.route.interfaceName, "");
}

TEST(ZoneTest, EveryOptionIsRead) {
    const Zone zone = ReadZone("[ff05::12]:6000 interface=eth0 codec=l16  dscp=0 ttl=255");
    EXPECT_EQ(zone.place, "[ff05::12]:6000");
    EXPECT_EQ(zone.address.ss_family, AF_INET6);
    EXPECT_EQ(zone.addressLength, sizeof(sockaddr_in6));
    EXPECT_STREQ(zone.codec->name, "l16");
    EXPECT_EQ(zone.codec->payloadType, 96);
    EXPECT_EQ(zone.codec->PayloadBytes(), 960U);
    EXPECT_EQ(zone.route.family, AF_INET6);
    EXPECT_EQ(zone.route.ttl, 255U);
    EXPECT_EQ(zone.route.dscp, 0U);
    EXPECT_EQ(zone.route.interfaceName, "eth0");
}

TEST(ZoneTest, TheUrgentAddressHasAllElseInCommonWithTheUsualOne) {
    const Zone usual =
        ReadZone("239.255.10.1:5004 urgent=[FF05:0:0::12]:06000 codec=l16 ttl=3 interface=eth0");
    const auto urgent = UrgentZoneOf(usual);
    ASSERT_TRUE(urgent);
    EXPECT_EQ(urgent->place, "[ff05::12]:6000");
    EXPECT_EQ(urgent->addressLength, sizeof(sockaddr_in6));
    EXPECT_EQ(urgent->route.family, AF_INET6);
    EXPECT_STREQ(urgent->codec->name, "l16");
    EXPECT_EQ(urgent->route.ttl, 3U);
    EXPECT_EQ(urgent->route.interfaceName, "eth0");
    EXPECT_EQ(usual.place, "239.255.10.1:5004");
    const auto four = UrgentZoneOf(ReadZone("[ff05::12]:6000 urgent=239.255.10.2:5004"));
    ASSERT_TRUE(four);
    EXPECT_EQ(four->route.family, AF_INET);
    EXPECT_EQ(four->addressLength, sizeof(sockaddr_in));
    EXPECT_FALSE(UrgentZoneOf(ReadZone("239.255.10.1:5004")));
}

TEST(ZoneTest, OneAddressIsOnePlaceHoweverItIsWritten) {
    EXPECT_EQ(ReadZone("[FF05:0:0::12]:5004").place, ReadZone("[ff05::12]:05004").place);
}

TEST(ZoneTest, WhatIsNoZoneIsAnsweredWithWhatWouldBeRight) {
    for (const char* text : {"", "239.255.10.1", "239.255.10.1:", "239.255.10.1:0", "239.255.10.1:65536"})
        ExpectZoneRefused(text, "needs an address and a port, such as");
    for (const char* text :
         {"kitchen:5004", "192.168.1.5:5004", "[fe80::1]:5004", "ff05::1:5004", "[]:1", ":1"})
        ExpectZoneRefused(text, "is no multicast address; those for use in a house are 239.0.0.0 to");
    ExpectZoneRefused("239.0.0.1:1 codec=g722", "codec \"g722\" is neither pcmu");
    ExpectZoneRefused("239.0.0.1:1 codec", "codec \"\" is neither pcmu");
    ExpectZoneRefused("239.0.0.1:1 ttl=0", "ttl \"0\" is not a whole number from 1 to 255");
    ExpectZoneRefused("239.0.0.1:1 dscp=64", "dscp \"64\" is not a whole number from 0 to 63");
    ExpectZoneRefused("239.0.0.1:1 interface=", "is not the name of a network interface");
    ExpectZoneRefused("239.0.0.1:1 interface=aninterfacename16", "is not the name of a network interface");
    ExpectZoneRefused("239.0.0.1:1 urgent=", "urgent needs an address and a port, such as");
    ExpectZoneRefused("239.0.0.1:1 urgent=239.0.0.2", "urgent needs an address and a port, such as");
    ExpectZoneRefused("239.0.0.1:1 urgent=192.168.1.5:1", "urgent \"192.168.1.5\" is no multicast address");
    ExpectZoneRefused("239.0.0.1:1 urgent=239.0.0.1:01", "\"239.0.0.1:1\" is where everything goes");
    ExpectZoneRefused("239.0.0.1:1 volume=3", "\"volume=3\" is not known");
}

TEST(ZoneTest, AnAddressOfTheWholeWorldIsDoubted) {
    EXPECT_NE(OnlyDoubtAbout("224.0.1.75:5004").find("those for use in a house begin with 239"),
              std::string::npos);
    EXPECT_NE(OnlyDoubtAbout("238.255.255.255:5004 ttl=8").find("begin with 239"), std::string::npos);
    EXPECT_NE(OnlyDoubtAbout("[ff0e::1]:5004").find("begin with ff05"), std::string::npos);
    for (const char* text : {"239.0.0.0:5004", "239.255.255.255:5004", "[ff02::1]:5004", "[ff03::1]:5004"})
        EXPECT_EQ(OnlyDoubtAbout(text), "") << text;
}

TEST(ZoneTest, ATtlOfOneIsDoubtedWhereTheAddressIsForSeveralNetworks) {
    for (const char* text :
         {"239.192.0.1:5004", "239.195.255.255:5004", "[ff05::1]:5004", "[ff08::1]:5004"}) {
        EXPECT_NE(OnlyDoubtAbout(text).find("packets with a ttl of 1 pass no router"), std::string::npos)
            << text;
        EXPECT_EQ(OnlyDoubtAbout(std::string(text) + " ttl=3"), "") << text;
    }
    EXPECT_EQ(OnlyDoubtAbout("239.191.255.255:5004"), "");
    EXPECT_EQ(OnlyDoubtAbout("239.196.0.0:5004"), "");
}

} // namespace controller::audio::test
