#include "controller/api/RehearsalTimeline.h"

#include "controller/announcements/AnnouncementXml.h"
#include "controller/driver/Log.h"
#include "controller/media/MediaName.h"
#include "framework/CmdMessage.h"
#include "framework/DriverModule.h"
#include "host/VqXML.h"
#include "rehearsal/Rehearsal.h"
#include "rehearsal/TraceSink.h"

#include <algorithm>
#include <map>
#include <optional>

namespace controller {

using view::Moment;

namespace rehearsal_timeline {
namespace {

/// How long a popup without a time of its own stands, in milliseconds.
constexpr std::uint64_t kStandingPopup = 30000;

std::string ValueOf(const CmdMessage& message, const std::string& name) {
    return message.GetParam(name);
}

/// Turns the agent's calls into what a person would see and hear of them.
class TimelineSink final : public TraceSink {
public:
    explicit TimelineSink(const Order& order) : m_order(order) {}

    [[nodiscard]] bool IsEnded() const noexcept { return m_end.has_value(); }
    [[nodiscard]] std::uint64_t End() const noexcept { return m_end.value_or(m_last); }

    /// Everything that happened, in its order.
    [[nodiscard]] std::vector<Moment> Take() {
        for (const auto& [navigator, end] : m_popupEnds) {
            Moment& hidden = m_moments.emplace_back();
            hidden.atMs = end;
            hidden.what = "popup_hidden";
            hidden.navigator = navigator;
        }
        std::stable_sort(m_moments.begin(), m_moments.end(),
                         [](const Moment& one, const Moment& other) { return one.atMs < other.atMs; });
        return std::move(m_moments);
    }

    /// From now on calls are those of the playing, and not of the agent's start or end.
    void Listen(bool isListening) noexcept { m_isListening = isListening; }

    void StepBegins(VirtualTime /*now*/, const Step& /*step*/) override { LookForEnd(); }

    void TimerFired(VirtualTime now, std::uint32_t /*timerId*/, TimerOwner owner) override {
        LookForEnd();
        if (owner == TimerOwner::Agent)
            m_poll = now.count();
    }

    void CalledBack(VirtualTime now, std::string_view operation) override {
        LookForEnd();
        if (operation != "AudioAnnouncementComplete")
            Add(now, "stream_ready");
        else if (m_order.soundTrouble.empty())
            Add(now, "sound_ended");
    }

    void Called(VirtualTime now, const HostCall& call) override {
        if (!m_isListening)
            return;
        // The poll goes on: the announcement is not over.
        if (call.operation == "VqBaseDriver.AddTimer")
            m_poll.reset();
        const auto writer = Writers().find(call.operation);
        if (writer != Writers().end())
            (this->*writer->second)(now, call.arguments);
    }

    void Replied(VirtualTime /*now*/, const std::string& /*xml*/) override {}
    void Saved(VirtualTime /*now*/, const std::string& /*xml*/) override {}
    void Answered(VirtualTime /*now*/, bool /*answer*/) override {}
    void HandlerMissing(VirtualTime now, std::string_view name) override {
        AddLog(now, Severity::Error, "the agent has no " + std::string(name));
    }
    void Thrown(VirtualTime now, std::string_view /*type*/, std::string_view text) override {
        AddLog(now, Severity::Error, "the agent failed: " + std::string(text));
    }

    /// A poll that armed no other one was the last: the agent has let go of the announcement.
    void LookForEnd() {
        if (m_poll && !m_end)
            m_end = *m_poll;
    }

private:
    using Writer = void (TimelineSink::*)(VirtualTime, const Arguments&);

    static const std::map<std::string_view, Writer>& Writers() {
        static const std::map<std::string_view, Writer> kWriters{
            {"VqBaseDriver.FireEvent", &TimelineSink::Started},
            {"IRoomProxy.SetUpAudio", &TimelineSink::RoomSetUp},
            {"IRoomProxy.RestoreAudioState", &TimelineSink::RoomRestored},
            {"IRoomProxy.SetUpVideo", &TimelineSink::ScreensWoken},
            {"IRoomProxy.RestoreVideoState", &TimelineSink::ScreensRested},
            {"IRoomProxy.SetAudioVolume", &TimelineSink::VolumeSet},
            {"IDigitalAudio.CreateStream", &TimelineSink::StreamOpened},
            {"IDigitalAudio.ReleaseStream", &TimelineSink::StreamClosed},
            {"IDigitalAudio.PlayFile", &TimelineSink::SoundStarted},
            {"IDeviceManager.SendCommandToDevice", &TimelineSink::CommandSent},
            {"ILogger.Log", &TimelineSink::Logged},
            {"VqBaseDriver.LogMessage", &TimelineSink::Logged},
        };
        return kWriters;
    }

    static bool IsIn(const std::vector<std::uint32_t>& ids, std::int64_t id) {
        return std::find(ids.begin(), ids.end(), id) != ids.end();
    }

    static std::int64_t Number(const Arguments& arguments, std::size_t index) {
        return std::get<std::int64_t>(arguments[index]);
    }

    void Started(VirtualTime now, const Arguments& arguments) {
        Add(now, "started").announcement = Number(arguments, 0);
        for (const Announcement::Room& room : m_order.announcement.rooms) {
            if (!IsIn(m_order.rooms, room.id))
                Add(now, "room_missing").room = room.id;
        }
    }
    void RoomSetUp(VirtualTime now, const Arguments& arguments) {
        Add(now, "room_set_up").room = Number(arguments, 0);
    }
    void RoomRestored(VirtualTime now, const Arguments& arguments) {
        Add(now, "room_restored").room = Number(arguments, 0);
    }
    void ScreensWoken(VirtualTime now, const Arguments& arguments) {
        Add(now, "screens_woken").room = Number(arguments, 0);
    }
    void ScreensRested(VirtualTime now, const Arguments& arguments) {
        Add(now, "screens_rested").room = Number(arguments, 0);
    }
    void VolumeSet(VirtualTime now, const Arguments& arguments) {
        Moment& moment = Add(now, "volume_set");
        moment.room = Number(arguments, 0);
        moment.volume = Number(arguments, 1);
    }
    void StreamOpened(VirtualTime now, const Arguments& /*arguments*/) { Add(now, "stream_opened"); }
    void StreamClosed(VirtualTime now, const Arguments& /*arguments*/) { Add(now, "stream_closed"); }

    void SoundStarted(VirtualTime now, const Arguments& arguments) {
        const bool isHeard = m_order.soundTrouble.empty();
        Moment& moment = Add(now, isHeard ? "sound_started" : "sound_missing");
        moment.file = media_name::SoundOf(std::get<std::string_view>(arguments[0]));
        if (!isHeard)
            moment.text = m_order.soundTrouble;
    }

    void CommandSent(VirtualTime now, const Arguments& arguments) {
        const auto* const message = std::get<const CmdMessage*>(arguments[1]);
        if (message == nullptr)
            return;
        const bool isThere = IsIn(m_order.navigators, Number(arguments, 0));
        if (message->GetName() == "HIDE_POPUP" && isThere) {
            m_popupEnds.erase(Number(arguments, 0));
            Add(now, "popup_hidden").navigator = Number(arguments, 0);
        }
        if (message->GetName() != "SHOW_POPUP")
            return;
        if (isThere)
            PopupShown(now, Number(arguments, 0), *message);
        else
            Add(now, "screen_missing").navigator = Number(arguments, 0);
    }

    void PopupShown(VirtualTime now, std::int64_t navigator, const CmdMessage& message) {
        const std::uint64_t duration = message.GetParamAsULong("DELAY");
        // The screens keep the time of a popup themselves: the agent says no word at its end.
        m_popupEnds[navigator] = now.count() + (duration != 0 ? duration : kStandingPopup);
        Moment& shown = Add(now, "popup_shown");
        shown.navigator = navigator;
        for (const auto& parameter : message.GetParameters()) {
            if (parameter.name == "MESSAGE" && parameter.isVariable)
                shown.variable = view::FollowedVariable{parameter.deviceId, parameter.variableId};
            else if (parameter.name == "MESSAGE")
                shown.message = parameter.value;
        }
        shown.image = ValueOf(message, "IMGURL");
        shown.durationMs = duration;
        shown.hasOkButton = ValueOf(message, "SHOWOK") == "true";
    }

    void Logged(VirtualTime now, const Arguments& arguments) {
        const auto level = Number(arguments, 0) <= 3 ? Severity::Error : Severity::Information;
        AddLog(now, level, std::string(std::get<std::string_view>(arguments[1])));
    }

    void AddLog(VirtualTime now, Severity level, std::string text) {
        Moment& moment = Add(now, "log");
        moment.level = SeverityName(level);
        moment.text = std::move(text);
    }

    /// The moment, to be filled; one that is not listed when nobody listens, or there are enough.
    Moment& Add(VirtualTime now, const char* what) {
        if (!m_isListening || m_moments.size() >= kMaxEntries)
            return m_unlisted = Moment();
        m_last = now.count();
        Moment& moment = m_moments.emplace_back();
        moment.atMs = now.count();
        moment.what = what;
        return moment;
    }

    const Order& m_order;
    std::vector<Moment> m_moments;
    Moment m_unlisted;
    std::map<std::int64_t, std::uint64_t> m_popupEnds; ///< by navigator, of those that nobody has hidden
    bool m_isListening = false;
    std::uint64_t m_last = 0;
    std::optional<std::uint64_t> m_poll; ///< the last poll, while it has armed no other one
    std::optional<std::uint64_t> m_end;
};

void DoStep(Rehearsal& rehearsal, const Step& step) {
    rehearsal.Judge(step);
    rehearsal.Do(step);
}

Step InitializeStep(const Order& order) {
    Step step = Step::Plain(StepKind::Initialize);
    step.state = "<announcements>" + announcement_xml::ToXml(order.announcement) + "</announcements>";
    step.savedState = VqXML::CreateXmlDocument(*step.state);
    return step;
}

} // namespace

view::Rehearsal Run(const std::string& moduleFile, const Order& order) {
    const DriverModule module(moduleFile);
    TimelineSink sink(order);
    Rehearsal rehearsal([&module](IInstanceManager& instances) { return module.Create(instances); }, sink,
                        false);
    Step host = Step::Plain(StepKind::Host);
    host.host.streamReadyAfter = std::optional(VirtualTime(order.streamReadyMs));
    host.host.rooms = std::optional(order.rooms);
    host.host.playDoneAfter = std::optional(VirtualTime(order.soundMs));
    DoStep(rehearsal, host);
    DoStep(rehearsal, Step::Plain(StepKind::Create));
    DoStep(rehearsal, InitializeStep(order));
    DoStep(rehearsal, Step::Plain(StepKind::Register));
    sink.Listen(true);
    Step play = Step::Plain(StepKind::Command);
    play.name = "execute_announcement";
    play.params = {{"id", std::to_string(order.announcement.id)}};
    DoStep(rehearsal, play);
    Step second = Step::Plain(StepKind::Advance);
    second.duration = VirtualTime(1000);
    for (std::uint64_t passed = 0; passed < kLongest && !sink.IsEnded(); passed += 1000) {
        DoStep(rehearsal, second);
        sink.LookForEnd();
    }
    sink.Listen(false);
    view::Rehearsal rehearsed{order.announcement.id, sink.End(), sink.IsEnded(), sink.Take()};
    if (sink.IsEnded()) {
        Moment& ended = rehearsed.timeline.emplace_back();
        ended.atMs = sink.End();
        ended.what = "ended";
        ended.announcement = order.announcement.id;
    }
    return rehearsed;
}

} // namespace rehearsal_timeline

} // namespace controller
