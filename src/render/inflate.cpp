#include "render/inflate.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

constexpr int32_t kLongestCode = 15;  // bits
constexpr int32_t kBlockEnd = 256, kFirstLength = 257;
constexpr size_t kHeaderBytes = 2, kCheckSumBytes = 4;
constexpr uint32_t kCheckSumModulus = 65521;

// clang-format off
// The length that a symbol stands for, and how many bits follow that are added to it; then the same for
// distances.
constexpr auto kLengths = std::to_array<uint16_t>({
    3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 15, 17, 19, 23, 27, 31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195,
    227, 258});
constexpr auto kLengthBits = std::to_array<uint8_t>({
    0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0});
constexpr auto kDistances = std::to_array<uint16_t>({
    1, 2, 3, 4, 5, 7, 9, 13, 17, 25, 33, 49, 65, 97, 129, 193, 257, 385, 513, 769, 1025, 1537, 2049, 3073,
    4097, 6145, 8193, 12289, 16385, 24577});
constexpr auto kDistanceBits = std::to_array<uint8_t>({
    0, 0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 12, 12, 13, 13});
// The order in which a block stores the lengths of the codes that code lengths are coded with.
constexpr auto kLengthOrder = std::to_array<uint8_t>({
    16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15});
// clang-format on
constexpr size_t kMostLiterals = kFirstLength + kLengths.size();  // and lengths, which share their code
static_assert(kLengths.size() == kLengthBits.size() && kDistances.size() == kDistanceBits.size());

namespace {

// Gives bits, the lowest of each byte first. Past the end it gives zeros and sets `failed`, so that callers
// may read on and ask once at the end.
struct BitReader {
    std::string_view bytes{};
    size_t next = 0;
    uint32_t held = 0;
    int32_t count = 0;  // bits in `held`
    bool failed = false;

    uint32_t Take(int32_t bits) {
        while (count < bits) {
            failed = failed || next >= bytes.size();
            const uint32_t byte = failed ? 0 : static_cast<uint8_t>(bytes[next++]);
            held |= byte << count;
            count += 8;
        }
        const uint32_t value = held & ((1u << bits) - 1);
        held >>= bits;
        count -= bits;
        return value;
    }

    void SkipToByte() { Take(count % 8); }
};

// A canonical Huffman code: how many codes have each length, and the symbols in the order of their codes.
// Nothing else is stored, because codes of one length are consecutive numbers.
struct CodeTable {
    std::array<uint16_t, kLongestCode + 1> counts{};
    std::array<uint16_t, 288> symbols{};
};

}  // namespace

// In go the code lengths of all symbols, 0 for an unused one; out comes the table. A code may leave numbers
// unused, which TakeSymbol then reports. False when a length has more codes than there are numbers left for
// it.
static bool MakeTable(std::span<const uint8_t> lengths, CodeTable& table) {
    table = {};
    for (const uint8_t length : lengths) ++table.counts[length];
    table.counts[0] = 0;
    std::array<uint16_t, kLongestCode + 2> begins{};
    int32_t left = 1;
    for (size_t length = 1; length <= kLongestCode; ++length) {
        left = left * 2 - table.counts[length];
        if (left < 0) return false;
        begins[length + 1] = static_cast<uint16_t>(begins[length] + table.counts[length]);
    }
    for (size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        if (lengths[symbol] != 0) table.symbols[begins[lengths[symbol]]++] = static_cast<uint16_t>(symbol);
    }
    return true;
}

// Reads one code, bit by bit. The codes of each length are consecutive numbers that follow those of the
// shorter lengths, so a comparison tells whether the code ends here. One bit at a time is slow, and fast
// enough for eight icons. -1 for no code.
static int32_t TakeSymbol(BitReader& reader, const CodeTable& table) {
    int32_t code = 0, first = 0, index = 0;
    for (size_t length = 1; length <= kLongestCode; ++length) {
        code |= static_cast<int32_t>(reader.Take(1));
        const int32_t count = table.counts[length];
        if (code - first < count) return table.symbols[static_cast<size_t>(index + code - first)];
        index += count;
        first = (first + count) * 2;
        code *= 2;
    }
    return -1;
}

static bool CopyStored(BitReader& reader, size_t size, std::string& bytes) {
    reader.SkipToByte();
    const uint32_t count = reader.Take(16), inverse = reader.Take(16);
    if (reader.failed || count != (inverse ^ 0xFFFF) || bytes.size() + count > size) return false;
    for (uint32_t i = 0; i < count; ++i) bytes.push_back(static_cast<char>(reader.Take(8)));
    return !reader.failed;
}

// Appends `length` bytes again that stand `distance` before the end. They may overlap what is appended: a
// distance of 1 repeats one byte, so they are copied one by one.
static bool Repeat(size_t distance, size_t length, size_t size, std::string& bytes) {
    if (distance > bytes.size() || bytes.size() + length > size) return false;
    for (size_t i = 0; i < length; ++i) bytes.push_back(bytes[bytes.size() - distance]);
    return true;
}

static bool TakeRepeat(BitReader& reader, size_t lengthIndex, const CodeTable& distances, size_t size,
                       std::string& bytes) {
    if (lengthIndex >= kLengths.size()) return false;
    const size_t length = kLengths[lengthIndex] + reader.Take(kLengthBits[lengthIndex]);
    const auto symbol = static_cast<size_t>(TakeSymbol(reader, distances));  // -1 is beyond the table too
    if (symbol >= kDistances.size()) return false;
    const size_t distance = kDistances[symbol] + reader.Take(kDistanceBits[symbol]);
    return Repeat(distance, length, size, bytes);
}

static bool TakeBlock(BitReader& reader, const CodeTable& literals, const CodeTable& distances, size_t size,
                      std::string& bytes) {
    while (!reader.failed) {
        const int32_t symbol = TakeSymbol(reader, literals);
        if (symbol == kBlockEnd) return !reader.failed;
        if (symbol < 0) return false;
        if (symbol >= kFirstLength) {
            const auto index = static_cast<size_t>(symbol - kFirstLength);
            if (!TakeRepeat(reader, index, distances, size, bytes)) return false;
        } else {
            if (bytes.size() >= size) return false;
            bytes.push_back(static_cast<char>(symbol));
        }
    }
    return false;
}

static void MakeFixedTables(CodeTable& literals, CodeTable& distances) {
    std::array<uint8_t, 288> lengths{};
    std::fill_n(lengths.begin(), 144, uint8_t{8});
    std::fill_n(lengths.begin() + 144, 112, uint8_t{9});
    std::fill_n(lengths.begin() + 256, 24, uint8_t{7});
    std::fill_n(lengths.begin() + 280, 8, uint8_t{8});
    MakeTable(lengths, literals);
    std::array<uint8_t, kDistances.size()> five{};
    five.fill(5);
    MakeTable(five, distances);
}

// Reads the two tables of a block. Their code lengths are themselves coded, by a third table that comes
// first: symbols below 16 are lengths, 16 repeats the last one, 17 and 18 are runs of zeros. A run may cross
// from the literals into the distances, so both are read as one list.
static bool TakeTables(BitReader& reader, CodeTable& literals, CodeTable& distances) {
    const size_t literalCount = 257 + reader.Take(5), distanceCount = 1 + reader.Take(5);
    const size_t orderCount = 4 + reader.Take(4);
    if (literalCount > kMostLiterals || distanceCount > kDistances.size()) return false;
    std::array<uint8_t, kLengthOrder.size()> orderLengths{};
    for (size_t i = 0; i < orderCount; ++i)
        orderLengths[kLengthOrder[i]] = static_cast<uint8_t>(reader.Take(3));
    CodeTable table;
    if (!MakeTable(orderLengths, table)) return false;

    std::array<uint8_t, kMostLiterals + kDistances.size()> lengths{};
    const size_t wanted = literalCount + distanceCount;
    for (size_t i = 0; i < wanted;) {
        const int32_t symbol = TakeSymbol(reader, table);
        if (symbol < 0 || reader.failed) return false;
        if (symbol < 16) {
            lengths[i++] = static_cast<uint8_t>(symbol);
            continue;
        }
        if (symbol == 16 && i == 0) return false;
        const uint8_t repeated = symbol == 16 ? lengths[i - 1] : uint8_t{0};
        const size_t run = symbol == 16   ? 3 + reader.Take(2)
                           : symbol == 17 ? 3 + reader.Take(3)
                                          : 11 + reader.Take(7);
        if (i + run > wanted) return false;
        std::fill_n(lengths.begin() + static_cast<ptrdiff_t>(i), run, repeated);
        i += run;
    }
    const std::span all(lengths);
    return lengths[kBlockEnd] != 0 && MakeTable(all.first(literalCount), literals) &&
           MakeTable(all.subspan(literalCount, distanceCount), distances);
}

// Blocks follow one another until one says that it is the last. Each is stored plainly, or coded with fixed
// tables, or with tables of its own. Every step asks for `size` before it appends, so a damaged stream
// cannot take more memory than the image.
static bool TakeBlocks(BitReader& reader, size_t size, std::string& bytes) {
    CodeTable literals, distances;
    bool isLast = false;
    while (!isLast) {
        isLast = reader.Take(1) != 0;
        const uint32_t kind = reader.Take(2);
        if (reader.failed || kind == 3) return false;
        if (kind == 0) {
            if (!CopyStored(reader, size, bytes)) return false;
            continue;
        }
        if (kind == 1) MakeFixedTables(literals, distances);
        if (kind == 2 && !TakeTables(reader, literals, distances)) return false;
        if (!TakeBlock(reader, literals, distances, size, bytes)) return false;
    }
    return bytes.size() == size;
}

static uint32_t CheckSum(std::string_view bytes) {
    uint32_t low = 1, high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<uint8_t>(byte)) % kCheckSumModulus;
        high = (high + low) % kCheckSumModulus;
    }
    return high << 16 | low;
}

// True for compression method 8 with a window of at most 32 KB and no dictionary; both bytes together are a
// multiple of 31.
static bool IsHeader(std::string_view stream) {
    if (stream.size() < kHeaderBytes) return false;
    const auto method = static_cast<uint8_t>(stream[0]), flags = static_cast<uint8_t>(stream[1]);
    return (method & 15) == 8 && method >> 4 <= 7 && (flags & 32) == 0 && (method * 256 + flags) % 31 == 0;
}

static bool Unpack(std::string_view stream, size_t size, std::string& bytes) {
    if (!IsHeader(stream)) return false;
    BitReader reader{stream.substr(kHeaderBytes)};
    if (!TakeBlocks(reader, size, bytes)) return false;
    reader.SkipToByte();
    uint32_t stored = 0;
    for (size_t i = 0; i < kCheckSumBytes; ++i) stored = stored << 8 | reader.Take(8);
    return !reader.failed && stored == CheckSum(bytes);
}

bool Inflate(std::string_view stream, size_t size, std::string& bytes) {
    bytes.clear();
    if (Unpack(stream, size, bytes)) return true;
    bytes.clear();
    return false;
}
