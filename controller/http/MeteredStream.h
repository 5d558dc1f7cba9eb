#pragma once

#include <boost/beast/core/stream_traits.hpp>
#include <boost/beast/websocket/teardown.hpp>

#include <chrono>
#include <cstddef>
#include <memory>
#include <utility>

namespace controller {

/// Counts what happens in the present minute.
class PerMinute {
public:
    explicit PerMinute(std::size_t limit) : m_limit(limit) {}

    /// One more; false when it is one too many.
    [[nodiscard]] bool Count() {
        const auto now = std::chrono::steady_clock::now();
        if (now - m_since > std::chrono::minutes(1)) {
            m_since = now;
            m_count = 0;
        }
        return ++m_count <= m_limit;
    }

private:
    std::size_t m_limit;
    std::chrono::steady_clock::time_point m_since = std::chrono::steady_clock::now();
    std::size_t m_count = 0;
};

/// A stream that is closed when it is read too often. The library tells of messages and of control frames; a
/// client that sends fragments without content and never ends the message would keep it busy unseen.
template <class Stream>
class MeteredStream {
public:
    using next_layer_type = Stream;
    using executor_type = typename Stream::executor_type;

    MeteredStream(std::shared_ptr<Stream> stream, std::size_t readsPerMinute)
        : m_stream(std::move(stream))
        , m_reads(readsPerMinute) {}

    [[nodiscard]] executor_type get_executor() noexcept { return m_stream->get_executor(); }
    [[nodiscard]] next_layer_type& next_layer() noexcept { return *m_stream; }
    [[nodiscard]] const next_layer_type& next_layer() const noexcept { return *m_stream; }

    template <class Buffers, class Handler>
    void async_read_some(const Buffers& buffers, Handler&& handler) {
        if (!m_reads.Count())
            boost::beast::close_socket(boost::beast::get_lowest_layer(*m_stream));
        m_stream->async_read_some(buffers, std::forward<Handler>(handler));
    }

    template <class Buffers, class Handler>
    void async_write_some(const Buffers& buffers, Handler&& handler) {
        m_stream->async_write_some(buffers, std::forward<Handler>(handler));
    }

    /// How the library ends such a stream.
    template <class Handler>
    friend void async_teardown(boost::beast::role_type role, MeteredStream& stream, Handler&& handler) {
        using boost::beast::websocket::async_teardown;
        async_teardown(role, *stream.m_stream, std::forward<Handler>(handler));
    }

private:
    std::shared_ptr<Stream> m_stream;
    PerMinute m_reads;
};

} // namespace controller
