#include "platform/dialogs.h"

#include "platform/files.h"
#include "platform/windows/file_calls.h"
#include "platform/windows/main_window.h"
#include "platform/windows/recycle_bin.h"

#include <windows.h>

#include <immintrin.h>
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

#include <string_view>

constexpr FILEOP_FLAGS kIntoRecycleBin =
    FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT;  // no dialog of the system's own
static_assert(kIntoRecycleBin == 1108);
// But one before anything is deleted for good that the bin was expected to take.
constexpr FILEOP_FLAGS kNeverForGood = kIntoRecycleBin | FOF_WANTNUKEWARNING;
constexpr unsigned kDefaultRounding = 0x1F80;  // of MXCSR: to nearest, denormal numbers kept, no exceptions
constexpr std::wstring_view kDriveRoot = L"C:\\";  // the shortest path that keeps its last separator

namespace {

// Lives as long as a dialog of the system. Extensions of the shell run in it, and some leave the processor
// computing in another way: the same scene would give other pixels afterwards.
struct SystemDialog {
    SystemDialog() = default;
    ~SystemDialog() { _mm_setcsr(kDefaultRounding); }
    SystemDialog(const SystemDialog&) = delete;
    SystemDialog& operator=(const SystemDialog&) = delete;
};

}  // namespace

static Answer Ask(const std::wstring& text, const std::wstring& caption, UINT style) {
    const SystemDialog dialog;
    switch (MessageBoxW(MainWindow(), text.c_str(), caption.c_str(), style)) {
        case IDYES: return Answer::Yes;
        case IDNO: return Answer::No;
        default: return Answer::Cancel;
    }
}

// False when nothing opens the file. A user who is asked with what and wants nothing has had an answer.
static bool Execute(const wchar_t* verb, const std::wstring& file, const wchar_t* arguments) {
    const SystemDialog dialog;
    SHELLEXECUTEINFOW call{};
    call.cbSize = sizeof call;
    call.fMask = SEE_MASK_FLAG_NO_UI;
    call.hwnd = MainWindow();
    call.lpVerb = verb;
    call.lpFile = file.c_str();
    call.lpParameters = arguments;
    call.nShow = SW_SHOWNORMAL;
    return IsAnswered(ShellExecuteExW(&call), GetLastError());
}

// With its folder: by its name alone the shell would look in the working folder first.
static std::wstring TextEditorPath() {
    wchar_t folder[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return L"notepad.exe";
    return std::wstring(folder) + L"\\notepad.exe";
}

std::wstring PickFolder(const std::wstring& prompt) {
    const SystemDialog dialog;
    wchar_t shownName[MAX_PATH] = {};
    BROWSEINFOW browse{};
    browse.hwndOwner = MainWindow();
    browse.pszDisplayName = shownName;
    browse.lpszTitle = prompt.c_str();
    browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    const PIDLIST_ABSOLUTE chosen = SHBrowseForFolderW(&browse);
    if (!chosen) return {};

    wchar_t path[MAX_PATH] = {};
    const bool isFolder = SHGetPathFromIDListW(chosen, path);
    CoTaskMemFree(chosen);
    return isFolder ? path : L"";
}

Answer AskYesNo(const std::wstring& text, const std::wstring& caption) {
    return Ask(text, caption, MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2);
}

Answer AskYesNoCancel(const std::wstring& text, const std::wstring& caption) {
    return Ask(text, caption, MB_YESNOCANCEL | MB_ICONQUESTION);
}

void TellError(const wchar_t* text, const wchar_t* caption) {
    MessageBoxW(MainWindow(), text, caption, MB_OK | MB_ICONERROR);
}

namespace {

// Keeps the user's clicks and keys from the window while the system runs its messages.
class InputPause {
public:
    InputPause() : window(MainWindow()), focus(GetFocus()) {
        if (window) EnableWindow(window, FALSE);
    }
    ~InputPause() {
        if (window) EnableWindow(window, TRUE);
        if (focus && focus == window) SetFocus(focus);
    }
    InputPause(const InputPause&) = delete;
    InputPause& operator=(const InputPause&) = delete;

private:
    HWND window = nullptr, focus = nullptr;
};

}  // namespace

bool RecycleFolder(const std::wstring& path) {
    if (path.empty()) return false;
    std::wstring list = AbsolutePath(path);  // a relative path would be deleted for good
    while (list.size() > kDriveRoot.size() && list.back() == L'\\') list.pop_back();
    if (KindOfPath(list) != PathKind::Folder || !GoesToBin(FindRecycleFacts(list))) return false;
    list.push_back(L'\0');  // the list of paths ends with an empty one
    const SystemDialog dialog;
    SHFILEOPSTRUCTW operation{};
    operation.hwnd = MainWindow();
    operation.wFunc = FO_DELETE;
    operation.pFrom = list.c_str();
    operation.fFlags = kNeverForGood;
    const InputPause pause;
    return SHFileOperationW(&operation) == 0 && !operation.fAnyOperationsAborted;
}

bool OpenWithSystem(const std::wstring& path, bool isScript) {
    const std::wstring file = AbsolutePath(path);
    if (Execute(L"open", file, nullptr)) return true;
    if (Execute(L"openas", file, nullptr)) return true;
    if (!isScript) return false;
    const std::wstring quoted = L"\"" + file + L"\"";
    return Execute(L"open", TextEditorPath(), quoted.c_str());
}
