#include "base/file_name.h"

#include "doctest/doctest.h"

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

TEST_CASE("names that the system does not take, or takes for a device, are not usable") {
    for (const wchar_t* name : {L"", L".", L"..", L"a.", L"a ", L"a\tb", L"con", L"CON", L"nul.txt",
                                L"Nul .a.b", L"com1", L"LPT9.scene", L"aux.", L"prn"}) {
        CHECK_FALSE(IsUsableFileName(name));
    }
    for (const wchar_t* name : {L"a", L".gitignore", L"console", L"com", L"com0", L"com10", L"a.con", L"nul_",
                                L"a b", L" a", L"..a"}) {
        CHECK(IsUsableFileName(name));
    }
}
