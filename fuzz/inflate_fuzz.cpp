// Any bytes are a stream of as many bytes as expected, or none.
#include "render/inflate.h"

#include <cstdint>
#include <cstdlib>

// The first two bytes are the expected length, the rest is the stream.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) return 0;
    const size_t expected = data[0] + size_t{data[1]} * 256;
    std::string bytes;
    const bool isRead = Inflate({reinterpret_cast<const char*>(data) + 2, size - 2}, expected, bytes);
    if (bytes.size() != (isRead ? expected : 0)) std::abort();
    return 0;
}
