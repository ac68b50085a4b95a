#include "support/golden.h"

#include "base/path_text.h"
#include "formats/text_file.h"
#include "platform/headless/headless.h"
#include "platform/image_decoder.h"
#include "render/frame_buffer.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

static std::wstring Path(const std::string& folder, const std::string& file) {
    const std::string path = folder + "/" + file;
    return {path.begin(), path.end()};
}

static std::wstring GoldenPath(const std::string& file) { return Path(ZEL_SOURCE_DIR "/tests/golden", file); }

// Keeps what was drawn instead of the golden file. True when it becomes the golden one.
static bool Keep(const std::string& file, const std::string& bytes, const std::string& difference) {
    const std::wstring golden = GoldenPath(file);
    const std::wstring actual = acceptGolden ? golden : Path(ZEL_BINARY_DIR "/golden", file);
    PutFile(actual, bytes);
    MESSAGE(file, ": ", difference);
    MESSAGE("drawn: ", std::string(actual.begin(), actual.end()),
            ", expected: ", std::string(golden.begin(), golden.end()));
    return acceptGolden;
}

static std::string Color(uint32_t argb) {
    std::ostringstream text;
    text << "0x" << std::hex << std::uppercase << std::setw(8) << std::setfill('0') << argb;
    return text.str();
}

std::string PictureDifference(const DecodedImage& expected, const TestImage& drawn) {
    std::ostringstream text;
    if (expected.width != drawn.width || expected.height != drawn.height) {
        text << "expected " << expected.width << " by " << expected.height << " pixels, drawn " << drawn.width
             << " by " << drawn.height;
        return text.str();
    }
    Rect around{drawn.width, drawn.height, 0, 0};
    size_t count = 0, first = 0;
    for (int32_t y = 0; y < drawn.height; ++y) {
        for (int32_t x = 0; x < drawn.width; ++x) {
            const size_t i =
                static_cast<size_t>(y) * static_cast<size_t>(drawn.width) + static_cast<size_t>(x);
            if (expected.argb[i] == drawn.argb[i]) continue;
            if (count++ == 0) first = i;
            around = {std::min(around.left, x), std::min(around.top, y), std::max(around.right, x + 1),
                      std::max(around.bottom, y + 1)};
        }
    }
    if (count == 0) return "";
    const size_t width = static_cast<size_t>(drawn.width);
    text << count << " pixels differ, all from (" << around.left << ", " << around.top << ") to before ("
         << around.right << ", " << around.bottom << "); the first, (" << first % width << ", "
         << first / width << "), is " << Color(drawn.argb[first]) << " and not "
         << Color(expected.argb[first]);
    return text.str();
}

std::string LineDifference(const std::string& expected, const std::string& drawn) {
    std::istringstream expectedLines(expected), drawnLines(drawn);
    for (size_t number = 1;; ++number) {
        std::string one, other;
        const bool isExpected = static_cast<bool>(std::getline(expectedLines, one));
        const bool isDrawn = static_cast<bool>(std::getline(drawnLines, other));
        if (!isExpected && !isDrawn) return expected == drawn ? "" : "the last line ends otherwise";
        if (isExpected == isDrawn && one == other) continue;
        return "line " + std::to_string(number) + " is " + (isDrawn ? "'" + other + "'" : "missing") +
               " and " + (isExpected ? "not '" + one + "'" : "should be missing");
    }
}

bool MatchesGolden(const std::string& name) {
    TestImage drawn{frameBuffer.width, frameBuffer.height, {}};
    for (Pixel pixel : headless.pixels) drawn.argb.push_back(static_cast<uint32_t>(pixel) | 0xFF000000u);

    DecodedImage expected;
    const bool isThere = DecodeImageFile(GoldenPath(name + ".png"), expected);
    const std::string difference = isThere ? PictureDifference(expected, drawn) : "no such picture yet";
    return difference.empty() || Keep(name + ".png", PngBytes(drawn), difference);
}

static std::string ListOfTextsAndImages() {
    std::ostringstream list;
    for (const DrawnText& text : headless.texts) {
        const auto color = static_cast<uint32_t>(text.color);
        list << "text " << text.x << ' ' << text.y << ' ' << std::hex << std::uppercase << std::setw(6)
             << std::setfill('0') << color << std::dec << ' ' << text.height << ' ' << text.weight << ' '
             << EncodeUtf8(text.text) << '\n';
    }
    for (const DrawnImage& image : headless.images) {
        const auto [left, top, right, bottom] = image.rect;
        list << "image " << left << ' ' << top << ' ' << right << ' ' << bottom << ' '
             << EncodeUtf8(LastComponent(image.path)) << '\n';
    }
    return list.str();
}

bool MatchesGoldenText(const std::string& name) {
    const std::string drawn = ListOfTextsAndImages();
    const std::string difference = LineDifference(FileBytes(GoldenPath(name + ".txt")), drawn);
    return difference.empty() || Keep(name + ".txt", drawn, difference);
}
