#include "render/inflate.h"

#include "doctest/doctest.h"
#include "support/capture.h"

#include <string>
#include <string_view>
#include <vector>

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

TEST_CASE("a stream unpacks to what was compressed: stored, with fixed codes and with its own") {
    std::string bytes;
    CHECK(Inflate(kStored, kText.size(), bytes));
    CHECK(bytes == kText);
    CHECK(Inflate(kFixed, kText.size(), bytes));
    CHECK(bytes == kText);
    CHECK(Inflate(kOwnCodes, 600, bytes));
    CHECK(bytes == Pattern());
}

TEST_CASE("a stream that does not have the expected length is refused") {
    std::string bytes;
    for (const std::string& stream : {kStored, kFixed}) {
        for (const size_t size : {size_t{0}, kText.size() - 1, kText.size() + 1, size_t{1} << 20}) {
            CHECK_FALSE(Inflate(stream, size, bytes));
            CHECK(bytes.empty());
        }
    }
}

TEST_CASE("windows of 256 bytes to 32 KB are accepted, a larger one and another method are refused") {
    // The second byte makes both together a multiple of 31.
    const struct {
        const char* header;
        bool isAccepted;
    } cases[] = {{"\x08\x1d", true},  {"\x18\x19", true},  {"\x68\x05", true}, {"\x78\x01", true},
                 {"\x88\x1c", false}, {"\x77\x09", false}, {"\x79\x18", false}};
    for (const auto& row : cases) {
        std::string stream = kStored, bytes;
        stream.replace(0, 2, row.header);
        const auto first = static_cast<uint8_t>(row.header[0]), second = static_cast<uint8_t>(row.header[1]);
        REQUIRE((first * 256 + second) % 31 == 0);
        CAPTURE(int{first});
        CHECK(Inflate(stream, kText.size(), bytes) == row.isAccepted);
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

namespace {

// Writes a stream by hand: bits from the lowest up, codes from their highest bit down.
struct StreamWriter {
    std::string bytes = "\x78\x01";
    int32_t used = 8;  // bits of the last byte

    void Put(uint32_t value, int32_t bits) {
        for (int32_t i = 0; i < bits; ++i, ++used) {
            if (used == 8) {
                bytes.push_back(0);
                used = 0;
            }
            bytes.back() = static_cast<char>(static_cast<uint8_t>(bytes.back()) | (value >> i & 1) << used);
        }
    }

    void PutCode(uint32_t code, int32_t bits) {
        for (int32_t i = bits - 1; i >= 0; --i) Put(code >> i & 1, 1);
    }

    // One of the fixed codes.
    void PutSymbol(uint32_t symbol) {
        if (symbol < 144) return PutCode(0x30 + symbol, 8);
        if (symbol < 256) return PutCode(0x190 + symbol - 144, 9);
        if (symbol < 280) return PutCode(symbol - 256, 7);
        PutCode(0xC0 + symbol - 280, 8);
    }
};

}  // namespace

static uint32_t Adler(std::string_view bytes) {
    uint32_t a = 1, b = 0;
    for (const char byte : bytes) {
        a = (a + static_cast<uint8_t>(byte)) % 65521;
        b = (b + a) % 65521;
    }
    return b << 16 | a;
}

static void PutSum(std::string_view unpacked, StreamWriter& stream) {
    for (int32_t i = 3; i >= 0; --i) stream.bytes.push_back(static_cast<char>(Adler(unpacked) >> 8 * i));
}

// A stored block of `before`, then a copy with the given symbols and their further bits, then the byte 255,
// whose code is all ones, so that no bit too many is taken for a further bit of zero.
static std::string StreamOfCopy(std::string_view before, uint32_t lengthSymbol, uint32_t lengthMore,
                                int32_t lengthBits, uint32_t distanceSymbol, uint32_t distanceMore,
                                int32_t distanceBits, const std::string& whole) {
    StreamWriter stream;
    stream.Put(0, 3);
    stream.used = 8;
    stream.Put(static_cast<uint32_t>(before.size()), 16);
    stream.Put(static_cast<uint32_t>(before.size()) ^ 0xFFFF, 16);
    stream.bytes += before;
    stream.used = 8;
    stream.Put(3, 3);  // the last block, with the fixed codes
    stream.PutSymbol(lengthSymbol);
    stream.Put(lengthMore, lengthBits);
    stream.PutCode(distanceSymbol, 5);
    stream.Put(distanceMore, distanceBits);
    stream.PutSymbol(255);
    stream.PutSymbol(256);
    PutSum(whole, stream);
    return stream.bytes;
}

TEST_CASE("every length symbol copies that many bytes, and every distance symbol from that far back") {
    std::string before;
    uint32_t random = 1;
    while (before.size() < 40000) {
        random = random * 1664525 + 1013904223;
        before.push_back(static_cast<char>(random >> 24));
    }
    const auto check = [&](uint32_t lengthSymbol, uint32_t lengthMore, int32_t lengthBits, size_t length,
                           uint32_t distanceSymbol, uint32_t distanceMore, int32_t distanceBits,
                           size_t distance) {
        CAPTURE(length);
        CAPTURE(distance);
        std::string whole = before, bytes;
        for (size_t i = 0; i < length; ++i) whole.push_back(whole[whole.size() - distance]);
        whole.push_back('\xFF');
        CHECK(Inflate(StreamOfCopy(before, lengthSymbol, lengthMore, lengthBits, distanceSymbol, distanceMore,
                                   distanceBits, whole),
                      whole.size(), bytes));
        CHECK(bytes == whole);
    };
    // Lengths 3 to 10 have a symbol each; from there on four symbols share each number of further bits, and
    // 258 has the last one to itself.
    for (uint32_t c = 0; c < 29; ++c) {
        const int32_t bits = c < 8 || c == 28 ? 0 : static_cast<int32_t>(c / 4) - 1;
        const size_t first = c == 28 ? 258 : c < 8 ? 3 + c : 3 + ((4 + c % 4) << bits);
        for (const uint32_t more : {0u, (1u << bits) - 1})
            check(257 + c, more, bits, first + more, 3, 0, 0, 4);
    }
    // Distances 1 to 4 have a symbol each; from there on two share each number of further bits.
    for (uint32_t c = 0; c < 30; ++c) {
        const int32_t bits = c < 4 ? 0 : static_cast<int32_t>(c / 2) - 1;
        const size_t first = c < 4 ? 1 + c : 1 + ((2 + c % 2) << bits);
        for (const uint32_t more : {0u, (1u << bits) - 1}) check(260, 0, 0, 6, c, more, bits, first + more);
    }
}

TEST_CASE("a code that stands for no length or no distance is refused") {
    // The fixed codes have numbers for the length symbols 286 and 287 and for the distances 30 and 31, and no
    // meaning for them.
    const struct {
        uint32_t length, distance;
        bool isAccepted;
    } cases[] = {{257, 0, true},  {285, 0, true},   {286, 0, false},
                 {287, 0, false}, {257, 30, false}, {257, 31, false}};
    for (const auto& [length, distance, isAccepted] : cases) {
        CAPTURE(length);
        CAPTURE(distance);
        // "a", repeated as often as the symbol says: not at all for one without a meaning.
        const std::string whole(length == 257 && distance == 0 ? 4 : length == 285 ? 259 : 1, 'a');
        StreamWriter stream;
        stream.Put(3, 3);
        stream.PutSymbol('a');
        stream.PutSymbol(length);
        stream.PutCode(distance, 5);
        stream.PutSymbol(256);
        PutSum(whole, stream);
        std::string bytes;
        CHECK(Inflate(stream.bytes, whole.size(), bytes) == isAccepted);
    }
}

TEST_CASE("a block may have codes for 286 literals and lengths and for 30 distances, and for no more") {
    const struct {
        uint32_t literals, distances;
        bool isAccepted;
    } cases[] = {{257, 1, true},  {286, 30, true},  {287, 30, false},
                 {288, 1, false}, {286, 31, false}, {257, 32, false}};
    for (const auto& [literals, distances, isAccepted] : cases) {
        CAPTURE(literals);
        CAPTURE(distances);
        StreamWriter stream;
        stream.Put(1, 1);
        stream.Put(2, 2);
        stream.Put(literals - 257, 5);
        stream.Put(distances - 1, 5);
        stream.Put(18 - 4, 4);  // up to the symbol 1, the last but one in the order
        // Symbol 18, a run of zeros, has the code 0; 0 and 1 have 10 and 11.
        const int32_t lengths[18] = {0, 0, 1, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2};
        for (const int32_t length : lengths) stream.Put(static_cast<uint32_t>(length), 3);
        const auto putZeros = [&stream](uint32_t count) {
            stream.PutCode(0, 1);
            stream.Put(count - 11, 7);
        };
        putZeros('a');
        stream.PutCode(3, 2);  // "a" has a code of one bit, as the end has
        putZeros(138);
        putZeros(256 - 'a' - 1 - 138);
        stream.PutCode(3, 2);
        for (uint32_t i = 257; i < literals + distances; ++i) stream.PutCode(2, 2);
        stream.PutCode(0, 1);  // "a"
        stream.PutCode(1, 1);  // the end
        PutSum("a", stream);
        std::string bytes;
        CHECK(Inflate(stream.bytes, 1, bytes) == isAccepted);
    }
}

// The codes of symbols with these lengths: consecutive for each length, above those of the shorter lengths.
static std::vector<uint32_t> CodesOf(const std::vector<int32_t>& lengths) {
    std::vector<uint32_t> codes(lengths.size());
    uint32_t next = 0;
    for (int32_t length = 1; length <= 15; ++length, next *= 2) {
        for (size_t symbol = 0; symbol < lengths.size(); ++symbol) {
            if (lengths[symbol] == length) codes[symbol] = next++;
        }
    }
    return codes;
}

// A block whose literals have codes of 1 to 15 bits, with all bytes that have one. One more code of 15 bits
// has no number left.
static bool ReadsCodesOfEveryLength(bool hasOneMore) {
    StreamWriter stream;
    stream.Put(1, 1);                   // the last block
    stream.Put(2, 2);                   // with codes of its own
    stream.Put(hasOneMore ? 1 : 0, 5);  // for 257 or 258 literals
    stream.Put(4 - 1, 5);               // and 4 distances
    stream.Put(19 - 4, 4);              // told by all 19 symbols of code lengths
    // Neighbours in this order have codes of different lengths, so that no two can be exchanged.
    const int32_t order[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
    std::vector<int32_t> lengths(19);
    for (int32_t i = 0; i < 19; ++i) {
        const int32_t length = i == 18 ? 6 : 5 + i % 3;
        lengths[static_cast<size_t>(order[i])] = length;
        stream.Put(static_cast<uint32_t>(length), 3);
    }
    const std::vector<uint32_t> codes = CodesOf(lengths);
    const auto putLength = [&](size_t symbol) { stream.PutCode(codes[symbol], lengths[symbol]); };

    for (size_t length = 1; length <= 15; ++length) putLength(length);  // of the bytes 0 to 14
    putLength(18);
    stream.Put(138 - 11, 7);  // zeros for the bytes from 15 on
    putLength(18);
    stream.Put(93 - 11, 7);
    putLength(17);
    stream.Put(10 - 3, 3);  // to 255
    putLength(15);          // of the end
    if (hasOneMore) putLength(15);
    putLength(16);
    stream.Put(3 - 3, 2);  // the same for three distances
    putLength(0);          // none for the fourth

    std::vector<int32_t> literals(257);
    std::string text, bytes;
    for (int32_t i = 0; i < 15; ++i) literals[static_cast<size_t>(i)] = i + 1;
    literals[256] = 15;
    const std::vector<uint32_t> literalCodes = CodesOf(literals);
    for (size_t byte = 0; byte < 15; ++byte) {
        stream.PutCode(literalCodes[byte], literals[byte]);
        text.push_back(static_cast<char>(byte));
    }
    stream.PutCode(literalCodes[256], 15);
    PutSum(text, stream);
    return Inflate(stream.bytes, text.size(), bytes) && bytes == text;
}

TEST_CASE("codes of 1 to 15 bits are read, their lengths by codes in the order of the format, in runs too") {
    CHECK(ReadsCodesOfEveryLength(false));
}

TEST_CASE("a block with more codes of 15 bits than there are numbers left is refused") {
    CHECK_FALSE(ReadsCodesOfEveryLength(true));
}
