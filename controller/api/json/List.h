#pragma once

#include "controller/api/json/Fields.h"

namespace controller::view {

/// How a reply that is a list is described.
struct ListWords {
    const char* schema;
    const char* member;
    const char* words = "";
};
template <class Entries>
constexpr ListWords kListWords{};

/// A reply whose only member is a list.
template <class Entries>
struct List {
    Entries entries;

    static fields::Object Table() {
        constexpr ListWords kWords = kListWords<Entries>;
        return {kWords.schema, {fields::Member<&List::entries>(kWords.member, kWords.words)}};
    }
};

} // namespace controller::view
