#include "platform/dialogs.h"

#include "doctest/doctest.h"
#include "platform/files.h"
#include "platform/window.h"
#include "platform/windows/file_calls.h"
#include "platform/windows/main_window.h"
#include "platform/windows/recycle_bin.h"
#include "platform/windows/test_folder.h"

#include <windows.h>

#include <immintrin.h>
#include <shlobj.h>

#include <cstdint>
#include <vector>

namespace {

// What a message box showed, and the button that answers it.
struct ShownBox {
    int button = 0;
    std::wstring caption{}, text{};
    int defaultButton = 0;
    bool hasCancel = false;
    std::vector<uint32_t> picture{};  // of its icon, 0x00RRGGBB on white
};

ShownBox box;

}  // namespace

static std::wstring WindowText(HWND window) {
    wchar_t text[512] = {};
    GetWindowTextW(window, text, 512);
    return text;
}

// What an icon looks like, 32 x 32. Handles say nothing: a system may give a box a copy of its own.
static std::vector<uint32_t> PictureOf(HICON icon) {
    constexpr int kSize = 32;
    BITMAPINFO format{};
    format.bmiHeader = {.biSize = sizeof(BITMAPINFOHEADER),
                        .biWidth = kSize,
                        .biHeight = -kSize,
                        .biPlanes = 1,
                        .biBitCount = 32,
                        .biCompression = BI_RGB};
    const HDC device = CreateCompatibleDC(nullptr);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(device, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(device, bitmap);
    const RECT whole{0, 0, kSize, kSize};
    FillRect(device, &whole, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    DrawIconEx(device, 0, 0, icon, kSize, kSize, 0, nullptr, DI_NORMAL);
    GdiFlush();
    const auto* pixels = static_cast<const uint32_t*>(bits);
    std::vector<uint32_t> picture(pixels, pixels + kSize * kSize);
    for (uint32_t& pixel : picture) pixel &= 0xFFFFFF;
    SelectObject(device, before);
    DeleteObject(bitmap);
    DeleteDC(device);
    return picture;
}

// Runs in the box's own message loop: looks at the box and presses the button.
static void CALLBACK AnswerBox(HWND, UINT, UINT_PTR, DWORD) {
    const HWND dialog = FindWindowW(L"#32770", nullptr);
    if (!dialog || !IsWindowVisible(dialog)) return;
    box.caption = WindowText(dialog);
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const auto icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
        if (icon) box.picture = PictureOf(icon);
        if (GetDlgCtrlID(child) == 0xFFFF && !WindowText(child).empty()) box.text = WindowText(child);
        if (GetDlgCtrlID(child) == IDCANCEL) box.hasCancel = true;
    }
    box.defaultButton = GetDlgCtrlID(GetFocus());
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(box.button), 0);
}

template <typename Ask>
static Answer AnswerWith(int button, Ask ask) {
    box = {.button = button};
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, AnswerBox);
    const Answer answer = ask(L"Smazat?\n\nC:\\a", L"ZelEngine");
    KillTimer(nullptr, timer);
    return answer;
}

TEST_CASE("a yes or no question warns, and No is its default") {
    CHECK(AnswerWith(IDYES, AskYesNo) == Answer::Yes);
    CHECK(box.caption == L"ZelEngine");
    CHECK(box.text == L"Smazat?\n\nC:\\a");
    CHECK(box.defaultButton == IDNO);
    CHECK_FALSE(box.hasCancel);
    CHECK(box.picture == PictureOf(LoadIconW(nullptr, IDI_WARNING)));
    CHECK(AnswerWith(IDNO, AskYesNo) == Answer::No);
}

TEST_CASE("a yes, no or cancel question asks, and Yes is its default") {
    CHECK(AnswerWith(IDYES, AskYesNoCancel) == Answer::Yes);
    CHECK(box.defaultButton == IDYES);
    CHECK(box.hasCancel);
    CHECK(box.picture == PictureOf(LoadIconW(nullptr, IDI_QUESTION)));
    CHECK(box.picture != PictureOf(LoadIconW(nullptr, IDI_WARNING)));
    CHECK(AnswerWith(IDNO, AskYesNoCancel) == Answer::No);
    CHECK(AnswerWith(IDCANCEL, AskYesNoCancel) == Answer::Cancel);
}

TEST_CASE("a recycled folder is gone with all that it holds") {
    const TestFolder folder;
    for (const wchar_t* ending : {L"", L"\\"}) {
        REQUIRE(MakeFolders(folder / L"project\\Files"));
        REQUIRE(WriteWholeFile(folder / L"project\\Files\\a.txt", "text"));
        REQUIRE(WriteWholeFile(folder / L"project2", "stays"));
        CHECK(RecycleFolder(folder / L"project" + ending));
        CHECK(KindOfPath(folder / L"project") == PathKind::Missing);
        CHECK(KindOfPath(folder / L"project2") == PathKind::File);
    }
}

TEST_CASE("a folder goes to the bin of a fixed drive that is on and large enough, and nowhere else") {
    const RecycleFacts good{
        .driveKind = DRIVE_FIXED, .binAnswers = true, .largestBytes = 1000, .folderBytes = 1000};
    CHECK(GoesToBin(good));
    for (const UINT kind :
         {DRIVE_UNKNOWN, DRIVE_NO_ROOT_DIR, DRIVE_REMOVABLE, DRIVE_REMOTE, DRIVE_CDROM, DRIVE_RAMDISK}) {
        RecycleFacts facts = good;
        facts.driveKind = kind;
        CHECK_FALSE(GoesToBin(facts));
    }
    RecycleFacts silent = good, off = good, full = good;
    silent.binAnswers = false;
    off.isSwitchedOff = true;
    full.folderBytes = 1001;
    CHECK_FALSE(GoesToBin(silent));
    CHECK_FALSE(GoesToBin(off));
    CHECK_FALSE(GoesToBin(full));
}

TEST_CASE("the size of a folder is that of all files below it") {
    const TestFolder folder;
    REQUIRE(MakeFolders(folder / L"project\\Files\\Scenes"));
    REQUIRE(WriteWholeFile(folder / L"project\\a.txt", "12345"));
    REQUIRE(WriteWholeFile(folder / L"project\\Files\\b.txt", "123"));
    REQUIRE(WriteWholeFile(folder / L"project\\Files\\Scenes\\c.txt", "1"));
    CHECK(FindRecycleFacts(folder / L"project").folderBytes == 9);
}

TEST_CASE("a folder whose bin the user has switched off is not deleted") {
    constexpr wchar_t kRules[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Explorer";
    const TestFolder folder;
    REQUIRE(MakeFolders(folder / L"project"));
    const DWORD on = 1;
    REQUIRE(RegSetKeyValueW(HKEY_CURRENT_USER, kRules, L"NoRecycleFiles", REG_DWORD, &on, sizeof on) ==
            ERROR_SUCCESS);
    CHECK_FALSE(RecycleFolder(folder / L"project"));
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kRules, L"NoRecycleFiles");

    CHECK(KindOfPath(folder / L"project") == PathKind::Folder);
    CHECK(RecycleFolder(folder / L"project"));
}

TEST_CASE("a user who closes the question with what to open a file has answered it") {
    CHECK(IsAnswered(true, ERROR_SUCCESS));
    CHECK(IsAnswered(false, ERROR_CANCELLED));
    for (const DWORD error : {ERROR_FILE_NOT_FOUND, ERROR_NO_ASSOCIATION, ERROR_ACCESS_DENIED}) {
        CHECK_FALSE(IsAnswered(false, error));
    }
}

TEST_CASE("a dialog leaves the processor rounding as before") {
    const auto ask = [](const std::wstring& text, const std::wstring& caption) {
        _mm_setcsr(_mm_getcsr() | _MM_FLUSH_ZERO_ON | _MM_ROUND_TOWARD_ZERO);  // as an extension would
        return AskYesNo(text, caption);
    };
    CHECK(AnswerWith(IDYES, ask) == Answer::Yes);
    CHECK((_mm_getcsr() & ~_MM_EXCEPT_MASK) == 0x1F80);
}

TEST_CASE("a missing folder cannot be recycled") {
    const TestFolder folder;
    CHECK_FALSE(RecycleFolder(folder / L"missing"));
    CHECK_FALSE(RecycleFolder(L""));
}

TEST_CASE("nothing opens a missing file") {
    const TestFolder folder;
    CHECK_FALSE(OpenWithSystem(folder / L"missing.txt", false));
}

// What the window was told about being enabled, in order.
static std::vector<bool> enabled;

// Sees every message that is sent to a window of the thread.
static LRESULT CALLBACK WatchForEnabling(int code, WPARAM wParam, LPARAM lParam) {
    const auto* const message = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (message->message == WM_ENABLE && message->hwnd == MainWindow())
        enabled.push_back(message->wParam != 0);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_CASE("while a folder goes into the recycle bin, the window takes no input") {
    const TestFolder folder;
    REQUIRE(MakeFolders(folder / L"project"));
    REQUIRE(OpenMainWindow(L"ZelEngine", {400, 300}));
    PumpMessages();
    enabled.clear();
    const HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, WatchForEnabling, nullptr, GetCurrentThreadId());
    CHECK(RecycleFolder(folder / L"project"));
    UnhookWindowsHookEx(hook);
    REQUIRE(enabled.size() >= 2);
    CHECK_FALSE(enabled.front());
    CHECK(enabled.back());
    CHECK(IsWindowEnabled(MainWindow()));
    DestroyWindow(MainWindow());
    PumpMessages();
}
