#include "support/golden.h"

#include "base/path_text.h"
#include "formats/text_file.h"
#include "platform/headless/headless.h"
#include "platform/image_decoder.h"
#include "render/frame_buffer.h"
#include "support/image_bytes.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <iomanip>
#include <sstream>

static std::wstring Path(const std::string& folder, const std::string& file) {
    const std::string path = folder + "/" + file;
    return {path.begin(), path.end()};
}

static std::wstring GoldenPath(const std::string& file) { return Path(ZEL_SOURCE_DIR "/tests/golden", file); }

// Keeps what was drawn instead of the golden file. True when it becomes the golden one.
static bool Keep(const std::string& file, const std::string& bytes) {
    const std::wstring golden = GoldenPath(file);
    const std::wstring actual = acceptGolden ? golden : Path(ZEL_BINARY_DIR "/golden", file);
    PutFile(actual, bytes);
    MESSAGE("drawn: ", std::string(actual.begin(), actual.end()),
            ", expected: ", std::string(golden.begin(), golden.end()));
    return acceptGolden;
}

bool MatchesGolden(const std::string& name) {
    TestImage drawn{frameBuffer.width, frameBuffer.height, {}};
    for (Pixel pixel : headless.pixels) drawn.argb.push_back(static_cast<uint32_t>(pixel) | 0xFF000000u);

    DecodedImage expected;
    if (DecodeImageFile(GoldenPath(name + ".png"), expected) && expected.width == drawn.width &&
        expected.height == drawn.height && expected.argb == drawn.argb) {
        return true;
    }
    return Keep(name + ".png", PngBytes(drawn));
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
    return FileBytes(GoldenPath(name + ".txt")) == drawn || Keep(name + ".txt", drawn);
}
