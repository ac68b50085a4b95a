#include "platform/folders.h"

#include "doctest/doctest.h"
#include "platform/files.h"

TEST_CASE("the executable's path names this program") {
    CHECK(KindOfPath(GetExecutablePath()) == PathKind::File);
    CHECK(GetExecutablePath().ends_with(L"zel_platform_tests.exe"));
}

TEST_CASE("the user's data folder is a full path of a folder") {
    CHECK(KindOfPath(LocalDataFolder()) == PathKind::Folder);
    CHECK(AbsolutePath(LocalDataFolder()) == LocalDataFolder());
}

TEST_CASE("relative paths start from the working folder") {
    CHECK(AbsolutePath(L"a.txt") ==
          WorkingFolder() + (WorkingFolder().ends_with(L"\\") ? L"a.txt" : L"\\a.txt"));
}
