#include "platform/windows/image_files.h"

#include <algorithm>

static void AppendBigEndian(std::string& bytes, uint32_t value) {
    for (int32_t shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<char>(value >> shift));
}

static void AppendLittleEndian(std::string& bytes, uint32_t value, int32_t count) {
    for (int32_t i = 0; i < count; ++i) bytes.push_back(static_cast<char>(value >> (8 * i)));
}

static uint32_t Crc32(const std::string& bytes) {
    uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<uint8_t>(byte);
        for (int32_t bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

static uint32_t Adler32(const std::string& bytes) {
    uint32_t low = 1, high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<uint8_t>(byte)) % 65521;
        high = (high + low) % 65521;
    }
    return high << 16 | low;
}

// Compressed in name only: every block is stored.
static std::string StoredZlib(const std::string& bytes) {
    constexpr size_t kBlock = 65535;
    std::string out = "\x78\x01";
    for (size_t start = 0; start < bytes.size() || start == 0; start += kBlock) {
        const size_t size = std::min(kBlock, bytes.size() - start);
        out.push_back(start + size == bytes.size() ? 1 : 0);
        AppendLittleEndian(out, static_cast<uint32_t>(size), 2);
        AppendLittleEndian(out, ~static_cast<uint32_t>(size), 2);
        out.append(bytes, start, size);
    }
    AppendBigEndian(out, Adler32(bytes));
    return out;
}

static void AppendChunk(std::string& png, const std::string& type, const std::string& data) {
    AppendBigEndian(png, static_cast<uint32_t>(data.size()));
    png += type + data;
    AppendBigEndian(png, Crc32(type + data));
}

std::string PngFile(uint32_t width, uint32_t height, uint8_t bitDepth, uint8_t colorType,
                    const std::vector<std::string>& rows) {
    std::string header;
    AppendBigEndian(header, width);
    AppendBigEndian(header, height);
    header.push_back(static_cast<char>(bitDepth));
    header.push_back(static_cast<char>(colorType));
    header.append(3, '\0');

    std::string samples;
    for (const std::string& row : rows) samples += '\0' + row;  // no filter

    std::string png = "\x89PNG\r\n\x1A\n";
    AppendChunk(png, "IHDR", header);
    AppendChunk(png, "IDAT", StoredZlib(samples));
    AppendChunk(png, "IEND", "");
    return png;
}

std::string BmpFile(int32_t width, int32_t height, const std::vector<uint32_t>& pixels) {
    const int32_t padding = (4 - width * 3 % 4) % 4;
    std::string data;
    for (int32_t y = height - 1; y >= 0; --y) {  // rows run from the bottom
        for (int32_t x = 0; x < width; ++x) {
            AppendLittleEndian(data, pixels[static_cast<size_t>(y * width + x)], 3);
        }
        data.append(static_cast<size_t>(padding), '\0');
    }

    std::string bmp = "BM";
    AppendLittleEndian(bmp, static_cast<uint32_t>(54 + data.size()), 4);
    AppendLittleEndian(bmp, 0, 4);
    AppendLittleEndian(bmp, 54, 4);
    AppendLittleEndian(bmp, 40, 4);
    AppendLittleEndian(bmp, static_cast<uint32_t>(width), 4);
    AppendLittleEndian(bmp, static_cast<uint32_t>(height), 4);
    AppendLittleEndian(bmp, 1, 2);
    AppendLittleEndian(bmp, 24, 2);
    bmp.append(24, '\0');
    return bmp + data;
}
