// Whatever the user and the system do to the program's window, the program stays whole and writes nothing
// outside its folders.
#include "app/frame.h"
#include "byte_source.h"
#include "fuzz_input.h"
#include "platform/headless/headless.h"
#include "project/project_hub.h"
#include "project/project_lifecycle.h"
#include "support/editor_input.h"
#include "support/editor_laws.h"
#include "support/random_user.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

constexpr int32_t kMostEvents = 1500;
constexpr const char* kTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
constexpr const char* kObject =
    "O\tCube\t0\t0\t2\t0\t0\t0\t1\t1\t1\tbuiltin:Cube\t0\t-1\t0\t0\t0\t1\t0\t1\t1\t1\t1\t0\t1"
    "\t1\t16777215\t0.5\t0.5\t0\tCollectOnTouch;PlayerController\n";

namespace {
struct StoredFile {
    const char* path;
    const char* text;
};
}  // namespace

// Relative to the working folder.
constexpr StoredFile kFiles[] = {
    {"Project/project.zel", "ZELENGINE_PROJECT\t1\nFILES\tFiles\nCURRENT_SCENE\tFiles\\Scenes\\Main.scene\n"},
    {"Project/Files/a.obj", kTriangle},
    {"Project/Files/a.prefab", kObject},
    {"Project/Files/a.blueprint", "NODE\t1\tEvent BeginPlay\t130\t130\nNODE\t2\tPrint String\t420\t130\n"},
    {"Project/Files/a.cpp", "void Update() {}\n"},
    {"Project/Files/a.bmp", "BM"},
    {"Project/Files/Scenes/Main.scene", kObject},
    {"Project/Files/Scenes/Other.scene", "ZELENGINE_SCENE\t1\n"},
    {"drop/b.obj", kTriangle},
    {"drop/b.txt", "text"},
};

static std::wstring InFolder(const wchar_t* name) { return folderAnswers.workingFolder + L"\\" + name; }

static void PutFiles() {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(FuzzFolderPath(), error)) {
        std::filesystem::remove_all(entry.path(), error);
    }
    for (const auto& [path, text] : kFiles) {
        PutFuzzInput(reinterpret_cast<const uint8_t*>(text), std::char_traits<char>::length(text), path);
    }
}

static void Start(uint32_t where) {
    PutFiles();
    StartEditor(700, 400);
    PutFuzzInput(nullptr, 0, "ZelEngine.exe");
    folderAnswers.executablePath = InFolder(L"ZelEngine.exe");
    resetScene(true);
    ShowHub();
    if (where % 4 == 1) folderAnswers.executablePath = InFolder(L"Project\\ZelGame.exe");
    if (where % 4 == 1 && DetectRuntimeProject()) editorState.hubVisible = false;
    if (where % 4 >= 2) OpenProject(InFolder(L"Project"));
    if (where % 4 == 3) editorState.bottomTab = BottomTab::Files;
    RenderFrame();
}

// Any event at all, as the system could send it.
static void SendAnything(ByteSource& bytes) {
    InputEvent event;
    event.kind = static_cast<InputKind>(bytes.IntBetween(0, static_cast<int32_t>(InputKind::CaptureLost)));
    event.x = bytes.IntBetween(-100, 800);
    event.y = bytes.IntBetween(-100, 500);
    event.key = static_cast<uint32_t>(bytes.IntBetween(0, 300));
    event.isRepeat = bytes.OneIn(8);
    event.character = static_cast<wchar_t>(bytes.IntBetween(0, 0xFFFF));
    headless.controlIsHeld = bytes.OneIn(2);
    headless.shiftIsHeld = bytes.OneIn(2);
    HandleInput(event);
    headless.controlIsHeld = headless.shiftIsHeld = false;
}

static void Drop(ByteSource& bytes) {
    constexpr const wchar_t* kNames[] = {
        L"drop\\b.obj",           L"drop\\b.txt",           L"drop", L"drop\\missing.obj",
        L"Project\\Files\\a.obj", L"Project\\Files\\a.bmp", L""};
    InputEvent event{
        .kind = InputKind::FilesDropped, .x = bytes.IntBetween(0, 700), .y = bytes.IntBetween(0, 400)};
    for (int32_t i = bytes.IntBetween(0, 3); i > 0; --i) {
        event.files.push_back(InFolder(kNames[bytes.IntBetween(0, std::size(kNames) - 1)]));
    }
    HandleInput(event);
}

// What the user will say to the next questions.
static void Decide(ByteSource& bytes) {
    headless.questionAnswers = {static_cast<Answer>(bytes.IntBetween(0, 2))};
    constexpr const wchar_t* kFolders[] = {L"target", L"Project", L"Project\\Files", L"missing\\folder",
                                           L"drop\\b.txt"};
    headless.folderAnswers = {InFolder(kFolders[bytes.IntBetween(0, std::size(kFolders) - 1)])};
}

// What a press does, for which no drag may run.
static void ChangeScreen(ByteSource& bytes) {
    if (headless.mouseIsCaptured) return;
    const auto screen = bytes.IntBetween(0, 3);
    if (screen == 0) ReturnToHub();
    if (screen == 1) OpenProject(InFolder(L"Project"));
    if (screen == 2) editorState.bottomTab = BottomTab::Files;
    // A double click on the list of projects or of files.
    if (screen == 3) DoubleClick({bytes.IntBetween(0, 700), bytes.IntBetween(100, 400)});
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    RandomUser<ByteSource> user{ByteSource(data, size)};
    ByteSource& bytes = user.random;
    Start(bytes.Byte());
    size_t longestName = 80;
    for (int32_t event = 0; event < kMostEvents && !bytes.IsEmpty(); ++event) {
        const bool wasNaming = NameEntryIsOpen();
        switch (bytes.IntBetween(0, 15)) {
            case 0: SendAnything(bytes); break;
            case 1: Drop(bytes); break;
            case 2: Decide(bytes); break;
            case 3: ChangeScreen(bytes); break;
            case 4: RenderFrame(); break;
            default: user.DoSomething();
        }
        if (!wasNaming) longestName = std::max<size_t>(80, editorState.nameEntry.text.size());
        if (const char* fault = FaultInEditor(longestName); fault != nullptr) {
            std::fprintf(stderr, "%s\n", fault);
            std::abort();
        }
    }
    RenderFrame();
    return 0;
}
