#include "scene/file_name.h"

#include "doctest/doctest.h"

TEST_CASE("a file name has no forbidden characters and no spaces around it") {
    CHECK(SanitizeFileName(L"a\\b/c:d*e?f\"g<h>i|j") == L"a_b_c_d_e_f_g_h_i_j");
    CHECK(SanitizeFileName(L"  Level 1.scene ") == L"Level 1.scene");
    CHECK(SanitizeFileName(L" : ") == L"_");
    CHECK(SanitizeFileName(L"  ") == L"");
}
