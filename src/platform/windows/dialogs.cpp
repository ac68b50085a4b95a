#include "platform/dialogs.h"

#include "platform/files.h"
#include "platform/windows/main_window.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

#include <string_view>

constexpr FILEOP_FLAGS kIntoRecycleBin =
    FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT;  // no dialog of the system's own
static_assert(kIntoRecycleBin == 1108);
constexpr std::wstring_view kDriveRoot = L"C:\\";  // the shortest path that keeps its last separator

static Answer Ask(const std::wstring& text, const std::wstring& caption, UINT style) {
    switch (MessageBoxW(MainWindow(), text.c_str(), caption.c_str(), style)) {
        case IDYES:
            return Answer::Yes;
        case IDNO:
            return Answer::No;
        default:
            return Answer::Cancel;
    }
}

static bool Execute(const wchar_t* verb, const std::wstring& file, const wchar_t* arguments) {
    const HINSTANCE result =
        ShellExecuteW(MainWindow(), verb, file.c_str(), arguments, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > 32;
}

// With its folder: by its name alone the shell would look in the working folder first.
static std::wstring TextEditorPath() {
    wchar_t folder[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return L"notepad.exe";
    return std::wstring(folder) + L"\\notepad.exe";
}

std::wstring PickFolder(const std::wstring& prompt) {
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

bool RecycleFolder(const std::wstring& path) {
    if (path.empty()) return false;
    std::wstring list = AbsolutePath(path);  // a relative path would be deleted for good
    while (list.size() > kDriveRoot.size() && list.back() == L'\\') list.pop_back();
    list.push_back(L'\0');  // the list of paths ends with an empty one
    SHFILEOPSTRUCTW operation{};
    operation.hwnd = MainWindow();
    operation.wFunc = FO_DELETE;
    operation.pFrom = list.c_str();
    operation.fFlags = kIntoRecycleBin;
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
