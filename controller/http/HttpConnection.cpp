#include "controller/http/HttpConnectionSteps.h"

namespace controller {

template class HttpConnection<HttpSocket>;
template class HttpConnection<TlsStream>;

} // namespace controller
