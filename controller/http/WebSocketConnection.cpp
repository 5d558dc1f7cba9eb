#include "controller/http/WebSocketConnectionSteps.h"

namespace controller {

template class WebSocketConnection<HttpSocket>;
template class WebSocketConnection<TlsStream>;

} // namespace controller
