#include "rehearsal/JsonTrace.h"

#include "framework/CmdMessage.h"
#include "rehearsal/JsonText.h"
#include "rehearsal/Step.h"

namespace {

void Append(std::string& out, std::int64_t number) {
    AppendNumber(out, number);
}

void Append(std::string& out, std::string_view text) {
    AppendJsonText(out, text);
}

void AppendParameter(std::string& out, const CmdMessage::Parameter& parameter) {
    out.append(R"({"name":)");
    AppendJsonText(out, parameter.name);
    out.append(R"(,"type":)");
    AppendJsonText(out, parameter.type);
    if (parameter.isVariable) {
        out.append(R"(,"device":)");
        AppendNumber(out, parameter.deviceId);
        out.append(R"(,"variable":)");
        AppendNumber(out, parameter.variableId);
    } else {
        out.append(R"(,"value":)");
        AppendJsonText(out, parameter.value);
    }
    out.push_back('}');
}

void Append(std::string& out, const CmdMessage* message) {
    if (message == nullptr) {
        out.append("null");
        return;
    }
    out.append(R"({"name":)");
    AppendJsonText(out, message->GetName());
    out.append(R"(,"params":[)");
    const char* separator = "";
    for (const auto& parameter : message->GetParameters()) {
        out.append(separator);
        AppendParameter(out, parameter);
        separator = ",";
    }
    out.append("]}");
}

void Append(std::string& out, const Returned& returned) {
    if (const auto* const id = std::get_if<std::uint32_t>(&returned)) {
        out.append(R"(,"returns":)");
        AppendNumber(out, *id);
    } else if (const auto* const isFound = std::get_if<bool>(&returned)) {
        out.append(*isFound ? R"(,"returns":true)" : R"(,"returns":false)");
    }
}

} // namespace

void JsonTrace::Begin(VirtualTime now, std::string_view member) {
    std::string& out = m_output.Text();
    out.append(R"({"t":)");
    AppendNumber(out, now.count());
    out.append(R"(,")").append(member).append(R"(":)");
}

void JsonTrace::End() {
    m_output.Text().push_back('}');
    m_output.EndLine();
}

void JsonTrace::Line(VirtualTime now, std::string_view member, std::string_view text) {
    Begin(now, member);
    AppendJsonText(m_output.Text(), text);
    End();
}

void JsonTrace::StepBegins(VirtualTime now, const Step& step) {
    Begin(now, "step");
    m_output.Text().append(step.echo);
    End();
}

void JsonTrace::Called(VirtualTime now, const HostCall& call) {
    Begin(now, "call");
    std::string& out = m_output.Text();
    out.append(R"(")")
        .append(call.operation)
        .append(R"(","args":[)"); // our own names, with nothing to escape
    const char* separator = "";
    for (const Argument& argument : call.arguments) {
        out.append(separator);
        std::visit([&](const auto& value) { Append(out, value); }, argument);
        separator = ",";
    }
    out.push_back(']');
    Append(out, call.returned);
    End();
}

void JsonTrace::TimerFired(VirtualTime now, std::uint32_t timerId, TimerOwner owner) {
    Begin(now, "timer");
    AppendNumber(m_output.Text(), timerId);
    m_output.Text().append(owner == TimerOwner::Agent ? R"(,"of":"agent")" : R"(,"of":"announcement")");
    End();
}

void JsonTrace::CalledBack(VirtualTime now, std::string_view operation) {
    Line(now, "callback", operation);
}

void JsonTrace::Replied(VirtualTime now, const std::string& xml) {
    Line(now, "reply", xml);
}

void JsonTrace::Saved(VirtualTime now, const std::string& xml) {
    Line(now, "state", xml);
}

void JsonTrace::Answered(VirtualTime now, bool answer) {
    Begin(now, "answer");
    m_output.Text().append(answer ? "true" : "false");
    End();
}

void JsonTrace::HandlerMissing(VirtualTime now, std::string_view name) {
    Line(now, "no_handler", name);
}

void JsonTrace::Thrown(VirtualTime now, std::string_view type, std::string_view text) {
    Begin(now, "thrown");
    AppendJsonText(m_output.Text(), type);
    m_output.Text().append(R"(,"text":)");
    AppendJsonText(m_output.Text(), text);
    End();
}

void JsonTrace::GoesOn(VirtualTime now, std::string_view operation) {
    Line(now, "goes_on", operation);
}
