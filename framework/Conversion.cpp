#include "host/Conversion.h"

std::string vq::ToString(std::uint32_t number) {
    return std::to_string(number);
}
