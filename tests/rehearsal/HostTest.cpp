#include "host/IDeviceManager.h"
#include "host/ILogger.h"
#include "host/IRoomProxy.h"
#include "host/ITimerManager.h"
#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

namespace {

/// The lines that are no steps.
Lines Events(const std::string& scenario, bool showLookUps = false) {
    Lines events;
    for (const std::string& line : Played(scenario, showLookUps))
        if (line.find(R"(,"step":)") == std::string::npos)
            events.push_back(line);
    return events;
}

TEST(HostTest, EveryRoomOperationNamesItsRoomAndTheVolumeIsUnsigned) {
    EXPECT_EQ(Events(Command("room", R"({"id":"4294967295"})")),
              (Lines{R"({"t":0,"call":"IRoomProxy.SetUpAudio","args":[4294967295]})",
                     R"({"t":0,"call":"IRoomProxy.SetAudioVolume","args":[4294967295,4294967295]})",
                     R"({"t":0,"call":"IRoomProxy.RestoreAudioState","args":[4294967295]})",
                     R"({"t":0,"call":"IRoomProxy.SetUpVideo","args":[4294967295]})",
                     R"({"t":0,"call":"IRoomProxy.RestoreVideoState","args":[4294967295]})",
                     R"({"t":0,"call":"IRoomProxy.CancelRestoringState","args":[4294967295]})"}));
}

TEST(HostTest, OnlyListedRoomsHaveAnInterface) {
    const Lines none{R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[3,"no room"]})"};
    EXPECT_EQ(Events(R"({"do":"host","rooms":[]})"
                     "\n" +
                     Command("room", R"({"id":"7"})")),
              none);
    EXPECT_EQ(Events(R"({"do":"host","rooms":[9,8]})"
                     "\n" +
                     Command("room", R"({"id":"7"})")),
              none);
    EXPECT_EQ(Events(R"({"do":"host","rooms":[9,7,8]})"
                     "\n" +
                     Command("room", R"({"id":"7"})"))
                  .size(),
              6U);
    EXPECT_EQ(Events(R"({"do":"host","rooms":[]})"
                     "\n"
                     R"({"do":"host","rooms":null})"
                     "\n" +
                     Command("room", R"({"id":"7"})"))
                  .size(),
              6U);
}

TEST(HostTest, DriverServicesAreTraced) {
    EXPECT_EQ(Events(R"({"do":"host","device_id":4294967295})"
                     "\n" +
                     Command("own")),
              (Lines{R"({"t":0,"call":"VqBaseDriver.FireEvent","args":[4294967295]})",
                     R"({"t":0,"call":"VqBaseDriver.DmInvalidateState","args":[]})",
                     R"({"t":0,"call":"IDeviceManager.InvalidateDeviceState","args":[4294967295]})",
                     R"({"t":0,"call":"vq.AssertWrite","args":["Probe",17]})"}));
}

TEST(HostTest, MessagesAreTracedWithValuesAndBoundVariables) {
    EXPECT_EQ(
        Events(Command("send", R"({"name":"SHOW_POPUP","text":"a\n.png"})")),
        (Lines{
            R"({"t":0,"call":"IDeviceManager.SendCommandToDevice","args":[5,{"name":"SHOW_POPUP","params":[)"
            R"({"name":"MESSAGE","type":"STRING","device":9,"variable":4},)"
            R"({"name":"IMGURL","type":"STRING","value":"a\n.png"}]},0,0]})"}));
}

TEST(HostTest, TextsAreEscapedAsJson) {
    EXPECT_EQ(Events(Command("log", R"({"text":"ü \"x\" \\ \u0000\u001F/"})")),
              (Lines{R"({"t":0,"call":"ILogger.Log","args":[6,"ü \"x\" \\ \u0000\u001f/"]})"}));
}

TEST(HostTest, AServiceThatIsSwitchedOffIsNotFoundUntilItIsSwitchedOn) {
    EXPECT_EQ(Events(R"({"do":"host","digital_audio":false,"logger":false})"
                     "\n" +
                     Command("audio") + Command("log") +
                     R"({"do":"host","digital_audio":true})"
                     "\n" +
                     Command("audio") + Command("log")),
              (Lines{R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[3,"no digital audio"]})",
                     R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[3,"no logger"]})",
                     R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})",
                     R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[3,"no logger"]})"}));
}

TEST(HostTest, AServiceThatWasFoundBeforeGoesOnWorking) {
    EXPECT_EQ(Events(Command("hold") +
                     R"({"do":"host","digital_audio":false,"play_ms":5})"
                     "\n" +
                     Command("audio", R"({"play":"a.wav"})") + R"({"do":"advance","ms":5})"),
              (Lines{R"({"t":0,"call":"IDigitalAudio.PlayFile","args":["a.wav"]})",
                     R"({"t":5,"callback":"AudioAnnouncementComplete"})",
                     R"({"t":5,"call":"VqBaseDriver.LogMessage","args":[6,"announcement complete"]})"}));
}

TEST(HostTest, LookUpsShowWhatTheyFindAndNeverTheFrameworksOwn) {
    const std::string room = std::string(R"(","guid":")") + IRoomProxy::kGuid + R"("})";
    const Lines events =
        Events(R"({"do":"host","rooms":[7],"timer_manager":false})"
               "\n" +
                   Command("find", std::string(R"({"guid":")") + ITimerManager::kGuid + R"("})") +
                   Command("find", R"({"guid":"{unknown}"})") + Command("find", R"({"device":"7)" + room) +
                   Command("find", R"({"device":"8)" + room) +
                   Command("find", R"({"device":"7","guid":"{unknown}"})"),
               true);
    const std::string devices =
        R"({"t":0,"call":"IInstanceManager.QueryInterface","args":["{731E9F66-23F5-4100-AA7B-C3F189BAABFD}"],"returns":true})";
    EXPECT_EQ(
        events,
        (Lines{
            R"({"t":0,"call":"IInstanceManager.QueryInterface","args":["{6AF43241-ECD9-4DFF-9F14-3E7194FFE2D4}"],"returns":false})",
            R"({"t":0,"call":"IInstanceManager.QueryInterface","args":["{unknown}"],"returns":false})",
            devices,
            R"({"t":0,"call":"IDeviceManager.GetDeviceInterface","args":[7,"{258A9CD0-5596-4c89-BBD4-C7489BA8494B}"],"returns":true})",
            devices,
            R"({"t":0,"call":"IDeviceManager.GetDeviceInterface","args":[8,"{258A9CD0-5596-4c89-BBD4-C7489BA8494B}"],"returns":false})",
            devices,
            R"({"t":0,"call":"IDeviceManager.GetDeviceInterface","args":[7,"{unknown}"],"returns":false})"}));
    const Outcome run = RunText(R"({"do":"create"})", true);
    EXPECT_EQ(run.trace[0], R"({"t":0,"step":{"do":"create"}})");
    EXPECT_EQ(run.trace[1].find("QueryInterface"), std::string::npos);
}

TEST(HostTest, WithoutLookUpsNoneIsShown) {
    EXPECT_EQ(Events(Command("find", std::string(R"({"guid":")") + ILogger::kGuid + R"("})")), Lines{});
}

// The host's own answers.

TEST(HostTest, EveryCreateStreamAndPlayFileGetsAnAnswerOfItsOwnAfterTheTimeSetWhenItWasCalled) {
    EXPECT_EQ(Events(R"({"do":"host","stream_ready_ms":10,"play_ms":20})"
                     "\n" +
                     Command("audio") + Command("audio", R"({"play":"a.wav"})") +
                     R"({"do":"host","stream_ready_ms":null,"play_ms":5})"
                     "\n" +
                     Command("audio") + Command("audio", R"({"play":"b.wav"})") +
                     R"({"do":"advance","ms":20})"),
              (Lines{R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})",
                     R"({"t":0,"call":"IDigitalAudio.PlayFile","args":["a.wav"]})",
                     R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})",
                     R"({"t":0,"call":"IDigitalAudio.PlayFile","args":["b.wav"]})",
                     R"({"t":5,"callback":"AudioAnnouncementComplete"})",
                     R"({"t":5,"call":"VqBaseDriver.LogMessage","args":[6,"announcement complete"]})",
                     R"({"t":10,"callback":"AudioStreamCreated"})",
                     R"({"t":10,"call":"VqBaseDriver.LogMessage","args":[6,"stream created"]})",
                     R"({"t":20,"callback":"AudioAnnouncementComplete"})",
                     R"({"t":20,"call":"VqBaseDriver.LogMessage","args":[6,"announcement complete"]})"}));
}

TEST(HostTest, ReleaseStreamDropsAllAnswersThatAreStillToCome) {
    EXPECT_EQ(Events(R"({"do":"host","stream_ready_ms":10,"play_ms":20})"
                     "\n" +
                     Command("audio") + Command("audio", R"({"play":"a.wav"})") +
                     Command("audio", R"({"release":"yes"})") + Command("audio") +
                     R"({"do":"advance","ms":50})"),
              (Lines{R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})",
                     R"({"t":0,"call":"IDigitalAudio.PlayFile","args":["a.wav"]})",
                     R"({"t":0,"call":"IDigitalAudio.ReleaseStream","args":[]})",
                     R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})",
                     R"({"t":10,"callback":"AudioStreamCreated"})",
                     R"({"t":10,"call":"VqBaseDriver.LogMessage","args":[6,"stream created"]})"}));
}

TEST(HostTest, AnswersAndTimersOfOneMomentComeInTheOrderOfTheirArming) {
    EXPECT_EQ(Events(R"({"do":"host","stream_ready_ms":10,"play_ms":10})"
                     "\n" +
                     Command("arm", R"({"ms":"10"})") + Command("audio") +
                     Command("arm_managed", R"({"ms":"10"})") + Command("audio", R"({"play":"a.wav"})") +
                     R"({"do":"advance","ms":10})"),
              (Lines{R"({"t":0,"call":"VqBaseDriver.AddTimer","args":[10,1],"returns":1})",
                     R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})",
                     R"({"t":0,"call":"ITimerManager.AddTimer","args":[10,1],"returns":2})",
                     R"({"t":0,"call":"IDigitalAudio.PlayFile","args":["a.wav"]})",
                     R"({"t":10,"timer":1,"of":"agent"})", R"({"t":10,"callback":"AudioStreamCreated"})",
                     R"({"t":10,"call":"VqBaseDriver.LogMessage","args":[6,"stream created"]})",
                     R"({"t":10,"timer":2,"of":"announcement"})",
                     R"({"t":10,"callback":"AudioAnnouncementComplete"})",
                     R"({"t":10,"call":"VqBaseDriver.LogMessage","args":[6,"announcement complete"]})"}));
}

TEST(HostTest, AnAnswerWithoutAFaceHasNoHandler) {
    EXPECT_EQ(
        Events(R"({"do":"host","stream_ready_ms":0,"play_ms":0})"
               "\n" +
               Command("audio") + Command("audio", R"({"play":"a.wav"})") + Command("withdraw") +
               R"({"do":"advance","ms":0})"),
        (Lines{
            R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})",
            R"({"t":0,"call":"IDigitalAudio.PlayFile","args":["a.wav"]})",
            R"({"t":0,"call":"IInstanceManager.UnregisterInterface","args":["{E869B37E-23C8-4334-9B26-0A96C0EF981C}"]})",
            R"({"t":0,"callback":"AudioStreamCreated"})", R"({"t":0,"no_handler":"AudioStreamCreated"})",
            R"({"t":0,"callback":"AudioAnnouncementComplete"})",
            R"({"t":0,"no_handler":"AudioAnnouncementComplete"})"}));
}

TEST(HostTest, AnAnswerOutlivesTheAgentAndReachesTheNextOne) {
    const Outcome run = RunText(R"({"do":"host","stream_ready_ms":10})"
                                "\n" +
                                Command("audio") +
                                R"({"do":"destroy"})"
                                "\n"
                                R"({"do":"create"})"
                                "\n"
                                R"({"do":"advance","ms":10})");
    ASSERT_EQ(run.error, "");
    ASSERT_GE(run.trace.size(), 5U);
    const Lines end(run.trace.end() - 6, run.trace.end());
    EXPECT_EQ(
        end,
        (Lines{
            R"({"t":0,"step":{"do":"advance","ms":10}})", R"({"t":10,"callback":"AudioStreamCreated"})",
            R"({"t":10,"call":"VqBaseDriver.LogMessage","args":[6,"stream created"]})",
            R"({"t":10,"step":{"do":"destroy"}})",
            R"({"t":10,"call":"ITimerManager.KillAllTimers","args":[]})",
            R"({"t":10,"call":"IInstanceManager.UnregisterInterface","args":["{E869B37E-23C8-4334-9B26-0A96C0EF981C}"]})"}));
}

TEST(HostTest, AnAnswerWhileThereIsNoAgentHasNoHandler) {
    const Outcome run = RunText(R"({"do":"host","stream_ready_ms":10})"
                                "\n" +
                                Command("audio") +
                                R"({"do":"destroy"})"
                                "\n"
                                R"({"do":"advance","ms":10})");
    ASSERT_EQ(run.error, "");
    EXPECT_EQ(
        Lines(run.trace.end() - 3, run.trace.end()),
        (Lines{R"({"t":0,"step":{"do":"advance","ms":10}})", R"({"t":10,"callback":"AudioStreamCreated"})",
               R"({"t":10,"no_handler":"AudioStreamCreated"})"}));
}

} // namespace
