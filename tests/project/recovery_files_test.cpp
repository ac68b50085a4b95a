#include "project/recovery_files.h"

#include "doctest/doctest.h"

#include <string>

TEST_CASE("a recovery is named by sixteen digits made from its scene's path in any case of letters") {
    // FNV-1a of 64 bits over the bytes 65 and 0 of "A", reckoned apart from the program:
    // ((14695981039346656037 xor 65) * p xor 0) * p modulo 2^64, with p = 1099511628211.
    CHECK(RecoveryStem(L"") == L"cbf29ce484222325");
    CHECK(RecoveryStem(L"a") == L"0908a207b5a15704");
    CHECK(RecoveryStem(L"ab") == L"acb6188cd5c60c36");  // and 66 and 0
    CHECK(RecoveryStem(L"A") == RecoveryStem(L"a"));
    CHECK(RecoveryStem(L"C:\\\u0161kola") == RecoveryStem(L"c:\\\u0160KOLA"));
    CHECK(RecoveryStem(L"C:\\a\\Main.scene") != RecoveryStem(L"C:\\b\\Main.scene"));
}

TEST_CASE("the first line of a recovery names what it is about, and no other line does") {
    CHECK(RecoveredPath(RecoveryLine(L"C:\\a\\Main.scene")) == L"C:\\a\\Main.scene");
    CHECK(RecoveredPath(L"ZELENGINE_SCENE\t1").empty());
    CHECK(RecoveredPath(L"").empty());
}

TEST_CASE("the copy that the user finds is named after the file") {
    CHECK(RecoveredStem(L"C:\\a\\Main.scene") == L"Main_neulozeno");
    CHECK(RecoveredStem(L"C:\\a\\Coin.v2.prefab") == L"Coin.v2_neulozeno");
}

TEST_CASE("at most twenty recoveries and 200 MB stay, and the oldest go first") {
    std::vector<RecoveryFacts> files;
    for (int64_t i = 0; i < 25; ++i) files.push_back({L"f" + std::to_wstring(i), 10, i});
    CHECK(SurplusRecoveries(files) == std::vector<std::wstring>{L"f0", L"f1", L"f2", L"f3", L"f4"});
    files.resize(20);
    CHECK(SurplusRecoveries(files).empty());

    CHECK(
        SurplusRecoveries({{L"new", 150'000'000, 3}, {L"old", 60'000'000, 1}, {L"middle", 50'000'000, 2}}) ==
        std::vector<std::wstring>{L"old"});
    // An older one does not stay just because it is smaller than one that has gone.
    CHECK(SurplusRecoveries({{L"new", 1, 3}, {L"huge", 200'000'000, 2}, {L"old", 1, 1}}) ==
          std::vector<std::wstring>{L"old", L"huge"});
}
