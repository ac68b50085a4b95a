// The fuzzer's bytes as a source of numbers. When they are used up, every answer is the smallest.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class ByteSource {
public:
    ByteSource(const uint8_t* data, size_t size) : bytes(data, size) {}

    bool IsEmpty() const { return bytes.empty(); }

    uint32_t Byte() {
        if (bytes.empty()) return 0;
        const uint32_t byte = bytes.front();
        bytes = bytes.subspan(1);
        return byte;
    }

    // From one byte where that is enough, else from two.
    int32_t IntBetween(int32_t low, int32_t high) {
        const auto count = static_cast<uint32_t>(high - low + 1);
        const uint32_t number = count <= 256 ? Byte() : Byte() << 8 | Byte();
        return low + static_cast<int32_t>(number % count);
    }

    float Between(float low, float high) {
        return low + (high - low) * (static_cast<float>(Byte()) / 255.0f);
    }

    bool OneIn(uint32_t n) { return Byte() % n == n - 1; }

private:
    std::span<const uint8_t> bytes;
};
