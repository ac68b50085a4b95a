#include "formats/texture_file.h"

#include "platform/files.h"
#include "platform/headless/fault_injection.h"
#include "platform/image_decoder.h"
#include "state/editor_state.h"
#include "support/gif_tiff_bytes.h"
#include "support/image_bytes.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>

constexpr auto kFailure = L"Texture image se nepodarilo nacist.";

TEST_CASE("an image becomes a texture with red and blue exchanged, row 0 at the top") {
    const ScratchFolder folder;
    PutFile(folder / L"a.png", PngBytes({2, 2, {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0x80123456}}));
    CHECK(LoadTextureImage(folder / L"a.png") == 0);
    REQUIRE(editorState.textures.size() == 1);
    const TextureImage& texture = editorState.textures[0];
    CHECK(texture.path == folder / L"a.png");
    CHECK(texture.width == 2);
    CHECK(texture.height == 2);
    CHECK(texture.texels ==
          std::vector<Pixel>{Pixel{0x0000FF}, Pixel{0x00FF00}, Pixel{0xFF0000}, Pixel{0x563412}});
}

TEST_CASE("reading an image gives the texture and touches nothing else") {
    const ScratchFolder folder;
    PutFile(folder / L"a.png", PngBytes({1, 1, {0xFF112233}}));
    PutFile(folder / L"b.png", "this is no image");
    editorState.statusMessage.clear();
    TextureImage texture;
    REQUIRE(ReadTextureFile(folder / L"a.png", texture));
    CHECK(texture.path == folder / L"a.png");
    CHECK(texture.texels == std::vector<Pixel>{Pixel{0x332211}});
    CHECK_FALSE(ReadTextureFile(folder / L"b.png", texture));
    CHECK(texture.path == folder / L"a.png");
    CHECK(editorState.textures.empty());
    CHECK(editorState.statusMessage.empty());
}

TEST_CASE("each texture that is read has a mark of its own, which its copies share") {
    const ScratchFolder folder;
    PutFile(folder / L"a.png", PngBytes({1, 1, {0xFF112233}}));
    TextureImage first, again;
    REQUIRE(ReadTextureFile(folder / L"a.png", first));
    REQUIRE(ReadTextureFile(folder / L"a.png", again));
    CHECK(first.identity != nullptr);
    CHECK(again.identity != nullptr);
    CHECK(first.identity != again.identity);
    const TextureImage copy = first;
    CHECK(copy.identity == first.identity);
}

TEST_CASE("a fully transparent pixel of any colour is white") {
    const ScratchFolder folder;
    PutFile(folder / L"a.png", PngBytes({2, 1, {0x00FF0000, 0x01FF0000}}));
    REQUIRE(LoadTextureImage(folder / L"a.png") == 0);
    CHECK(editorState.textures[0].texels == std::vector<Pixel>{Pixel{0xFFFFFF}, Pixel{0x0000FF}});
}

TEST_CASE("different relative paths that name the same file load it once") {
    const ScratchFolder folder;
    folderAnswers.workingFolder = folder.path;
    PutFile(folder / L"images\\a.png", PngBytes({1, 1, {0xFF112233}}));
    PutFile(folder / L"images\\b.png", PngBytes({1, 1, {0xFF445566}}));
    CHECK(LoadTextureImage(L"images\\a.png") == 0);
    CHECK(LoadTextureImage(L"images\\b.png") == 1);
    CHECK(LoadTextureImage(L"images\\..\\images\\.\\a.png") == 0);
    CHECK(LoadTextureImage(folder / L"images\\a.png") == 0);
    CHECK(editorState.textures.size() == 2);
}

TEST_CASE("JPEG and BMP images load like PNG ones") {
    const ScratchFolder folder;
    PutFile(folder / L"a.bmp", BmpBytes({1, 2, {0xFF102030, 0xFF405060}}));
    PutFile(folder / L"a.jpg", JpegBytes({8, 8, std::vector<uint32_t>(64, 0xFFFFFFFF)}));
    REQUIRE(LoadTextureImage(folder / L"a.bmp") == 0);
    CHECK(editorState.textures[0].texels == std::vector<Pixel>{Pixel{0x302010}, Pixel{0x605040}});
    REQUIRE(LoadTextureImage(folder / L"a.jpg") == 1);
    CHECK(editorState.textures[1].texels == std::vector<Pixel>(64, Pixel{0xFFFFFF}));
}

// The header of a bitmap file that promises more than it holds.
static std::string BitmapHeader(uint32_t width, uint32_t height) {
    std::string bytes = "BM" + std::string(52, '\0');
    const auto put = [&bytes](size_t at, uint32_t value) {
        for (size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(value >> (8 * i));
    };
    put(10, 54);  // where the pixels begin
    put(14, 40);  // size of the second header
    put(18, width);
    put(22, height);
    put(26, 1 | 32 << 16);  // planes, bits per pixel
    return bytes;
}

TEST_CASE(
    "an image that is none, is cut short, has an empty side or is far too large is refused with the "
    "message") {
    const ScratchFolder folder;
    const std::string png = PngBytes({16, 16, std::vector<uint32_t>(256, 0xFF123456)});
    PutFile(folder / L"text.png", "this is no image");
    PutFile(folder / L"empty.png", "");
    PutFile(folder / L"half.png", png.substr(0, png.size() / 2));
    PutFile(folder / L"head.png", png.substr(0, 20));
    PutFile(folder / L"zero.bmp", BitmapHeader(0, 5));
    PutFile(folder / L"huge.bmp", BitmapHeader(30000, 30000));
    PutFolder(folder / L"folder.png");
    for (const wchar_t* name : {L"missing.png", L"text.png", L"empty.png", L"half.png", L"head.png",
                                L"zero.bmp", L"huge.bmp", L"folder.png"}) {
        editorState.statusMessage.clear();
        CHECK(LoadTextureImage(folder / name) == -1);
        CHECK(editorState.statusMessage == kFailure);
    }
    CHECK(editorState.textures.empty());
}

TEST_CASE("an image of one pixel more than 64 million is refused") {
    const ScratchFolder folder;
    PutFile(folder / L"large.bmp", BitmapHeader(4'923'077, 13));
    static_assert(int64_t{4'923'077} * 13 == kMaxImagePixels + 1);
    CHECK(LoadTextureImage(folder / L"large.bmp") == -1);
    CHECK(editorState.statusMessage == kFailure);
}

TEST_CASE("no image is read twice in a row of loads, whether it could be loaded or not") {
    const ScratchFolder folder;
    const std::string png = PngBytes({1, 1, {0xFF112233}});
    PutFile(folder / L"old.png", png);
    PutFile(folder / L"new.png", png);
    CHECK(LoadTextureImage(folder / L"old.png") == 0);

    KnownTextures known = LoadedTextures();
    CHECK(known == KnownTextures{{folder / L"old.png", 0}});
    CHECK(LoadTextureImage(folder / L"new.png", known) == 1);
    CHECK(LoadTextureImage(folder / L"late.png", known) == -1);
    const int32_t steps = fileFaults.steps;
    PutFile(folder / L"late.png", png);
    editorState.statusMessage.clear();
    CHECK(LoadTextureImage(folder / L"old.png", known) == 0);
    CHECK(LoadTextureImage(folder / L".\\new.png", known) == 1);
    CHECK(editorState.statusMessage == L"");
    CHECK(LoadTextureImage(folder / L"late.png", known) == -1);
    CHECK(editorState.statusMessage == kFailure);
    CHECK(fileFaults.steps == steps);
    CHECK(editorState.textures.size() == 2);
}

TEST_CASE("an image that failed to load may be tried again") {
    const ScratchFolder folder;
    CHECK(LoadTextureImage(folder / L"late.png") == -1);
    PutFile(folder / L"late.png", PngBytes({1, 1, {0xFF000000}}));
    CHECK(LoadTextureImage(folder / L"late.png") == 0);
}

TEST_CASE("an image is loaded by its content, whatever its extension says") {
    const std::vector<uint32_t> pixels{0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF, 0xFF0000, 0x0000FF};
    std::string fromTheTop = BmpBytes({1, 2, {0xFF0000FF, 0xFFFF0000}});
    const size_t firstRow = 54;
    fromTheTop.replace(22, 4, "\xFE\xFF\xFF\xFF");  // minus 2
    std::swap_ranges(fromTheTop.begin() + firstRow, fromTheTop.begin() + firstRow + 4,
                     fromTheTop.begin() + firstRow + 4);
    for (const wchar_t* name : {L"a.png", L"a.jpg", L"a.jpeg", L"a.bmp"}) {
        const ScratchFolder folder;
        PutFile(folder / name, GifFile(3, 2, pixels));
        REQUIRE(LoadTextureImage(folder / name) == 0);
        const TextureImage& texture = editorState.textures[0];
        CHECK(texture.width == 3);
        CHECK(texture.height == 2);
        // Red and blue are exchanged.
        CHECK(texture.texels == std::vector<Pixel>{Pixel{0x0000FF}, Pixel{0x00FF00}, Pixel{0xFF0000},
                                                   Pixel{0xFFFFFF}, Pixel{0x0000FF}, Pixel{0xFF0000}});
        PutFile(folder / L"top.png", fromTheTop);
        REQUIRE(LoadTextureImage(folder / L"top.png") == 1);
        CHECK(editorState.textures[1].texels == std::vector<Pixel>{Pixel{0xFF0000}, Pixel{0x0000FF}});
    }
}
