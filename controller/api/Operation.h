#pragma once

#include "controller/access/Rights.h"
#include "controller/api/ApiCall.h"

#include <vector>

namespace controller {

struct ApiContext;

/// What a body or a reply holds.
struct Content {
    const char* type = nullptr;               ///< the media type; null: there is none
    const fields::Type& (*table)() = nullptr; ///< of JSON whose fields are known

    template <class Value>
    static constexpr Content Of() {
        return {"application/json", &fields::TypeOf<Value>};
    }
    /// Any object.
    static constexpr Content Json() { return {"application/json"}; }
    static constexpr Content Text(const char* type) { return {type}; }
    static constexpr Content File() { return {"application/octet-stream"}; }
    static constexpr Content None() { return {}; }
};

/// One operation of the API: what routes, help and description are made of.
struct Operation {
    enum class Kind {
        Plain, ///< takes no body
        Json,  ///< takes a JSON object
        File,  ///< takes a media file
        Events ///< becomes a WebSocket
    };
    struct QueryValue {
        const char* name;
        const char* summary;
    };

    const char* name;
    const char* method;
    const char* path; ///< with `{parameters}`
    Need need;
    Kind kind;
    void (*handler)(ApiContext& context, const ApiCallPointer& call);
    const char* summary;
    Content takes;
    unsigned status; ///< of a reply without error
    Content gives;
    std::vector<QueryValue> query = {};
};

/// All of them.
[[nodiscard]] const std::vector<Operation>& Operations();

} // namespace controller
