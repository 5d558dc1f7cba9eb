// Asio's own sources, compiled once, here, instead of in every source that includes its headers.
#include <boost/asio/impl/src.hpp>
#include <boost/asio/ssl/impl/src.hpp>
