#pragma once

#include <boost/system/error_code.hpp>

#include <cstddef>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace net {

/// What is called when an operation has ended, with what came of it.
template <class... Values>
using DoneWith = std::function<void(const boost::system::error_code& error, Values... values)>;
using Done = DoneWith<>;
using DoneWithSize = DoneWith<std::size_t>;

/// Any handler as one type, so that what it is given to is compiled once; also one that can only be moved.
template <class... Values, class Handler>
[[nodiscard]] DoneWith<Values...> Erased(Handler&& handler) {
    using Held = std::decay_t<Handler>;
    return [held = std::make_shared<Held>(std::forward<Handler>(handler))](
               const boost::system::error_code& error, Values... values) {
        Held called = std::move(*held);
        called(error, values...);
    };
}

} // namespace net
