#include "controller/state/StateSplice.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

std::string Element(std::uint32_t id, const std::string& rest = "") {
    return "<announcement><id>" + std::to_string(id) + "</id>" + rest + "</announcement>";
}

std::string State(const std::string& elements) {
    return "<announcements>" + elements + "</announcements>";
}

} // namespace

TEST(StateSpliceTest, ElementIsExchangedAppendedAndRemoved) {
    const std::string state = State(Element(1) + Element(12) + Element(20));
    EXPECT_EQ(SpliceAnnouncement(state, 12, Element(12, "<name>n</name>")),
              State(Element(1) + Element(12, "<name>n</name>") + Element(20)));
    EXPECT_EQ(SpliceAnnouncement(state, 1, ""), State(Element(12) + Element(20)));
    EXPECT_EQ(SpliceAnnouncement(state, 20, ""), State(Element(1) + Element(12)));
    EXPECT_EQ(SpliceAnnouncement(state, 21, Element(21)),
              State(Element(1) + Element(12) + Element(20) + Element(21)));
}

TEST(StateSpliceTest, WithoutACertainPlaceThereIsNothing) {
    const std::string state = State(Element(1) + Element(12));
    EXPECT_EQ(SpliceAnnouncement(state, 5, Element(5)), std::nullopt) << "between others";
    EXPECT_EQ(SpliceAnnouncement(state, 5, ""), std::nullopt) << "not there";
    EXPECT_EQ(SpliceAnnouncement(state, 1, Element(7)), std::nullopt) << "kept under another id";
    EXPECT_EQ(SpliceAnnouncement(State(Element(1) + Element(1)), 1, ""), std::nullopt) << "there twice";
    EXPECT_EQ(SpliceAnnouncement("<announcements/>", 1, Element(1)), std::nullopt) << "the first one";
    EXPECT_EQ(SpliceAnnouncement("", 1, Element(1)), std::nullopt) << "nothing stored yet";
}

} // namespace controller
