#pragma once

#include "rehearsal/Reactions.h"
#include "rehearsal/Schedule.h"
#include "rehearsal/TraceSink.h"

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

/// The way of all events to the sink: gives each the virtual time, and is where exceptions of the agent end.
class Trace {
public:
    /// All are borrowed for life. With `showLookUps` the agent's look-ups are calls as any other.
    Trace(const Schedule& schedule, Reactions& reactions, TraceSink& sink, bool showLookUps)
        : m_schedule(schedule)
        , m_reactions(reactions)
        , m_sink(&sink)
        , m_showLookUps(showLookUps) {}

    /// From now on nothing reaches the sink, and nobody reacts: what is left is torn down unseen.
    void Mute() noexcept { m_sink = nullptr; }

    /// A call that has taken effect, or has none: the host reacts to it.
    template <class... Values>
    void Call(std::string_view operation, const Values&... values) {
        CallBegins(operation, values...);
        React(operation);
    }
    /// A call that takes effect behind its line; `React` follows then.
    template <class... Values>
    void CallBegins(std::string_view operation, const Values&... values) {
        Send({operation, Arguments(ToArgument(values)...)});
    }
    template <class... Values>
    void CallReturning(Returned returned, std::string_view operation, const Values&... values) {
        Send({operation, Arguments(ToArgument(values)...), returned});
    }
    /// The host does what the scenario has set for this call, and may throw anything.
    void React(std::string_view operation) {
        if (!m_reactions.IsEmpty() && m_sink != nullptr)
            m_reactions.HappenAt(operation, *this);
    }
    /// A look-up that found something, or did not.
    template <class... Values>
    void LookUp(bool found, std::string_view operation, const Values&... values) {
        if (m_showLookUps)
            CallReturning(found, operation, values...);
    }

    /// Hands any other event to the sink: `Tell(&TraceSink::Answered, true)`.
    template <class... Parameters, class... Values>
    void Tell(void (TraceSink::*event)(VirtualTime, Parameters...), const Values&... values) {
        if (m_sink != nullptr)
            (m_sink->*event)(m_schedule.Now(), values...);
    }

    /// Goes into the agent: an exception that leaves it becomes an event. `TraceError`, which only passed
    /// through it, goes on.
    template <class Entry>
    void Enter(const Entry& entry) {
        try {
            entry();
        } catch (const TraceError&) {
            throw;
        } catch (const char* text) {
            Tell(&TraceSink::Thrown, "const char*", text == nullptr ? "" : text);
        } catch (const std::string& text) {
            Tell(&TraceSink::Thrown, "std::string", text);
        } catch (...) {
            Tell(&TraceSink::Thrown, "other", "");
        }
    }

private:
    template <class Value>
    static Argument ToArgument(const Value& value) {
        if constexpr (std::is_arithmetic_v<Value> || std::is_enum_v<Value>)
            return static_cast<std::int64_t>(value);
        else if constexpr (std::is_convertible_v<const Value&, const CmdMessage*>)
            return static_cast<const CmdMessage*>(value);
        else
            return std::string_view(value);
    }

    void Send(const HostCall& call) {
        if (m_sink != nullptr)
            m_sink->Called(m_schedule.Now(), call);
    }

    const Schedule& m_schedule;
    Reactions& m_reactions;
    TraceSink* m_sink;
    bool m_showLookUps;
};
