#include "host/XmlHelper.h"
#include "tests/support/Xml.h"

#include <gtest/gtest.h>

#include <string>

// A program's stack has room for some ten thousand levels of recursion; nothing here may need one.

namespace {

constexpr std::size_t kLevels = 1000000;

/// `<a>` in `<a>`, so many times.
std::string ChainText(std::size_t levels) {
    std::string text;
    text.reserve(levels * 7);
    for (std::size_t level = 1; level < levels; ++level)
        text += "<a>";
    text += "<a/>";
    for (std::size_t level = 1; level < levels; ++level)
        text += "</a>";
    return text;
}

TEST(XmlNodeDepthTest, MillionLevelsGrownAtTheTopAreWrittenAndDestroyed) {
    vq::auto_com<VqXML::INode> top = VqXML::CreateXmlNode("a", "");
    for (std::size_t level = 1; level < kLevels; ++level) {
        const auto above = VqXML::CreateXmlNode("a", "");
        above->AppendChild(top.Get());
        top = above;
    }

    EXPECT_TRUE(ToXmlText(*top) == ChainText(kLevels)); // without printing either
}

TEST(XmlNodeDepthTest, MillionLevelsGrownAtTheBottomAreWrittenAndDestroyed) {
    const auto top = VqXML::CreateXmlNode("a", "");
    VqXML::INode* bottom = top.Get();
    for (std::size_t level = 1; level < kLevels; ++level) {
        const auto below = VqXML::CreateXmlNode("a", "");
        bottom->AppendChild(below.Get());
        bottom = below.Get();
    }

    EXPECT_TRUE(ToXmlText(*top) == ChainText(kLevels));
}

TEST(XmlNodeDepthTest, LowerHalfOfADeepTreeOutlivesTheUpperOne) {
    constexpr std::size_t kHalf = 50000;
    auto top = VqXML::CreateXmlNode("a", "");
    VqXML::INode* node = top.Get();
    for (std::size_t level = 0; level < kHalf; ++level)
        node = &XmlHelper::AddChild(*node, "a", "");
    node->AddRef();
    const vq::auto_com<VqXML::INode> middle(node);
    for (std::size_t level = 1; level < kHalf; ++level)
        node = &XmlHelper::AddChild(*node, "a", "");

    top = nullptr;

    EXPECT_TRUE(ToXmlText(*middle) == ChainText(kHalf));
}

TEST(XmlNodeDepthTest, CycleThroughAMillionLevelsIsRefused) {
    const auto top = VqXML::CreateXmlNode("a", "");
    VqXML::INode* bottom = top.Get();
    for (std::size_t level = 1; level < kLevels; ++level)
        bottom = &XmlHelper::AddChild(*bottom, "a", "");

    testing::internal::CaptureStderr();
    bottom->AppendChild(top.Get());
    const std::string reported = testing::internal::GetCapturedStderr();

    EXPECT_EQ(reported.find("assertion failed: XmlNode, line "), 0U) << reported;
    EXPECT_EQ(bottom->GetChildren()->First(), nullptr);
}

} // namespace
