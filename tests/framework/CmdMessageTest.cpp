#include "framework/CmdMessage.h"

#include <gtest/gtest.h>

namespace {

class CmdMessageTest : public testing::Test {
protected:
    vq::auto_com<CmdMessage> m_message = CmdMessage::Create("SHOW_POPUP");
};

TEST_F(CmdMessageTest, NewMessageHasItsNameAndNoParameters) {
    EXPECT_EQ(m_message->GetName(), "SHOW_POPUP");
    EXPECT_TRUE(m_message->GetParameters().empty());
}

TEST_F(CmdMessageTest, MissingParameterReadsAsEmptyTextAndZero) {
    EXPECT_EQ(m_message->GetParam("id"), "");
    EXPECT_EQ(m_message->GetParamAsULong("id"), 0U);
}

TEST_F(CmdMessageTest, ParametersAreKeptInTheOrderOfTheirAdding) {
    m_message->AddParam("SIZE", "NUMBER", "0");
    m_message->AddVariableParam("MESSAGE", "STRING", 9, 4);

    const auto& parameters = m_message->GetParameters();
    ASSERT_EQ(parameters.size(), 2U);
    EXPECT_EQ(parameters[0].name, "SIZE");
    EXPECT_EQ(parameters[0].type, "NUMBER");
    EXPECT_EQ(parameters[0].value, "0");
    EXPECT_FALSE(parameters[0].isVariable);
    EXPECT_EQ(parameters[1].name, "MESSAGE");
    EXPECT_EQ(parameters[1].type, "STRING");
    EXPECT_EQ(parameters[1].value, "");
    EXPECT_TRUE(parameters[1].isVariable);
    EXPECT_EQ(parameters[1].deviceId, 9U);
    EXPECT_EQ(parameters[1].variableId, 4U);
}

TEST_F(CmdMessageTest, OfParametersWithOneNameTheFirstIsRead) {
    m_message->AddParam("id", "NUMBER", "1");
    m_message->AddParam("id", "NUMBER", "2");

    EXPECT_EQ(m_message->GetParam("id"), "1");
}

TEST_F(CmdMessageTest, ParameterBoundToAVariableReadsAsEmptyText) {
    m_message->AddVariableParam("MESSAGE", "STRING", 9, 4);

    EXPECT_EQ(m_message->GetParam("MESSAGE"), "");
}

TEST_F(CmdMessageTest, NumbersAreReadAsEverywhere) {
    m_message->AddParam("negative", "NUMBER", " -1x");
    m_message->AddParam("large", "NUMBER", "4294967297");

    EXPECT_EQ(m_message->GetParamAsULong("negative"), 4294967295U);
    EXPECT_EQ(m_message->GetParamAsULong("large"), 4294967295U);
}

TEST_F(CmdMessageTest, LivesAsLongAsAHolder) {
    const vq::auto_com<ICmdMessage> other = m_message;
    m_message = nullptr;

    EXPECT_EQ(other->GetName(), "SHOW_POPUP");
}

} // namespace
