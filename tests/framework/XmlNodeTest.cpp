#include "framework/AssertWriter.h"
#include "host/XmlHelper.h"
#include "tests/support/Xml.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using Node = vq::auto_com<VqXML::INode>;

/// Counts failed checks of the framework's nodes.
class RefusedAppends final : public AssertWriter {
public:
    void Write(const char* file, int /*line*/, const vq::StackTrace& /*stack*/) override {
        EXPECT_STREQ(file, "XmlNode");
        ++count;
    }

    int count = 0;
};

class XmlNodeTest : public testing::Test {
protected:
    static Node Make(const std::string& name) { return VqXML::CreateXmlNode(name, ""); }

    /// The names that a walk from the first child gives.
    static std::string Walk(VqXML::INode& node) {
        std::string names;
        VqXML::INodeList& list = *node.GetChildren();
        for (const VqXML::INode* child = list.First(); child != nullptr; child = list.Next())
            names += child->GetName() + " ";
        return names;
    }

    RefusedAppends m_refused;
};

TEST_F(XmlNodeTest, NewNodeIsEmptyOrHasNameAndText) {
    EXPECT_EQ(VqXML::CreateXmlNode()->GetName(), "");
    EXPECT_EQ(VqXML::CreateXmlNode()->GetValue(), "");
    const Node node = VqXML::CreateXmlNode("a", "text");
    EXPECT_EQ(node->GetName(), "a");
    EXPECT_EQ(node->GetValue(), "text");
    EXPECT_EQ(Walk(*node), "");
}

TEST_F(XmlNodeTest, SettingNameAndTextKeepsTheChildren) {
    const Node node = Make("a");
    node->AddChildString("b", "x");

    node->SetNameAndValue("success", "7");

    EXPECT_EQ(TextOf(node), "<success>7<b>x</b></success>");
}

TEST_F(XmlNodeTest, AppendedChildComesLastAndIsSharedWithItsHolder) {
    const Node node = Make("a");
    const Node child = Make("b");
    node->AddChildString("first", "");
    node->AppendChild(child.Get());

    child->SetNameAndValue("b", "changed later");

    EXPECT_EQ(TextOf(node), "<a><first/><b>changed later</b></a>");
}

TEST_F(XmlNodeTest, HelperAddsAChildAndGivesIt) {
    const Node node = Make("a");

    VqXML::INode& child = XmlHelper::AddChild(*node, "b", "text");

    EXPECT_EQ(node->FindChild("b"), &child);
    EXPECT_EQ(TextOf(node), "<a><b>text</b></a>");
}

TEST_F(XmlNodeTest, ChildOutlivesItsParent) {
    Node child = Make("child");
    {
        const Node parent = Make("parent");
        parent->AppendChild(child.Get());
    }
    child->AddChildString("alive", "yes");
    EXPECT_EQ(TextOf(child), "<child><alive>yes</alive></child>");

    // And can hang under another one.
    const Node next = Make("next");
    next->AppendChild(child.Get());
    child = nullptr;
    EXPECT_EQ(TextOf(next), "<next><child><alive>yes</alive></child></next>");
}

TEST_F(XmlNodeTest, NodeMayHangUnderSeveralParentsAndTwiceUnderOne) {
    Node shared = Make("shared");
    Node first = Make("first");
    const Node second = Make("second");
    first->AppendChild(shared.Get());
    second->AppendChild(shared.Get());
    second->AppendChild(shared.Get());
    shared->AddChildString("x", "1");
    shared = nullptr;

    EXPECT_EQ(TextOf(first), "<first><shared><x>1</x></shared></first>");
    EXPECT_EQ(TextOf(second), "<second><shared><x>1</x></shared><shared><x>1</x></shared></second>");
    first = nullptr;
    EXPECT_EQ(TextOf(second), "<second><shared><x>1</x></shared><shared><x>1</x></shared></second>");
    EXPECT_EQ(m_refused.count, 0);
}

TEST_F(XmlNodeTest, NodeThatLostItsFirstParentHangsUnderFurtherOnes) {
    const Node shared = Make("shared");
    Node first = Make("first");
    const Node second = Make("second");
    first->AppendChild(shared.Get());
    second->AppendChild(shared.Get());
    first = nullptr;
    const Node third = Make("third");
    third->AppendChild(shared.Get());
    third->AddChildString("last", "");

    EXPECT_EQ(TextOf(second), "<second><shared/></second>");
    EXPECT_EQ(TextOf(third), "<third><shared/><last/></third>");
}

// Appends that would make a node its own descendant.

TEST_F(XmlNodeTest, AppendOfNothingIsRefused) {
    const Node node = Make("a");
    node->AppendChild(nullptr);

    EXPECT_EQ(m_refused.count, 1);
    EXPECT_EQ(TextOf(node), "<a/>");
}

TEST_F(XmlNodeTest, NodeIsNotAppendedToItself) {
    const Node node = Make("a");
    node->AppendChild(node.Get());

    EXPECT_EQ(m_refused.count, 1);
    EXPECT_EQ(TextOf(node), "<a/>");
}

TEST_F(XmlNodeTest, ParentAndGrandparentAreNotAppendedBelow) {
    const Node grandparent = Make("a");
    VqXML::INode& parent = XmlHelper::AddChild(*grandparent, "b", "");
    VqXML::INode& child = XmlHelper::AddChild(parent, "c", "");

    child.AppendChild(&parent);
    child.AppendChild(grandparent.Get());
    parent.AppendChild(grandparent.Get());

    EXPECT_EQ(m_refused.count, 3);
    EXPECT_EQ(TextOf(grandparent), "<a><b><c/></b></a>");
}

TEST_F(XmlNodeTest, CycleThroughASharedNodeIsRefused) {
    const Node top = Make("top");
    const Node left = Make("left");
    const Node right = Make("right");
    const Node shared = Make("shared");
    top->AppendChild(left.Get());
    top->AppendChild(right.Get());
    left->AppendChild(shared.Get());
    right->AppendChild(shared.Get());
    const Node below = Make("below");
    shared->AppendChild(below.Get());

    below->AppendChild(right.Get());
    below->AppendChild(top.Get());
    shared->AppendChild(left.Get());
    EXPECT_EQ(m_refused.count, 3);

    right->AppendChild(left.Get()); // a second way to the same, but no cycle
    EXPECT_EQ(m_refused.count, 3);
    EXPECT_EQ(TextOf(top), "<top><left><shared><below/></shared></left><right><shared><below/></shared>"
                           "<left><shared><below/></shared></left></right></top>");
}

TEST_F(XmlNodeTest, TreeThatSharesEveryLevelTwiceIsCheckedInNoTime) {
    // Written out it would have 2^64 leaves.
    std::vector<Node> levels{Make("l")};
    for (int level = 0; level < 64; ++level) {
        const Node above = Make("l");
        above->AppendChild(levels.back().Get());
        above->AppendChild(levels.back().Get());
        levels.push_back(above);
    }
    const Node elsewhere = Make("elsewhere");
    VqXML::INode& place = XmlHelper::AddChild(*elsewhere, "place", "");

    place.AppendChild(levels.back().Get()); // looks for `place` in all of it
    levels.front()->AppendChild(levels.back().Get());

    EXPECT_EQ(m_refused.count, 1);
    EXPECT_EQ(place.GetChildren()->First(), levels.back().Get());
}

// Walks.

TEST_F(XmlNodeTest, WalkGivesTheChildrenInOrderAndNullBehindTheLast) {
    const auto document = ParseXml("<a><b/><c/><b/></a>");
    VqXML::INode& node = *document->GetRootNode();

    EXPECT_EQ(Walk(node), "b c b ");
    EXPECT_EQ(node.GetChildren()->Next(), nullptr);
    EXPECT_EQ(Walk(node), "b c b ");
}

TEST_F(XmlNodeTest, WalkOverNothingGivesNull) {
    const Node node = Make("a");

    EXPECT_EQ(node->GetChildren()->First(), nullptr);
    EXPECT_EQ(node->GetChildren()->Next(), nullptr);
}

TEST_F(XmlNodeTest, NextOnAFreshListGivesTheFirst) {
    const auto document = ParseXml("<a><b/><c/></a>");

    EXPECT_EQ(document->GetRootNode()->GetChildren()->Next()->GetName(), "b");
}

TEST_F(XmlNodeTest, ChildThatIsAddedDuringAWalkIsMet) {
    const Node node = Make("a");
    node->AddChildString("b", "");
    VqXML::INodeList& list = *node->GetChildren();
    list.First();
    node->AddChildString("c", "");
    EXPECT_EQ(list.Next()->GetName(), "c");
    EXPECT_EQ(list.Next(), nullptr);
    node->AddChildString("d", "");

    EXPECT_EQ(list.Next()->GetName(), "d");
}

TEST_F(XmlNodeTest, ElementHasOneListWhichKeepsItsPlace) {
    const auto document = ParseXml("<a><b/><c/></a>");
    VqXML::INode& node = *document->GetRootNode();

    node.GetChildren()->First();

    EXPECT_EQ(node.GetChildren()->Next()->GetName(), "c");
}

TEST_F(XmlNodeTest, WalksOverAnElementAndItsChildDoNotMix) {
    const auto document = ParseXml("<a><b><x/><y/></b><c/></a>");
    VqXML::INodeList& outer = *document->GetRootNode()->GetChildren();
    VqXML::INode* const child = outer.First();

    EXPECT_EQ(Walk(*child), "x y ");
    EXPECT_EQ(outer.Next()->GetName(), "c");
}

// Memory.

TEST_F(XmlNodeTest, TreeMayBeBuiltOnOneThreadAndDestroyedOnAnother) {
    Node tree = Make("a");
    for (int child = 0; child < 1000; ++child)
        tree->AddChildLong("b", child);
    Node here = Make("mine");

    std::thread([&tree] {
        const Node own = Make("own");
        EXPECT_EQ(tree->GetChildren()->First()->GetValue(), "0");
        tree = nullptr;
    }).join();

    EXPECT_EQ(TextOf(here), "<mine/>");
}

} // namespace
