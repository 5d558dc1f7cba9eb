#include "framework/XmlText.h"

#include "host/XmlHelper.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Written(const std::string& name, const std::string& value) {
    return ToXmlText(*VqXML::CreateXmlNode(name, value));
}

TEST(XmlTextTest, ElementWithNeitherTextNorChildrenIsOneTag) {
    EXPECT_EQ(Written("announcements", ""), "<announcements/>");
}

TEST(XmlTextTest, ElementWithTextHasItBetweenItsTags) {
    EXPECT_EQ(Written("name", "Dinner"), "<name>Dinner</name>");
    EXPECT_EQ(Written("name", " "), "<name> </name>");
}

TEST(XmlTextTest, MarkupAndCarriageReturnsAreEscapedAndNothingElse) {
    EXPECT_EQ(Written("t", "&"), "<t>&amp;</t>");
    EXPECT_EQ(Written("t", "<>"), "<t>&lt;&gt;</t>");
    EXPECT_EQ(Written("t", "a\rb"), "<t>a&#13;b</t>");
    EXPECT_EQ(Written("t", "a&&b]]>"), "<t>a&amp;&amp;b]]&gt;</t>");
    EXPECT_EQ(Written("t", "\"'\t\n \xC3\xA9"), "<t>\"'\t\n \xC3\xA9</t>");
}

TEST(XmlTextTest, TextStandsBeforeTheChildrenWhichFollowWithoutBlanks) {
    const auto node = VqXML::CreateXmlNode("a", "text");
    node->AddChildString("b", "");
    XmlHelper::AddChild(*node, "c", "inner").AddChildBool("d", false);

    EXPECT_EQ(ToXmlText(*node), "<a>text<b/><c>inner<d>false</d></c></a>");
}

TEST(XmlTextTest, NodeInTheMiddleOfATreeIsWrittenAlone) {
    const auto node = VqXML::CreateXmlNode("a", "");
    VqXML::INode& child = XmlHelper::AddChild(*node, "b", "");
    child.AddChildString("c", "x");
    node->AddChildString("d", "y");

    EXPECT_EQ(ToXmlText(child), "<b><c>x</c></b>");
}

TEST(XmlTextTest, WrittenTextReadsBackAsTheSameTree) {
    const std::string awkward = " <&>\r\n\t\"']]> \xF0\x9F\x98\x80 ";
    const auto node = VqXML::CreateXmlNode("a", "");
    node->AddChildString("b", awkward);
    node->AddChildString("c", " ");

    const auto document = VqXML::CreateXmlDocument(ToXmlText(*node));
    ASSERT_TRUE(document);

    EXPECT_EQ(document->GetRootNode()->GetChildValue("b"), awkward);
    EXPECT_EQ(document->GetRootNode()->GetChildValue("c"), " ");
}

} // namespace
