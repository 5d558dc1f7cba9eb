#pragma once

#include "controller/announcements/Announcement.h"
#include "controller/api/json/Fields.h"

#include <cstdint>
#include <string>
#include <vector>

namespace controller::view {

struct SayScreen {
    std::uint32_t id = 0;

    static fields::Object Table();
};

/// A body: what is played and shown once.
struct SayOrder {
    static constexpr std::uint32_t kTimeoutMs = 10000;

    std::string text;
    std::string sound;
    std::string voice;
    std::string chime;
    std::vector<Announcement::Room> rooms;
    std::vector<SayScreen> navigators;
    std::uint32_t timeoutMs = kTimeoutMs;
    bool isUrgent = false;

    static fields::Object Table();
};

struct Said {
    std::uint64_t entry = 0;
    std::uint32_t announcement = 0;
    std::string state;
    std::string trouble; ///< why the text is not spoken

    static fields::Object Table();
};

} // namespace controller::view
