#include "announce/client/Problem.h"

#include "tests/announce/SmallHouse.h"

#include <gtest/gtest.h>

namespace {

Failure FailureAt(unsigned status, const std::string& body = "", const std::string& retryAfter = "") {
    return FailureOf([&] { ThrowProblem({status, body, "", retryAfter}); });
}

} // namespace

TEST(ProblemTest, EachAnswerHasTheExitStatusThatScriptsRelyOn) {
    const std::pair<unsigned, ExitStatus> expected[] = {
        {400, ExitStatus::Refused},      {401, ExitStatus::NotAllowed}, {403, ExitStatus::NotAllowed},
        {404, ExitStatus::NotFound},     {409, ExitStatus::Conflict},   {412, ExitStatus::Conflict},
        {413, ExitStatus::Refused},      {429, ExitStatus::NotAllowed}, {500, ExitStatus::Failed},
        {503, ExitStatus::NoConnection}, {507, ExitStatus::NotSaved}};
    for (const auto& [status, meaning] : expected)
        EXPECT_EQ(FailureAt(status).Status(), meaning) << status;
}

TEST(ProblemTest, TheControllersOwnWordsAreTold) {
    EXPECT_EQ(FailureAt(400, R"({"detail": "name is no text", "right": "a text"})").Reason(),
              "name is no text; right: a text");
    for (const char* body : {"", "<html>", "[]", R"({"detail": 1})"})
        EXPECT_STREQ(FailureAt(404, body).what(), "the controller answers with status 404") << body;
}

TEST(ProblemTest, ThoseWhoStandInTheWayAreNamed) {
    EXPECT_EQ(
        FailureAt(409, R"({"detail": "chime.wav is used by 2 announcements", "right": "to change them first",
                            "users": [{"id": 3, "name": "Dinner"}, {"id": 1, "name": "Doorbell"}]})")
            .Reason(),
        "chime.wav is used by 2 announcements: Dinner (3), Doorbell (1); right: to change them first");
    EXPECT_EQ(FailureAt(409, R"({"detail": "x", "users": []})").Reason(), "x");
}

TEST(ProblemTest, WhereTheControllerCannotKnowItTheAdviceIsOurs) {
    EXPECT_EQ(FailureAt(429, "", "7").Right(), "to wait for 7 s");
    EXPECT_EQ(FailureAt(429).Right(), "to wait a moment");
    EXPECT_EQ(FailureAt(412, R"({"right": "x"})").Right(),
              "to look at it again, and to make the change once more");
    EXPECT_NE(FailureAt(401).Right().find("--token-file"), std::string::npos);
    EXPECT_EQ(FailureAt(403).Right(), "a token with the right for this");
}
