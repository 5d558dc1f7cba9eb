#pragma once

#include "announce/basics/Failure.h"
#include "announce/house/House.h"

#include <string>
#include <vector>

/// A house of two rooms that share their name in capital letters, three screens, two variables and some
/// media, as the API gives it.
class SmallHouse {
public:
    House house{[this](const std::string& path) {
        asked.push_back(path);
        return answers.at(path);
    }};
    std::vector<std::string> asked; ///< every path, in order

    Json answers{
        {"/api/announcements",
         {{"announcements", Json::array({{{"id", 1}, {"name", "Dinner"}}, {{"id", 2}, {"name", "Bell"}}})}}},
        {"/api/rooms",
         {{"rooms", Json::array({{{"id", 1}, {"name", "Kitchen"}},
                                 {{"id", 2}, {"name", "Hall: left"}},
                                 {{"id", 3}, {"name", "Garden"}},
                                 {{"id", 4}, {"name", "garden"}}})}}},
        {"/api/navigators",
         {{"navigators", Json::array({{{"id", 11}, {"name", "Tablet"}, {"room", 1}},
                                      {{"id", 12}, {"name", "Television"}, {"room", 2}}})}}},
        {"/api/variables",
         {{"variables", Json::array({{{"device", 9}, {"variable", 4}, {"name", "Outside"}},
                                     {{"device", 9}, {"variable", 5}, {"name", ""}}})}}},
        {"/api/media",
         {{"media", Json::array({{{"name", "chime.wav"}, {"kind", "sound"}},
                                 {{"name", "door.png"}, {"kind", "image"}}})}}},
    };
};

/// The Failure that `work` ends with; of status Done when it does not.
template <class Work>
Failure FailureOf(Work work) {
    try {
        work();
    } catch (const Failure& failure) {
        return failure;
    }
    return {ExitStatus::Done, "nothing was wrong"};
}
