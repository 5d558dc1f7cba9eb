#include "controller/house/TokenText.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace controller {

namespace {
const Token kPhone{"phone", "scrypt:x", Rights::Read({"play", "navigator:5"})};
const std::string kEntry =
    "  - name: \"phone\"\n    hash: \"scrypt:x\"\n    rights: [\"play\", \"navigator:5\"]\n";
} // namespace

TEST(TokenTextTest, FirstTokenStandsAtTheEndOfTheFile) {
    EXPECT_EQ(token_text::Add("name: Home # ours\n", kPhone), "name: Home # ours\n\ntokens:\n" + kEntry);
}

TEST(TokenTextTest, EmptyListIsFilled) {
    EXPECT_EQ(token_text::Add("tokens: []\nname: Home\n", kPhone), "tokens:\n" + kEntry + "name: Home\n");
}

TEST(TokenTextTest, NewTokenKeepsTheOthersAndTheirIndent) {
    const std::string house = "tokens: # who\n- name: a\n  hash: b\n  rights: [play]\nname: Home\n";

    EXPECT_EQ(
        token_text::Add(house, {"c", "d", Rights::All()}),
        "tokens: # who\n- name: \"c\"\n  hash: \"d\"\n  rights: [\"admin\"]\n- name: a\n  hash: b\n  rights: "
        "[play]\nname: Home\n");
}

TEST(TokenTextTest, ListOnOneLineIsLeftToPeople) {
    EXPECT_THROW((void)token_text::Add("tokens: [{name: a}]\n", kPhone), std::runtime_error);
}

TEST(TokenTextTest, CommentedTokensAreNoTokens) {
    EXPECT_EQ(token_text::Add("# tokens:\n#   - name: a\n", kPhone),
              "# tokens:\n#   - name: a\n\ntokens:\n" + kEntry);
}

TEST(TokenTextTest, RemovingTakesOneTokenAndLeavesTheRest) {
    const std::string house =
        "tokens:\n  - name: a\n    hash: b\n" + kEntry + "  - name: c\n    hash: d\nname: Home\n";

    EXPECT_EQ(token_text::Remove(house, "phone"),
              "tokens:\n  - name: a\n    hash: b\n  - name: c\n    hash: d\nname: Home\n");
}

TEST(TokenTextTest, LastTokenLeavesAnEmptyList) {
    EXPECT_EQ(token_text::Remove("tokens:\n" + kEntry + "name: Home\n", "phone"), "tokens: []\nname: Home\n");
}

TEST(TokenTextTest, RemovingAnUnknownTokenIsRefused) {
    EXPECT_THROW((void)token_text::Remove("tokens:\n" + kEntry, "phon"), std::runtime_error);
    EXPECT_THROW((void)token_text::Remove("name: phone\n", "phone"), std::runtime_error);
}

} // namespace controller
