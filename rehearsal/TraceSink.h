#pragma once

#include "rehearsal/VirtualTime.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

class CmdMessage;
struct Step;

/// One argument of a call: a number, a text, or the message of `SendCommandToDevice` (null when it is no
/// message of this framework).
using Argument = std::variant<std::int64_t, std::string_view, const CmdMessage*>;

/// The arguments of one call, in their order.
class Arguments {
public:
    static constexpr std::size_t kMost = 4;

    template <class... Values>
    explicit Arguments(const Values&... values) : m_values{Argument(values)...}
                                                , m_size(sizeof...(values)) {
        static_assert(sizeof...(values) <= kMost, "no operation of the host takes more arguments");
    }

    [[nodiscard]] const Argument* begin() const noexcept { return m_values.data(); }
    [[nodiscard]] const Argument* end() const noexcept { return m_values.data() + m_size; }
    [[nodiscard]] std::size_t size() const noexcept { return m_size; }
    [[nodiscard]] const Argument& operator[](std::size_t index) const { return m_values[index]; }

private:
    std::array<Argument, kMost> m_values;
    std::size_t m_size;
};

/// What a call gave back, where the trace shows it: a timer's id, or whether a look-up found something.
using Returned = std::variant<std::monostate, std::uint32_t, bool>;

/// A call of the agent on its host. The texts are borrowed for the event.
struct HostCall {
    std::string_view operation; ///< "Interface.Operation"
    Arguments arguments;
    Returned returned = {};
};

/// Whose timer fired: one armed with the driver's own `AddTimer`, or one of the timer manager's.
enum class TimerOwner { Agent, Announcement };

/// Thrown by a sink that cannot or will not take any more: it ends the run and leaves `RunScenario`. A sink
/// that has thrown it throws it again at the next event, since destructors on the way drop what they meet.
class TraceError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Receives what happens in a run, event by event, each with the virtual time at which it happens. Texts are
/// UTF-8 and borrowed for the event, as everything else is.
///
/// `Called` may throw anything: to the agent it is its host that throws. A call that would put something up
/// (arm a timer, publish an interface) has then put nothing up; one that takes something away has taken it
/// away, but an id handed to `KillTimer` stays. From the other events only `TraceError` may come.
class TraceSink {
public:
    virtual ~TraceSink() = default;

    /// A step begins, of the scenario or of a reaction; what follows, up to the next step, comes of it.
    virtual void StepBegins(VirtualTime now, const Step& step) = 0;
    /// The agent calls its host.
    virtual void Called(VirtualTime now, const HostCall& call) = 0;
    /// A timer fires; what follows comes of it.
    virtual void TimerFired(VirtualTime now, std::uint32_t timerId, TimerOwner owner) = 0;
    /// The host answers by itself, through this operation of `IAnnouncementAgent`.
    virtual void CalledBack(VirtualTime now, std::string_view operation) = 0;
    /// What a request returned, and what a save returned, as XML text. Not called when it was nothing.
    virtual void Replied(VirtualTime now, const std::string& xml) = 0;
    virtual void Saved(VirtualTime now, const std::string& xml) = 0;
    /// Whether a room belongs to the announcement that is playing.
    virtual void Answered(VirtualTime now, bool answer) = 0;
    /// Nobody has registered this command or request, or no face is published that offers this operation.
    virtual void HandlerMissing(VirtualTime now, std::string_view name) = 0;
    /// An exception has left the agent: "const char*", "std::string", or "other", which has no text.
    virtual void Thrown(VirtualTime now, std::string_view type, std::string_view text) = 0;

    /// The host does something from inside this call, which has taken effect. Its steps follow, up to the
    /// `GoesOn` with which the call returns, or up to a step that throws out of it. Others may stand between.
    virtual void ReactionBegins(VirtualTime /*now*/, std::string_view /*operation*/) {}
    virtual void GoesOn(VirtualTime /*now*/, std::string_view /*operation*/) {}

    /// The run may now have to wait for more of its scenario: whoever reads along should see what there is.
    virtual void Flush() {}
};
