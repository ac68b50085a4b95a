#include "render/inflate.h"

#include "doctest/doctest.h"

#include <string>
#include <string_view>

// Streams made by another compressor: stored, with the fixed codes, and with codes of their own.
constexpr std::string_view kText = "one cube, two cubes, red cube, blue cube, cube cube cube cube";
// clang-format off
static const std::string kStored(
    "\x78\x01\x01\x3d\x00\xc2\xff"
    "one cube, two cubes, red cube, blue cube, cube cube cube cube"
    "\x89\x1a\x14\xfb", 72);
static const std::string kFixed(
    "\x78\x01\xcb\xcf\x4b\x55\x48\x2e\x4d\x4a\xd5\x51\x28\x29\xcf\x07\xb3\x8a\x75\x14\x8a\x52\x53\xa0\x82\x49"
    "\x39\xa5\x30\x79\x10\x89\x46\x00\x00\x89\x1a\x14\xfb", 39);
static const std::string kOwnCodes(
    "\x78\xda\xed\xcc\x41\x06\x00\x41\x0c\x44\xd1\x22\x84\xa2\x56\x21\x84\x50\xf7\x3f\xe6\xf4\x98\x39\x46\xff"
    "\xf5\xf3\x11\xa9\x1a\xb0\x36\xcb\x5a\x0e\x57\x68\xba\x15\x9e\x12\x33\xde\x92\x07\x39\xd4\x66\xe3\x57\xae"
    "\xdc\x22\x0e\xca\x80\xf7\x64\xdc\xd9\x9d\x7d\xb3\x07\xed\xe0\x22\xfc", 69);
// clang-format on

// What kOwnCodes was made of.
static std::string Pattern() {
    std::string bytes;
    for (int i = 0; i < 600; ++i) bytes.push_back(static_cast<char>((i * i / 7 + i) % 11 * 3));
    return bytes;
}

TEST_CASE("a stream gives back what was compressed, stored or with either kind of codes") {
    std::string bytes;
    CHECK(Inflate(kStored, kText.size(), bytes));
    CHECK(bytes == kText);
    CHECK(Inflate(kFixed, kText.size(), bytes));
    CHECK(bytes == kText);
    CHECK(Inflate(kOwnCodes, 600, bytes));
    CHECK(bytes == Pattern());
}

TEST_CASE("a stream of another length than expected is refused") {
    std::string bytes;
    for (const std::string& stream : {kStored, kFixed}) {
        for (const size_t size : {size_t{0}, kText.size() - 1, kText.size() + 1, size_t{1} << 20}) {
            CHECK_FALSE(Inflate(stream, size, bytes));
            CHECK(bytes.empty());
        }
    }
}

TEST_CASE("a stream that is cut short is refused wherever it ends") {
    const struct {
        std::string stream;
        size_t size;
    } cases[] = {{kStored, kText.size()}, {kFixed, kText.size()}, {kOwnCodes, 600}};
    std::string bytes;
    for (const auto& [stream, size] : cases) {
        for (size_t length = 0; length < stream.size(); ++length) {
            CHECK_FALSE(Inflate(stream.substr(0, length), size, bytes));
        }
        CHECK(Inflate(stream + "more", size, bytes));
    }
}

TEST_CASE("a changed bit is noticed, or changes nothing") {
    std::string bytes;
    int32_t refused = 0;
    for (size_t i = 0; i < kOwnCodes.size() * 8; ++i) {
        std::string stream = kOwnCodes;
        stream[i / 8] = static_cast<char>(stream[i / 8] ^ 1 << i % 8);
        if (Inflate(stream, 600, bytes)) {
            CHECK(bytes == Pattern());
        } else {
            ++refused;
        }
    }
    CHECK(refused > 500);  // of 552: a few bits fill up the last byte of the codes
}

TEST_CASE("a block of a kind that does not exist, and a copy from before the beginning, are refused") {
    std::string bytes;
    CHECK_FALSE(Inflate(std::string("\x78\x01\x07\x00\x00\x00\x00\x01", 8), 0, bytes));
    // Fixed codes: length 3 (0000001) at distance 1 (00000), then the end.
    CHECK_FALSE(Inflate(std::string("\x78\x01\x03\x02\x00\x00\x00\x00\x01", 9), 3, bytes));
}
