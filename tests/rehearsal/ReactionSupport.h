#pragma once

#include "tests/rehearsal/Support.h"

#include <algorithm>
#include <string>

inline std::string On(const std::string& call, const std::string& steps, const std::string& more = "") {
    return R"({"do":"on","call":")" + call + "\"" + more + R"(,"steps":[)" + steps + "]}\n";
}

inline const std::string kAsk = R"({"do":"room_asked","id":12})";
inline const std::string kOther = R"({"do":"room_asked","id":13})";
inline const std::string kAskLine = R"({"t":0,"step":{"do":"room_asked","id":12}})";
inline const std::string kOtherLine = R"({"t":0,"step":{"do":"room_asked","id":13}})";
inline const std::string kYes = R"({"t":0,"answer":true})";
inline const std::string kNo = R"({"t":0,"answer":false})";
inline const std::string kThrow = R"({"do":"throw","type":"std::string","text":"not now"})";
inline const std::string kThrowLine =
    R"({"t":0,"step":{"do":"throw","type":"std::string","text":"not now"}})";
inline const std::string kThrownLine = R"({"t":0,"thrown":"std::string","text":"not now"})";
inline const std::string kLogged = R"({"t":0,"call":"ILogger.Log","args":[6,"a"]})";
inline const std::string kLog = Command("log", R"({"text":"a"})");
inline const std::string kLogLine = R"({"t":0,"step":{"do":"command","name":"log","params":{"text":"a"}}})";
inline const std::string kLoggerGoesOn = R"({"t":0,"goes_on":"ILogger.Log"})";

/// The lines behind the settings of reactions.
inline Lines Reacted(const std::string& scenario) {
    Lines lines = Played("{\"do\":\"register\"}\n" + scenario);
    const auto isSetting = [](const std::string& line) {
        return line.find(R"("step":{"do":"on")") != std::string::npos;
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isSetting), lines.end());
    return lines;
}
