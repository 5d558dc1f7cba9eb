#include "controller/access/TokenSecret.h"

#include <gtest/gtest.h>

namespace controller {

TEST(TokenSecretTest, SecretMatchesItsOwnHashAndNoOtherDoes) {
    const std::string hash = token_secret::Hash("secret");

    EXPECT_TRUE(token_secret::IsHash(hash));
    EXPECT_TRUE(token_secret::Matches("secret", hash));
    EXPECT_FALSE(token_secret::Matches("secreT", hash));
    EXPECT_FALSE(token_secret::Matches("", hash));
}

TEST(TokenSecretTest, OneSecretHasAnotherHashEachTime) {
    EXPECT_NE(token_secret::Hash("secret"), token_secret::Hash("secret"));
}

TEST(TokenSecretTest, TextThatIsNoHashMatchesNothing) {
    const std::string hash = token_secret::Hash("secret");
    const std::string tail = hash.substr(hash.find(':', 7 + 3)); // behind the costs' first
    for (const std::string& text : {std::string(), std::string("scrypt"), std::string("secret"), hash + "0",
                                    hash.substr(1), "scrypt:30" + tail, "scrypt:14:8:1:zz:zz" + tail}) {
        EXPECT_FALSE(token_secret::IsHash(text)) << text;
        EXPECT_FALSE(token_secret::Matches("secret", text)) << text;
    }
}

TEST(TokenSecretTest, ChanceIsLongAndNeverTheSame) {
    EXPECT_EQ(token_secret::Chance(32).size(), 64U);
    EXPECT_NE(token_secret::Chance(32), token_secret::Chance(32));
}

TEST(TokenSecretTest, NamesAreShortAndPlain) {
    EXPECT_TRUE(token_secret::IsName("kitchen-tablet_2"));
    for (const std::string& name : {std::string(), std::string("a b"), std::string("a.b"),
                                    std::string("\xC3\xA9"), std::string(65, 'a'), std::string("a\"")})
        EXPECT_FALSE(token_secret::IsName(name)) << name;
}

} // namespace controller
