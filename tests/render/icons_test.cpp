#include "render/icons.h"

#include "platform/headless/fault_injection.h"
#include "platform/headless/headless.h"
#include "state/editor_state.h"
#include "support/picture.h"
#include "support/scratch_folder.h"
#include "support/source_path.h"

#include "doctest/doctest.h"

constexpr const wchar_t* kNames[] = {L"camera.png",      L"entity.png", L"light.png", L"files.png",
                                     L"c-plus-plus.png", L"scene.png",  L"obj.png",   L"pe.png"};

static std::vector<CanvasImage> AllIcons() {
    return {icons.camera, icons.entity, icons.light, icons.files,
            icons.script, icons.scene,  icons.model, icons.logo};
}

static void StartBeside(const ScratchFolder& folder) {
    StartPicture(50, 50);
    ReleaseCanvasImages();
    icons = {};
    folderAnswers.executablePath = folder / L"program\\ZelEngine.exe";
    folderAnswers.workingFolder = folder / L"work";
}

TEST_CASE("icons beside the executable are preferred to those in the working folder") {
    const ScratchFolder folder;
    StartBeside(folder);
    for (const wchar_t* name : kNames) {
        PutFile(folder / (std::wstring(L"program\\assets\\") + name), "x");
        PutFile(folder / (std::wstring(L"work\\assets\\") + name), "x");
    }
    LoadIcons();
    const std::vector<CanvasImage> loaded = AllIcons();
    for (size_t i = 0; i < 8; ++i) {
        REQUIRE(loaded[i] >= 0);
        DrawImage(loaded[i], {0, 0, 1, 1});
        CHECK(headless.images[i].path == folder / (std::wstring(L"program\\assets\\") + kNames[i]));
    }
    CHECK(headless.windowIcon == folder / L"program\\assets\\pe.png");
}

TEST_CASE("without a folder beside the executable the icons of the working folder are used") {
    const ScratchFolder folder;
    StartBeside(folder);
    PutFile(folder / L"work\\assets\\light.png", "x");
    LoadIcons();
    CHECK(icons.light >= 0);
    CHECK(headless.windowIcon == L"assets\\pe.png");
}

TEST_CASE("each of the program's own icon files is read once, and its pixels become the image") {
    const ScratchFolder folder;
    for (const wchar_t* name : kNames) {
        // Before there is a working folder of the test's own: on Windows this path has no drive.
        const std::string bytes = FileBytes(SourcePath(L"assets/" + std::wstring(name)));
        PutFile(folder / (std::wstring(L"program\\assets\\") + name), bytes);
    }
    StartBeside(folder);
    fileFaults.steps = 0;
    LoadIcons();
    CHECK(fileFaults.steps == 1 + 8);  // where the folder stands, and eight files
    REQUIRE(headless.madeImages.size() == 8);
    for (size_t i = 0; i < 8; ++i) {
        DecodedImage expected;
        REQUIRE(DecodeImageFile(folder / (std::wstring(L"program\\assets\\") + kNames[i]), expected));
        CHECK(headless.madeImages[i].argb == expected.argb);
        DrawImage(AllIcons()[i], {0, 0, 1, 1});
        CHECK(headless.images[i].path == L"made " + std::to_wstring(i + 1));
    }
    CHECK(headless.madeWindowIcon == headless.madeImages[7].argb);
    CHECK(headless.windowIcon.empty());
}

TEST_CASE("a missing icon stays out of the picture without a message") {
    const ScratchFolder folder;
    StartBeside(folder);
    for (const wchar_t* name : kNames) {
        if (name != std::wstring(L"camera.png"))
            PutFile(folder / (std::wstring(L"program\\assets\\") + name), "x");
    }
    const std::wstring before = editorState.statusMessage;
    LoadIcons();
    CHECK(icons.camera == -1);
    CHECK(icons.entity >= 0);
    CHECK(editorState.statusMessage == before);
    DrawImage(icons.camera, {0, 0, 24, 24});
    CHECK(headless.images.empty());
}
