#include "framework/XmlText.h"
#include "host/VqXML.h"
#include "host/XmlHelper.h"
#include "tests/framework/FailingAllocation.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// Texts and elements enough for every kind of allocation: long names, several blocks of nodes.
std::string Text() {
    const std::string name = "an_element_with_a_long_name";
    const std::string child = "<" + name + ">" + std::string(40, 'x') + "</" + name + ">tail";
    std::string text = "<a>" + std::string(100, 't');
    for (int count = 0; count < 40; ++count)
        text += child;
    return text + "</a>";
}

TEST(OutOfMemoryTest, ReadingReportsItAndLeavesNothingBehind) {
    const std::string text = Text();

    EXPECT_GT(FailEveryAllocationOf([&] { (void)VqXML::CreateXmlDocument(text); }), 80U);
    EXPECT_TRUE(VqXML::CreateXmlDocument(text));
}

TEST(OutOfMemoryTest, WritingReportsIt) {
    const auto document = VqXML::CreateXmlDocument(Text());

    EXPECT_GT(FailEveryAllocationOf([&] { (void)ToXmlText(*document->GetRootNode()); }), 3U);
}

TEST(OutOfMemoryTest, ChildThatCannotBeAddedIsNotThere) {
    const auto parent = VqXML::CreateXmlNode("parent", "");
    const std::string value(100, 'v');
    std::size_t children = 0;

    const std::size_t failures = FailEveryAllocationOf([&] {
        XmlHelper::AddChild(*parent, "child", value.c_str());
        ++children;
    });

    EXPECT_GT(failures, 0U);
    EXPECT_EQ(children, 1U);
    EXPECT_EQ(ToXmlText(*parent), "<parent><child>" + value + "</child></parent>");
}

TEST(OutOfMemoryTest, AppendThatFailsTakesNoReference) {
    const auto first = VqXML::CreateXmlNode("first", "");
    const auto second = VqXML::CreateXmlNode("second", "");
    const auto shared = VqXML::CreateXmlNode("shared", "");
    first->AppendChild(shared.Get());

    // A second place needs a link of its own.
    EXPECT_GT(FailEveryAllocationOf([&] { second->AppendChild(shared.Get()); }), 0U);

    EXPECT_EQ(ToXmlText(*first), "<first><shared/></first>");
    EXPECT_EQ(ToXmlText(*second), "<second><shared/></second>");
}

} // namespace
