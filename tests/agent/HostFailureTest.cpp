#include "tests/support/AgentTest.h"

#include <vector>

namespace {

std::string Full(const std::string& id) {
    return "<announcement><id>" + id +
           "</id><name>Dinner</name><audio><file>chime</file><delay>500</delay></audio><video><file>d.png</"
           "file>"
           "<text>Hi</text><delay>100</delay><timeout>5000</timeout><displayID>0</displayID><variableID>0"
           "</variableID><variableName/><OKButton>true</OKButton></video><rooms><room><id>12</id><volume>40</"
           "volume>"
           "</room><room><id>13</id><volume>20</volume></room></rooms><navigators><navigator><id>5</"
           "id><room_id>12"
           "</room_id><onscreen>true</onscreen></navigator><navigator><id>6</id><room_id>13</"
           "room_id><onscreen>"
           "false</onscreen></navigator></navigators></announcement>";
}

const std::string kPopup = "SHOW_POPUP MESSAGE:STRING=Hi IMGURL:STRING=d.png DELAY:NUMBER=5000 "
                           "SHOWOK:BOOLEAN=true SIZE:NUMBER=0, 0, 0)";

/// A whole play at a host that makes the stream in 200 ms and plays for 1500 ms, without timer ids and polls.
Lines FullPlay(const std::string& id) {
    return {"VqBaseDriver.FireEvent(" + id + ")",
            "ILogger.Log(6, Executing announcement )",
            "ILogger.Log(6, Dinner)",
            "IDigitalAudio.CreateStream()",
            "ITimerManager.AddTimer(3, 2)",
            "ILogger.Log(6, Announcement setting up video)",
            "IRoomProxy.SetUpVideo(12)",
            "IRoomProxy.SetUpVideo(13)",
            "ITimerManager.AddTimer(100, 1)",
            "timer",
            "ILogger.Log(6, Announcement displaying video)",
            "IDeviceManager.SendCommandToDevice(5, " + kPopup,
            "IDeviceManager.SendCommandToDevice(6, " + kPopup,
            "ITimerManager.AddTimer(5000, 1)",
            "AudioStreamCreated",
            "ITimerManager.KillTimer",
            "IRoomProxy.SetUpAudio(12)",
            "IRoomProxy.SetUpAudio(13)",
            "ITimerManager.AddTimer(500, 1)",
            "timer",
            "IRoomProxy.SetAudioVolume(12, 40)",
            "IRoomProxy.SetAudioVolume(13, 20)",
            "ILogger.Log(6, Announcement playing audio)",
            "IDigitalAudio.PlayFile(/media/announcements/chime.wav)",
            "ITimerManager.AddTimer(20, 2)",
            "AudioAnnouncementComplete",
            "ILogger.Log(6, Announcement audio complete - Delaying to ensure that the client has finished.)",
            "ITimerManager.KillTimer",
            "ITimerManager.AddTimer(2, 2)",
            "timer",
            "ILogger.Log(6, Announcement restoring audio)",
            "IRoomProxy.RestoreAudioState(12)",
            "IRoomProxy.RestoreAudioState(13)",
            "IDigitalAudio.ReleaseStream()",
            "timer",
            "ILogger.Log(6, Announcement restoring video)",
            "IRoomProxy.RestoreVideoState(12)",
            "IRoomProxy.RestoreVideoState(13)"};
}

/// The calls without polls, which surplus ones may mix with, and without timer ids.
Lines WithoutTimerIds(const Lines& lines) {
    Lines kept;
    for (const std::string& line : lines) {
        if (line.find("poll") == 0 || line.find("VqBaseDriver.AddTimer") == 0)
            continue;
        if (line.find("timer ") == 0)
            kept.emplace_back("timer");
        else if (line.find("ITimerManager.KillTimer") == 0)
            kept.emplace_back("ITimerManager.KillTimer");
        else
            kept.push_back(line.substr(0, line.find(" = ")));
    }
    return kept;
}

constexpr std::uint64_t kUntilAllIsOver = 100000;

/// A host of which one call after another throws a `std::string`, look-ups included.
class HostFailureTest : public AgentTest {
protected:
    HostFailureTest() {
        m_host.audio.streamReadyAfter = 200;
        m_host.audio.playDoneAfter = 1500;
    }

    /// Goes into the agent as a host does, which stops there what comes out.
    template <class Action>
    static void Try(Action action) {
        try {
            action();
        } catch (const std::string&) { // NOLINT(bugprone-empty-catch)
            // Which call fails is the test's own doing.
        }
    }

    /// Does `scenario` with the first, the second, … call failing, until it makes no more calls; the agent
    /// must be usable after each. Gives the number of calls that failed.
    template <class Prepare, class Scenario>
    std::size_t FailEachCall(Prepare prepare, Scenario scenario) {
        for (std::size_t n = 1;; ++n) {
            SCOPED_TRACE("call " + std::to_string(n) + " fails");
            prepare();
            m_host.log.ThrowAtCall(n);
            scenario();
            const bool isBeyondTheLast = m_host.log.WillThrow();
            m_host.log.ThrowAtCall(0);
            ExpectUsable();
            if (isBeyondTheLast || HasFailure())
                return n - 1;
        }
    }
    template <class Scenario>
    std::size_t FailEachCall(Scenario scenario) {
        return FailEachCall([this] { Start(Stored(Full("1") + Full("2"))); }, scenario);
    }

    void ExpectUsable() {
        // When a poll could not be armed, its announcement stays current, and id 0 goes on from there.
        Execute("0");
        m_host.Advance(kUntilAllIsOver);
        EXPECT_EQ(m_host.timers.AnnouncementTimerCount(), 0U);

        const std::string reply = Request("add_announcement", {{"announcement", Full("0")}});
        ASSERT_EQ(reply.find("<success>"), 0U) << reply;
        const std::string id = std::to_string(std::stoul(reply.substr(std::string("<success>").size())));
        EXPECT_EQ(Request("get_announcement", {{"id", id}}), Full(id));
        EXPECT_EQ(WithoutTimerIds(CallsOf([&] {
                      Execute(id);
                      m_host.Advance(kUntilAllIsOver);
                  })),
                  FullPlay(id));

        const std::string saved = Saved();
        EXPECT_EQ(Request("get_announcements"), saved);
        Start(saved);
        EXPECT_EQ(Saved(), saved);
    }
};

TEST_F(HostFailureTest, AFullPlayOfTwoQueuedAnnouncementsAndADismissalIsSurvived) {
    const std::size_t calls = FailEachCall([this] {
        Try([this] { Execute("1"); });
        Try([this] { Execute("2"); });
        m_host.Advance(9000); // the second one plays and shows its popup
        Try([this] { Command("ANNOUNCEMENT_DISMISSED"); });
        m_host.Advance(kUntilAllIsOver);
    });
    EXPECT_GT(calls, 2 * FullPlay("1").size());
}

TEST_F(HostFailureTest, ExecutingAgainIsSurvived) {
    const std::size_t calls = FailEachCall([this] {
        Try([this] { Execute("1"); });
        m_host.Advance(900);
        Try([this] { Execute("0"); });
        m_host.Advance(kUntilAllIsOver);
    });
    EXPECT_GT(calls, FullPlay("1").size());
}

TEST_F(HostFailureTest, CallbacksThatNobodyAskedForAreSurvived) {
    const std::size_t calls = FailEachCall([this] {
        Try([this] { Execute("1"); });
        Try([this] { m_host.Face()->AudioAnnouncementComplete(); });
        Try([this] { m_host.Face()->AudioStreamCreated(); });
        Try([this] { m_host.Face()->AudioStreamCreated(); });
        m_host.Advance(kUntilAllIsOver);
    });
    EXPECT_GT(calls, FullPlay("1").size());
}

struct RequestCase {
    const char* request;
    std::map<std::string, std::string> parameters;
    std::size_t calls; ///< look-ups of services included
};

std::vector<RequestCase> EveryRequest() {
    const std::map<std::string, std::string> room{
        {"id", "1"}, {"room", "<room><id>14</id><volume>1</volume></room>"}, {"room_id", "12"}};
    const std::map<std::string, std::string> navigator{
        {"id", "1"}, {"navigator", "<n><id>7</id></n>"}, {"navigator_id", "5"}};
    return {{"add_announcement", {{"announcement", Full("0")}}, 8},
            {"add_announcement", {{"announcement", "<a/>"}}, 7},
            {"remove_announcement", {{"id", "1"}}, 1},
            {"modify_announcement", {{"announcement", Full("2")}}, 12},
            {"modify_announcement", {{"announcement", "<a><id>2</id></a>"}}, 10},
            {"modify_announcement", {{"announcement", Full("9")}}, 8},
            {"add_room", room, 3},
            {"modify_room", room, 2},
            {"remove_room", room, 1},
            {"add_navigator", navigator, 2},
            {"remove_navigator", navigator, 1},
            {"get_announcements", {}, 0},
            {"get_announcement", {{"id", "1"}}, 0}};
}

TEST_F(HostFailureTest, EveryRequestIsSurvived) {
    for (const RequestCase& each : EveryRequest()) {
        SCOPED_TRACE(each.request);
        const auto request = [&] {
            Request(each.request, each.parameters);
        };
        EXPECT_EQ(FailEachCall([&] { Try(request); }), each.calls);
    }
}

TEST_F(HostFailureTest, AModificationThatFailsForItsTextIsSurvived) {
    const std::size_t calls = FailEachCall([this] {
        int asked = 0;
        const TestMessage message("modify_announcement",
                                  [&](const std::string&) { return ++asked == 1 ? Full("1") : "no XML"; });
        Try([&] { Request(message); });
    });
    // The helper, the temporary's look-ups, the error, the invalidation, the temporary's timers, the agent's
    // own line.
    EXPECT_EQ(calls, 1U + 6U + 2U + 1U + 1U + 1U);
}

TEST_F(HostFailureTest, InitializingIsSurvived) {
    const std::size_t calls =
        FailEachCall([this] { Start(""); },
                     [this] { Try([this] { Load(Stored(Full("1") + "<announcement/>" + Full("3"))); }); });
    EXPECT_EQ(calls, 7U + 6U + 7U);
}

TEST_F(HostFailureTest, RegisteringIsMendedByRegisteringAgain) {
    const std::size_t calls = FailEachCall([this] { Start(""); },
                                           [this] {
                                               Try([this] { m_agent->RegisterCommands(); });
                                               if (!m_host.log.WillThrow())
                                                   m_agent->RegisterCommands();
                                           });
    EXPECT_EQ(calls, 12U);
}

TEST_F(HostFailureTest, DestroyingInMidPlayIsSurvived) {
    const std::size_t calls = FailEachCall(
        [this] {
            Start(Stored(Full("1") + Full("2")));
            Execute("1");
            m_host.Advance(800);
            Request("remove_announcement", {{"id", "1"}});
        },
        [this] {
            m_agent.reset();
            EXPECT_EQ(m_host.Face(), nullptr);
            m_host.timers.DropAnswers(); // the host's stream ends with the agent
            const bool willThrow = m_host.log.WillThrow();
            m_host.log.ThrowAtCall(0);
            Start("");
            if (willThrow)
                m_host.log.ThrowAtCall(1000000);
        });
    EXPECT_EQ(calls, 3U); // the stored one's timers, the face, the playing one's timers
}

} // namespace
