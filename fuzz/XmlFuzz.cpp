#include "framework/XmlText.h"
#include "fuzz/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

constexpr int kMaxDepth = 256;

/// Whether both elements say the same, all the way down; recursion is safe in trees that were read.
bool AreEqual(VqXML::INode& left, VqXML::INode& right, int depth) {
    Require(depth <= kMaxDepth, "what is read nests at most 256 deep");
    if (left.GetName() != right.GetName() || left.GetValue() != right.GetValue())
        return false;
    VqXML::INode* leftChild = left.GetChildren()->First();
    VqXML::INode* rightChild = right.GetChildren()->First();
    while (leftChild != nullptr && rightChild != nullptr) {
        if (!AreEqual(*leftChild, *rightChild, depth + 1))
            return false;
        leftChild = left.GetChildren()->Next();
        rightChild = right.GetChildren()->Next();
    }
    return leftChild == nullptr && rightChild == nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto read = VqXML::CreateXmlDocument(std::string(data, data + size));
    if (!read)
        return 0;
    const std::string written = ToXmlText(*read->GetRootNode());
    const auto again = VqXML::CreateXmlDocument(written);
    Require(static_cast<bool>(again), "what is written can be read");
    Require(AreEqual(*read->GetRootNode(), *again->GetRootNode(), 1), "what is written reads as the same");
    Require(ToXmlText(*again->GetRootNode()) == written, "what is read is written as before");
    return 0;
}
