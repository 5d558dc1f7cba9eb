#include "announce/announcements/ImportPlan.h"

#include "announce/basics/Failure.h"

#include <gtest/gtest.h>

namespace {

Json Stored(unsigned id, const std::string& name, const std::string& text) {
    return {{"id", id},
            {"name", name},
            {"audio", {{"file", ""}, {"delay_ms", 0}}},
            {"video",
             {{"image", ""},
              {"text", text},
              {"delay_ms", 0},
              {"timeout_ms", 0},
              {"ok_button", true},
              {"variable", nullptr}}},
            {"rooms", Json::array()},
            {"navigators", Json::array()}};
}

Json Written(const std::string& name, const std::string& text) {
    return {{"name", name}, {"video", {{"text", text}}}};
}

ExitStatus StatusOf(const std::string& text) {
    try {
        (void)ImportPlan::Read("file.json", text);
    } catch (const Failure& failure) {
        EXPECT_EQ(std::string(failure.what()).rfind("file.json", 0), 0U);
        return failure.Status();
    }
    return ExitStatus::Done;
}

} // namespace

TEST(ImportPlanTest, NewOnesAreAddedAndEqualOnesLeftAlone) {
    const auto plan = ImportPlan::Make({Written("Dinner", "ready"), Written("Bell", "door")},
                                       Json::array({Stored(5, "Dinner", "ready")}));

    EXPECT_EQ(plan.unchanged, 1U);
    ASSERT_EQ(plan.changes.size(), 1U);
    EXPECT_EQ(plan.changes[0].announcement.at("name"), "Bell");
    EXPECT_TRUE(plan.changes[0].present.is_null());
}

TEST(ImportPlanTest, TheOrderOfMembersSaysNothing) {
    Json stored = Stored(5, "Dinner", "ready");
    stored["rooms"] = Json::array({{{"id", 1}, {"volume", 40}}});
    Json wanted = Written("Dinner", "ready");
    wanted["rooms"] = Json::array({{{"volume", 40}, {"id", 1}}});

    EXPECT_EQ(ImportPlan::Make({wanted}, Json::array({stored})).unchanged, 1U);
}

TEST(ImportPlanTest, OneWithOtherContentWouldTakeThePlaceOfTheOneWithItsName) {
    const auto plan =
        ImportPlan::Make({Written("Dinner", "burnt")}, Json::array({Stored(5, "Dinner", "ready")}));

    ASSERT_EQ(plan.changes.size(), 1U);
    EXPECT_EQ(plan.changes[0].present.at("id"), 5);
}

TEST(ImportPlanTest, WhatIsUrgentAndIsNotInTheFileIsAnotherAndBecomesCalm) {
    Json urgent = Stored(5, "Dinner", "ready");
    urgent["urgent"] = true;
    const auto plan = ImportPlan::Make({Written("Dinner", "ready")}, Json::array({urgent}));
    ASSERT_EQ(plan.changes.size(), 1U);
    EXPECT_EQ(plan.changes[0].announcement.at("urgent"), false);
    EXPECT_EQ(ImportPlan::Make({urgent}, Json::array({urgent})).unchanged, 1U);
}

TEST(ImportPlanTest, OfSeveralWithTheNameTheIdDecidesAndWithoutOneNobodyGuesses) {
    const Json present = Json::array({Stored(5, "Dinner", "a"), Stored(6, "Dinner", "b")});
    Json wanted = Written("Dinner", "c");
    EXPECT_THROW((void)ImportPlan::Make({wanted}, present), Failure);

    wanted["id"] = 6;
    EXPECT_EQ(ImportPlan::Make({wanted}, present).changes[0].present.at("id"), 6);
}

TEST(ImportPlanTest, TwiceTheSameInTheFileIsTwoAnnouncements) {
    const auto plan = ImportPlan::Make({Written("Dinner", "a"), Written("Dinner", "a")},
                                       Json::array({Stored(5, "Dinner", "a")}));

    EXPECT_EQ(plan.unchanged, 1U);
    EXPECT_EQ(plan.changes.size(), 1U);
}

TEST(ImportPlanTest, WhatIsNoExportIsRefusedByTheFilesName) {
    for (const char* text : {"", "{", "[]", "{}", R"({"announcements": 1})", R"({"announcements": [1]})",
                             R"({"announcements": [{}]})", R"({"announcements": [{"name": 1}]})"})
        EXPECT_EQ(StatusOf(text), ExitStatus::Usage) << text;
    EXPECT_EQ(StatusOf(R"({"announcements": []})"), ExitStatus::Done);
}
