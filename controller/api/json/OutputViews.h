#pragma once

#include "controller/api/OutputDesk.h"
#include "controller/api/json/List.h"

#include <string>
#include <vector>

namespace controller {

fields::Object TableOf(fields::For<OutputDesk::Place> type);

} // namespace controller

namespace controller::view {

template <>
inline constexpr ListWords kListWords<std::vector<OutputDesk::Place>>{"OutputList", "outputs"};
using OutputList = List<std::vector<OutputDesk::Place>>;

/// A body.
struct OutputTest {
    std::string output;
    unsigned volume = 40;

    static fields::Object Table();
};

struct OutputTested {
    bool isHeard = false;
    std::string trouble;

    static fields::Object Table();
};

} // namespace controller::view
