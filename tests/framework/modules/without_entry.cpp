#include "host/Export.h"

extern "C" VQ_EXPORT int SomethingElse() {
    return 0;
}
