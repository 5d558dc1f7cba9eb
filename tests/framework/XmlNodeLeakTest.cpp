#include "framework/XmlNode.h"
#include "host/VqXML.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>

// Part of the build with AddressSanitizer: its leak checker looks when the child process ends.

namespace {

/// Makes a tree of three nodes, on a thread of its own, of which no register and no stack keeps a pointer.
template <class End>
void MakeTree(End end) {
    std::thread([&end] {
        auto root = VqXML::CreateXmlNode("root", "");
        root->AddChildString("child", "1");
        const auto kept = VqXML::CreateXmlNode("kept", "");
        root->AppendChild(kept.Get());
        end(*kept);
    }).join();
}

class XmlNodeLeakTest : public testing::Test {
protected:
    XmlNodeLeakTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(XmlNodeLeakTest, OneLeakedNodeIsSeen) {
    const auto leakOne = [] {
        MakeTree([](VqXML::INode& kept) { kept.AddRef(); });
        std::exit(EXIT_SUCCESS); // NOLINT(concurrency-mt-unsafe): the other thread has ended
    };
    EXPECT_EXIT(
        leakOne(), [](int status) { return status != 0; },
        "detected memory leaks(.|\n)*Direct leak of " + std::to_string(sizeof(XmlNode)) +
            " byte.s. in 1 object(.|\n)*SUMMARY: AddressSanitizer: " + std::to_string(sizeof(XmlNode)) +
            " byte.s. leaked in 1 allocation");
}

TEST_F(XmlNodeLeakTest, WithoutALeakNothingIsSeen) {
    const auto leakNone = [] {
        MakeTree([](VqXML::INode& /*kept*/) {});
        std::exit(EXIT_SUCCESS); // NOLINT(concurrency-mt-unsafe): the other thread has ended
    };
    EXPECT_EXIT(leakNone(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

} // namespace
