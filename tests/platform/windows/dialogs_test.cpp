#include "platform/dialogs.h"

#include "doctest/doctest.h"
#include "platform/files.h"
#include "platform/windows/test_folder.h"

#include <windows.h>

#include <shlobj.h>

namespace {

// What a message box showed, and the button that answers it.
struct ShownBox {
    int button = 0;
    std::wstring caption{}, text{};
    int defaultButton = 0;
    bool hasCancel = false;
    HICON icon = nullptr;
};

ShownBox box;

}  // namespace

static std::wstring WindowText(HWND window) {
    wchar_t text[512] = {};
    GetWindowTextW(window, text, 512);
    return text;
}

// Runs in the box's own message loop: looks at the box and presses the button.
static void CALLBACK AnswerBox(HWND, UINT, UINT_PTR, DWORD) {
    const HWND dialog = FindWindowW(L"#32770", nullptr);
    if (!dialog || !IsWindowVisible(dialog)) return;
    box.caption = WindowText(dialog);
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const auto icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
        if (icon) box.icon = icon;
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
    CHECK(box.icon == LoadIconW(nullptr, IDI_WARNING));
    CHECK(AnswerWith(IDNO, AskYesNo) == Answer::No);
}

TEST_CASE("a yes, no or cancel question asks, and Yes is its default") {
    CHECK(AnswerWith(IDYES, AskYesNoCancel) == Answer::Yes);
    CHECK(box.defaultButton == IDYES);
    CHECK(box.hasCancel);
    CHECK(box.icon == LoadIconW(nullptr, IDI_QUESTION));
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

TEST_CASE("what is not there cannot be recycled") {
    const TestFolder folder;
    CHECK_FALSE(RecycleFolder(folder / L"missing"));
    CHECK_FALSE(RecycleFolder(L""));
}

TEST_CASE("a file that is not there is opened by nothing") {
    const TestFolder folder;
    CHECK_FALSE(OpenWithSystem(folder / L"missing.txt", false));
}
