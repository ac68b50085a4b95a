#include "support/golden.h"

#include "platform/headless/headless.h"
#include "platform/image_decoder.h"
#include "render/frame_buffer.h"
#include "support/image_bytes.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

static std::wstring Path(const std::string& folder, const std::string& name) {
    const std::string path = folder + "/" + name + ".png";
    return {path.begin(), path.end()};
}

bool MatchesGolden(const std::string& name) {
    TestImage drawn{frameBuffer.width, frameBuffer.height, {}};
    for (Pixel pixel : headless.pixels) drawn.argb.push_back(static_cast<uint32_t>(pixel) | 0xFF000000u);

    const std::wstring golden = Path(ZEL_SOURCE_DIR "/tests/golden", name);
    DecodedImage expected;
    if (DecodeImageFile(golden, expected) && expected.width == drawn.width &&
        expected.height == drawn.height && expected.argb == drawn.argb) {
        return true;
    }
    const std::wstring actual = acceptGolden ? golden : Path(ZEL_BINARY_DIR "/golden", name);
    PutFile(actual, PngBytes(drawn));
    MESSAGE("drawn: ", std::string(actual.begin(), actual.end()),
            ", expected: ", std::string(golden.begin(), golden.end()));
    return acceptGolden;
}
