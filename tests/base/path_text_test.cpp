#include "base/path_text.h"

#include "formats/project_file.h"
#include "state/editor_state.h"
#include "support/capture.h"

#include "doctest/doctest.h"

TEST_CASE("a path's last component follows its last separator of either kind") {
    struct {
        const wchar_t *path, *component;
    } cases[] = {{L"C:\\a\\b.obj", L"b.obj"}, {L"a/b\\c/d", L"d"}, {L"plain", L"plain"},
                 {L"C:\\folder\\", L""},      {L"", L""},          {L"\\\\server\\share\\x", L"x"}};
    for (auto [path, component] : cases) CHECK(LastComponent(path) == component);
}

TEST_CASE("the parent of a path names a folder also at a root") {
    struct {
        const wchar_t *path, *parent;
    } cases[] = {{L"C:\\a\\b.obj", L"C:\\a"},
                 {L"C:\\b", L"C:\\"},
                 {L"\\b", L"\\"},
                 {L"b", L""},
                 {L"", L""},
                 {L"a/b", L"a"}};
    for (auto [path, parent] : cases) CHECK(ParentFolder(path) == parent);
}

TEST_CASE("a dot in a folder's name begins no extension") {
    struct {
        const wchar_t *path, *name, *extension;
    } cases[] = {{L"C:\\v1.2\\box", L"box", L""},
                 {L"C:\\v1.2\\box.obj", L"box", L".obj"},
                 {L"archive.tar.gz", L"archive.tar", L".gz"},
                 {L".gitignore", L"", L".gitignore"},
                 {L"noise.", L"noise", L"."},
                 {L"", L"", L""},
                 {L"a.b/c", L"c", L""}};
    for (auto [path, name, extension] : cases) {
        CHECK(NameWithoutExtension(path) == name);
        CHECK(FileExtension(path) == extension);
    }
}

TEST_CASE("a path of thousands of units is taken apart like a short one") {
    const std::wstring folder(5000, L'f');
    CHECK(ParentFolder(folder + L"\\box.obj") == folder);
    CHECK(NameWithoutExtension(folder + L"\\box.obj") == L"box");
}

TEST_CASE("a path becomes relative only when it lies below the project folder") {
    editorState = EditorState{};
    editorState.projectRoot = L"C:\\Game";
    struct {
        const wchar_t *path, *relative;
    } cases[] = {
        {L"C:\\Game\\Files\\a.png", L"Files\\a.png"},
        {L"C:\\Game/Files/a.png", L"Files/a.png"},
        {L"C:\\Game", L""},
        {L"C:\\Game\\", L""},
        {L"C:\\Gam", L"C:\\Gam"},
        {L"C:\\Gama", L"C:\\Gama"},
        {L"C:\\Games\\a.png", L"C:\\Games\\a.png"},
        {L"c:\\game\\a.png", L"c:\\game\\a.png"},
        {L"D:\\Elsewhere\\a.png", L"D:\\Elsewhere\\a.png"},
        {L"", L""},
    };
    for (auto [path, relative] : cases) CHECK(MakeProjectRelative(path) == relative);
}

TEST_CASE("a stored path is joined to the project folder with exactly one separator") {
    struct {
        const wchar_t *folder, *stored, *joined;
    } cases[] = {
        {L"C:\\Game", L"Files\\a.png", L"C:\\Game\\Files\\a.png"},
        {L"C:\\Game\\", L"a.png", L"C:\\Game\\a.png"},
        {L"C:/Game/", L"a.png", L"C:/Game/a.png"},
        {L"C:\\Game", L"", L"C:\\Game"},
        {L"", L"a.png", L"a.png"},
        {L"", L"", L""},
        {L"C:\\Game", L"D:\\a.png", L"C:\\Game\\D:\\a.png"},
    };
    for (auto [folder, stored, joined] : cases) {
        editorState.projectRoot = folder;
        CHECK(JoinProjectPath(stored) == joined);
    }
    editorState = EditorState{};
}

TEST_CASE("a path lies below a folder whatever the case and the kind of separators") {
    struct {
        const wchar_t *path, *folder;
        bool isBelow;
    } cases[] = {
        {L"C:\\a", L"C:\\a", true},      {L"C:\\a\\b", L"C:\\a", true},   {L"C:\\ab", L"C:\\a", false},
        {L"c:/A/b", L"C:\\a", true},     {L"C:\\a\\b", L"C:\\a\\", true}, {L"C:\\a", L"C:\\a\\b", false},
        {L"\\a", L"\\", true},           {L"C:\\a", L"", false},          {L"", L"", false},
        {L"\u0161\\b", L"\u0160", true}, {L"\u0161\\b", L"s", false}};
    for (const auto& [path, folder, isBelow] : cases) {
        CAPTURE(path);
        CHECK(IsAtOrBelow(path, folder) == isBelow);
    }
}

TEST_CASE("a full path begins with a drive, a server's share or a single separator") {
    struct {
        const wchar_t *path, *root;
    } cases[] = {{L"C:\\a\\b", L"C:\\"},
                 {L"C:\\", L"C:\\"},
                 {L"c:/a", L"c:/"},
                 {L"\\\\server\\share\\a\\b", L"\\\\server\\share\\"},
                 {L"\\\\server\\share", L"\\\\server\\share"},
                 {L"\\\\server", L"\\\\server"},
                 {L"\\\\s", L"\\\\s"},
                 {L"\\\\", L"\\"},
                 {L"\\\\\\a", L"\\"},
                 {L"\\a\\b", L"\\"},
                 {L"C:a", L""},
                 {L"a\\b", L""},
                 {L"", L""}};
    for (const auto& [path, root] : cases) CHECK(RootOf(path) == root);
}

TEST_CASE("a file name has no forbidden characters and no spaces around it") {
    CHECK(SanitizeFileName(L"a\\b/c:d*e?f\"g<h>i|j") == L"a_b_c_d_e_f_g_h_i_j");
    CHECK(SanitizeFileName(L"  Level 1.scene ") == L"Level 1.scene");
    CHECK(SanitizeFileName(L" : ") == L"_");
    CHECK(SanitizeFileName(L"  ") == L"");
}

TEST_CASE("only spaces are trimmed, and only at the ends") {
    CHECK(SanitizeFileName(L"a  b") == L"a  b");
    CHECK(SanitizeFileName(L"\ta\t") == L"\ta\t");
    CHECK(SanitizeFileName(L"") == L"");
}

TEST_CASE("names that the system refuses or takes for a device are not usable") {
    for (const wchar_t* name : {L"", L".", L"..", L"a.", L"a ", L"a\tb", L"con", L"CON", L"nul.txt",
                                L"Nul .a.b", L"com1", L"LPT9.scene", L"aux.", L"prn"}) {
        CHECK_FALSE(IsUsableFileName(name));
    }
    for (const wchar_t* name : {L"a", L".gitignore", L"console", L"com", L"com0", L"com10", L"a.con", L"nul_",
                                L"a b", L" a", L"..a"}) {
        CHECK(IsUsableFileName(name));
    }
}
