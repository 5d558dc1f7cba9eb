#include "tests/rehearsal/ReactionSupport.h"

#include <gtest/gtest.h>

namespace {

/// A call that the host can react to, and a command with which the probe makes it, as the last or the first.
struct ReactionCall {
    const char* call;
    std::string command;
};

void PrintTo(const ReactionCall& made, std::ostream* output) {
    *output << made.call;
}

class ReactionCallTest : public testing::TestWithParam<ReactionCall> {
protected:
    /// The lines from the call on, until another call, or the end of it all, follows.
    static Lines FromCallOn(const std::string& steps) {
        Lines lines = Reacted(On(GetParam().call, steps) + GetParam().command);
        const std::string call = std::string(R"({"t":0,"call":")") + GetParam().call + "\"";
        auto begin = std::find_if(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.compare(0, call.size(), call) == 0;
        });
        if (begin == lines.end())
            return {"not called"};
        ++begin;
        return {begin, std::find_if(begin, lines.end(), [](const std::string& line) {
                    return line.find(R"("call":)") != std::string::npos;
                })};
    }
};

TEST_P(ReactionCallTest, TheHostActsInsideAndTheCallReturns) {
    EXPECT_EQ(FromCallOn(kAsk + "," + kOther),
              (Lines{kAskLine, kYes, kOtherLine, kNo,
                     std::string(R"({"t":0,"goes_on":")") + GetParam().call + "\"}"}));
}

TEST_P(ReactionCallTest, TheCallThrowsInsteadOfReturning) {
    EXPECT_EQ(FromCallOn(kAsk + "," + kThrow), (Lines{kAskLine, kYes, kThrowLine, kThrownLine}));
}

TEST_P(ReactionCallTest, ACharacterPointerIsThrownAsSuch) {
    EXPECT_EQ(FromCallOn(R"({"do":"throw","type":"const char*","text":"no"})"),
              (Lines{R"({"t":0,"step":{"do":"throw","type":"const char*","text":"no"}})",
                     R"({"t":0,"thrown":"const char*","text":"no"})"}));
}

TEST_P(ReactionCallTest, AnythingElseIsThrownWithoutATextThatIsSeen) {
    EXPECT_EQ(FromCallOn(R"({"do":"throw","type":"other","text":"no"})"),
              (Lines{R"({"t":0,"step":{"do":"throw","type":"other","text":"no"}})",
                     R"({"t":0,"thrown":"other","text":""})"}));
}

INSTANTIATE_TEST_SUITE_P(
    EveryCallOfTheList,
    ReactionCallTest,
    testing::Values(ReactionCall{"VqBaseDriver.AddTimer", Command("arm", R"({"ms":"5"})")},
                    ReactionCall{"VqBaseDriver.FireEvent", Command("own")},
                    ReactionCall{"VqBaseDriver.LogMessage", "{\"do\":\"stream_ready\"}\n"},
                    ReactionCall{"VqBaseDriver.DmInvalidateState", Command("own")},
                    ReactionCall{"ITimerManager.AddTimer", Command("arm_managed", R"({"ms":"5"})")},
                    ReactionCall{"ITimerManager.KillTimer", Command("kill", R"({"id":"7"})")},
                    ReactionCall{"IDeviceManager.SendCommandToDevice", Command("send")},
                    ReactionCall{"IDeviceManager.InvalidateDeviceState", Command("own")},
                    ReactionCall{"IRoomProxy.SetUpAudio", Command("room")},
                    ReactionCall{"IRoomProxy.SetAudioVolume", Command("room")},
                    ReactionCall{"IRoomProxy.RestoreAudioState", Command("room")},
                    ReactionCall{"IRoomProxy.SetUpVideo", Command("room")},
                    ReactionCall{"IRoomProxy.RestoreVideoState", Command("room")},
                    ReactionCall{"IDigitalAudio.CreateStream", Command("audio")},
                    ReactionCall{"IDigitalAudio.ReleaseStream", Command("audio", R"({"release":"yes"})")},
                    ReactionCall{"IDigitalAudio.PlayFile", Command("audio", R"({"play":"a.wav"})")},
                    ReactionCall{"ILogger.Log", kLog}));

} // namespace
