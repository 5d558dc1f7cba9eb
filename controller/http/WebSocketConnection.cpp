#include "controller/http/WebSocketConnectionSteps.h"

namespace controller {

template class WebSocketConnection<HttpStream>;

} // namespace controller
