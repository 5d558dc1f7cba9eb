#include "fuzz/ApiHouse.h"
#include "fuzz/ServerBytes.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace controller {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    ApiHouse house;
    RequireReplies(house.Converse(bytes), bytes.find("HEAD") != std::string::npos);
    return 0;
}

} // namespace controller
