#include "tests/support/Xml.h"

#include <gtest/gtest.h>

namespace {

class XmlReadersTest : public testing::Test {
protected:
    /// An element whose child `v` has this text.
    VqXML::INode& With(const std::string& value) {
        m_node = VqXML::CreateXmlNode("a", "");
        m_node->AddChildString("v", value);
        return *m_node;
    }
    bool Flag(const std::string& value) { return With(value).GetChildValueAsBool("v"); }

    vq::auto_com<VqXML::INode> m_node;
};

TEST_F(XmlReadersTest, MissingChildReadsAsEmptyTextZeroAndFalse) {
    const auto node = VqXML::CreateXmlNode("v", "1");

    EXPECT_EQ(node->GetChildValue("v"), "");
    EXPECT_EQ(node->GetChildValueAsLong("v"), 0);
    EXPECT_EQ(node->GetChildValueAsULong("v"), 0U);
    EXPECT_FALSE(node->GetChildValueAsBool("v"));
    EXPECT_EQ(node->FindChild("v"), nullptr);
}

TEST_F(XmlReadersTest, TheFirstChildOfTheNameIsRead) {
    const auto document = ParseXml("<a><b>0</b><v>1</v><v>2</v><v>true</v></a>");
    VqXML::INode& node = *document->GetRootNode();

    EXPECT_EQ(node.GetChildValue("v"), "1");
    EXPECT_EQ(node.GetChildValueAsLong("v"), 1);
    EXPECT_EQ(node.GetChildValueAsULong("v"), 1U);
    EXPECT_TRUE(node.GetChildValueAsBool("v"));
    EXPECT_EQ(node.FindChild("v")->GetValue(), "1");
}

TEST_F(XmlReadersTest, NamesAreComparedToTheLetter) {
    VqXML::INode& node = With("x");

    EXPECT_EQ(node.FindChild("V"), nullptr);
    EXPECT_EQ(node.FindChild("v "), nullptr);
    EXPECT_EQ(node.FindChild(""), nullptr);
}

TEST_F(XmlReadersTest, GrandchildrenAreNotLookedAt) {
    const auto document = ParseXml("<a><b><v>1</v></b></a>");

    EXPECT_EQ(document->GetRootNode()->FindChild("v"), nullptr);
}

TEST_F(XmlReadersTest, ValuesAreNeverTrimmed) {
    EXPECT_EQ(With(" x\n").GetChildValue("v"), " x\n");
}

TEST_F(XmlReadersTest, NumbersAreReadAsEverywhere) {
    EXPECT_EQ(With(" -1x").GetChildValueAsULong("v"), 4294967295U);
    EXPECT_EQ(With("4294967297").GetChildValueAsULong("v"), 4294967295U);
    EXPECT_EQ(With("-2147483649").GetChildValueAsULong("v"), 2147483648U);
    EXPECT_EQ(With("4294967295").GetChildValueAsLong("v"), 2147483647);
    EXPECT_EQ(With("-12").GetChildValueAsLong("v"), -12);
    EXPECT_EQ(With("none").GetChildValueAsLong("v"), 0);
}

TEST_F(XmlReadersTest, TrueInAnyCaseAndOneAreTrue) {
    for (const char* const text : {"true", "TRUE", "True", "tRuE", "1"})
        EXPECT_TRUE(Flag(text)) << text;
}

TEST_F(XmlReadersTest, AllElseIsFalse) {
    for (const char* const text : {"", "false", "0", " true", "true ", "1 ", " 1", "01", "+1", "2", "-1",
                                   "yes", "t", "truetrue", "tru", "TRU\xC3\x89", "4rue", "\x14rue"})
        EXPECT_FALSE(Flag(text)) << text;
}

TEST_F(XmlReadersTest, WhatTheTypedWritersWriteIsRead) {
    m_node = VqXML::CreateXmlNode("a", "");
    m_node->AddChildString("text", "x");
    m_node->AddChildLong("lowest", -2147483647 - 1);
    m_node->AddChildULong("highest", 4294967295U);
    m_node->AddChildBool("yes", true);
    m_node->AddChildBool("no", false);

    EXPECT_EQ(TextOf(m_node), "<a><text>x</text><lowest>-2147483648</lowest><highest>4294967295</highest>"
                              "<yes>true</yes><no>false</no></a>");
    EXPECT_EQ(m_node->GetChildValueAsLong("lowest"), -2147483647 - 1);
    EXPECT_EQ(m_node->GetChildValueAsULong("highest"), 4294967295U);
    EXPECT_TRUE(m_node->GetChildValueAsBool("yes"));
    EXPECT_FALSE(m_node->GetChildValueAsBool("no"));
}

} // namespace
