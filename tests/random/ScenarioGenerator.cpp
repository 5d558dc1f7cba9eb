#include "tests/random/ScenarioGenerator.h"

#include "rehearsal/Reaction.h"

#include <initializer_list>
#include <iterator>
#include <utility>

namespace {

std::string Command(const std::string& name, const std::string& id) {
    return R"({"do":"command","name":")" + name + R"(","params":{"id":")" + id + R"("}})";
}

/// The values hold no character that JSON would escape.
std::string Request(const std::string& name,
                    std::initializer_list<std::pair<const char*, std::string>> params) {
    std::string line = R"({"do":"request","name":")" + name + R"(","params":{)";
    const char* separator = "";
    for (const auto& [parameter, value] : params) {
        line += separator + std::string("\"") + parameter + "\":\"" + value + "\"";
        separator = ",";
    }
    return line + "}}";
}

std::string Element(const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">";
}

} // namespace

std::vector<std::string> ScenarioGenerator::Steps(std::size_t count) {
    std::vector<std::string> steps;
    if (m_flavour == Flavour::Meddling && Once(2))
        steps.push_back(Reaction());
    steps.push_back(R"({"do":"initialize","state":")" + State() + R"("})");
    steps.emplace_back(R"({"do":"register"})");
    while (steps.size() < count)
        steps.push_back(AnyStep());
    return steps;
}

std::string ScenarioGenerator::AnyStep() {
    if (Once(3))
        return R"({"do":"advance","ms":)" + OneOf({"0", "1", "99", "500", "1000", "1000", "2500", "7000"}) +
               "}";
    if (m_flavour == Flavour::Wild && Once(6))
        return WildStep();
    if (m_flavour == Flavour::Meddling && Once(4))
        return Once(3) ? BoldEditingStep() : Reaction();
    if (Once(12))
        return HostStep();
    return Once(3) ? EditingStep() : PlayingStep();
}

std::string ScenarioGenerator::PlayingStep() {
    if (Once(20))
        return Command("execute_announcement", "0");
    if (Once(2))
        return Command("execute_announcement", Id());
    return OneOf({R"({"do":"command","name":"ANNOUNCEMENT_DISMISSED"})", R"({"do":"stream_ready"})",
                  R"({"do":"stream_ready"})", R"({"do":"play_done"})", R"({"do":"room_asked","id":12})"});
}

std::string ScenarioGenerator::EditingStep() {
    switch (m_random() % 9) {
    case 0:
    case 1:
        return Request("add_announcement", {{"announcement", Description(OwnId())}});
    case 2:
    case 3:
        return Request("remove_announcement", {{"id", Id()}});
    case 4:
        return Request("add_room", {{"id", Id()}, {"room", Room()}});
    case 5:
        return Request("modify_room", {{"id", Id()}, {"room", Room()}});
    case 6:
        return Request("add_navigator", {{"id", Id()}, {"navigator", "<n><id>23</id></n>"}});
    case 7:
        return Request("remove_navigator", {{"id", Id()}, {"navigator_id", OneOf({"21", "22", "23", ""})}});
    default:
        return Request("get_announcement", {{"id", Id()}});
    }
}

std::string ScenarioGenerator::BoldEditingStep() {
    switch (m_random() % 4) {
    case 0:
    case 1:
        return Request("modify_announcement", {{"announcement", Description(Id())}});
    case 2:
        return Request("remove_room", {{"id", Id()}, {"room_id", OneOf({"11", "12", "13", "", "x"})}});
    default:
        return Request(OneOf({"add_announcement", "modify_announcement", "add_room", "modify_room"}),
                       {{"id", Id()}, {"announcement", "<a>"}, {"room", "no room"}});
    }
}

std::string ScenarioGenerator::WildStep() {
    switch (m_random() % 7) {
    case 0:
    case 1:
    case 2:
    case 3:
        return BoldEditingStep();
    case 4:
        return Once(3) ? R"({"do":"initialize","state":")" + State() + R"("})" : R"({"do":"save"})";
    default:
        return WildHostStep();
    }
}

std::string ScenarioGenerator::HostStep() {
    return R"({"do":"host",)" +
           OneOf({R"("stream_ready_ms":null)", R"("stream_ready_ms":200)", R"("stream_ready_ms":3000)",
                  R"("stream_ready_ms":3500,"play_ms":20000)", R"("play_ms":null)", R"("play_ms":1500)",
                  R"("digital_audio":false)", R"("digital_audio":true)", R"("logger":false)",
                  R"("logger":true)"}) +
           "}";
}

std::string ScenarioGenerator::WildHostStep() {
    return R"({"do":"host",)" +
           OneOf({R"("device_manager":false)", R"("timer_manager":false)",
                  R"("device_manager":true,"timer_manager":true)", R"("rooms":[11,12])", R"("rooms":null)",
                  R"("device_id":7)"}) +
           "}";
}

std::string ScenarioGenerator::Reaction() {
    std::string steps;
    for (auto left = m_random() % 3; left > 0; --left)
        steps += ReactionStep() + ",";
    steps += Once(2) ? R"({"do":"throw","type":")" + OneOf({"const char*", "std::string", "other"}) +
                           R"(","text":"no"})"
                     : ReactionStep();
    const auto call = kReactionCalls[m_random() % std::size(kReactionCalls)];
    return R"({"do":"on","call":")" + std::string(call) + R"(","nth":)" + OneOf({"1", "1", "2", "3"}) +
           R"(,"steps":[)" + steps + "]}";
}

std::string ScenarioGenerator::ReactionStep() {
    if (Once(2))
        return Command("execute_announcement", Once(4) ? "0" : Id());
    return OneOf({R"({"do":"command","name":"ANNOUNCEMENT_DISMISSED"})", R"({"do":"stream_ready"})",
                  R"({"do":"stream_ready"})", R"({"do":"play_done"})", R"({"do":"room_asked","id":12})",
                  R"({"do":"save"})", R"({"do":"request","name":"get_announcements"})",
                  R"({"do":"request","name":"get_announcement","params":{"id":"2"}})"});
}

std::string ScenarioGenerator::State() {
    std::string announcements;
    for (const char* const id : {"1", "2", "3", "4"})
        announcements += Description(id);
    return Element("announcements", announcements);
}

std::string ScenarioGenerator::Description(const std::string& id) {
    std::string content = Element("id", id) + Element("name", "n" + id);
    if (!Once(4))
        content += Element("audio", Element("file", OneOf({"chime", "gong", ""})) +
                                        Element("delay", OneOf({"0", "1", "300", "1000"})));
    if (!Once(4))
        content += Element(
            "video",
            Element("text", OneOf({"Hi", "Dinner", ""})) +
                Element("delay", OneOf({"0", "0", "50", "1000", "4000"})) +
                Element("timeout", OneOf({"0", "1", "1000", "1500", "2500", "6000", "6000", "6000"})) +
                OneOf({"", "", "<displayID>9</displayID><variableID>4</variableID>",
                       "<displayID>0</displayID><variableID>4</variableID><variableName>v</variableName>"}));
    content += Rooms();
    if (m_flavour == Flavour::Calm || !Once(8))
        content += Navigators();
    return Element("announcement", content);
}

std::string ScenarioGenerator::Rooms() {
    std::string rooms;
    for (auto left = m_random() % 4; left > 0; --left)
        rooms += Room();
    return Element("rooms", rooms);
}

std::string ScenarioGenerator::Navigators() {
    std::string navigators;
    for (auto left = m_random() % 3; left > 0; --left)
        navigators += Element("navigator", Element("id", OneOf({"21", "22"})) + Element("onscreen", "true"));
    return Element("navigators", navigators);
}

std::string ScenarioGenerator::Room() {
    return Element("room", Element("id", OneOf({"11", "12", "13", "14"})) +
                               Element("volume", OneOf({"0", "-1", "1", "40", "-2"})));
}

std::string ScenarioGenerator::Id() {
    if (m_flavour == Flavour::Wild && Once(12))
        return OneOf({"", "-1", "3rd", "x", "4294967297", " +2"});
    return OneOf({"1", "2", "3", "4", "5", "6", "7"});
}

std::string ScenarioGenerator::OwnId() {
    if (m_flavour == Flavour::Wild && Once(2))
        return Id();
    return "0";
}
