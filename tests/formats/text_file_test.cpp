#include "formats/text_file.h"

#include "platform/headless/fault_injection.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

using namespace std::string_literals;

// The lines of a file that holds `bytes`.
static std::vector<std::wstring> Lines(std::string_view bytes, size_t bufferSize = 8192) {
    const ScratchFolder folder;
    PutFile(folder / L"file.txt", bytes);
    TextFile file;
    REQUIRE(ReadTextFile(folder / L"file.txt", file));
    std::vector<std::wstring> lines;
    std::wstring_view line;
    while (NextLine(file, bufferSize, line)) lines.emplace_back(line);
    return lines;
}

static std::wstring FirstLine(std::string_view bytes) {
    const auto lines = Lines(bytes);
    REQUIRE(lines.size() == 1);
    return lines[0];
}

using TextLines = std::vector<std::wstring>;

TEST_CASE("lines are read with and without a byte-order mark, with CR LF and with LF") {
    CHECK(Lines("\xEF\xBB\xBFone\r\ntwo\r\n") == TextLines{L"one", L"two"});
    CHECK(Lines("one\ntwo\n") == TextLines{L"one", L"two"});
    CHECK(Lines("one\ntwo") == TextLines{L"one", L"two"});
    CHECK(Lines("") == TextLines{});
    CHECK(Lines("\xEF\xBB\xBF") == TextLines{});
    CHECK(Lines("\n\n") == TextLines{L"", L""});
}

TEST_CASE("every CR at the end of a line is dropped, and one inside the line stays") {
    CHECK(Lines("a\r\r\r\nb\rc\r\n\r") == TextLines{L"a", L"b\rc", L""});
}

TEST_CASE("a byte-order mark counts only at the file's start") {
    CHECK(Lines("a\n\xEF\xBB\xBF"
                "b\n") == TextLines{L"a",
                                    L"\xFEFF"
                                    L"b"});
    CHECK(Lines("\xEF\xBB\xBF\xEF\xBB\xBF"
                "a") == TextLines{L"\xFEFF"
                                  L"a"});
}

TEST_CASE("U+001A and NUL are characters like any other") {
    CHECK(Lines("a\x1A"
                "b\nc\n") == TextLines{L"a\x1A"
                                       L"b",
                                       L"c"});
    CHECK(Lines("a\0b\nc\n"s) == TextLines{L"a\0b"s, L"c"});
}

TEST_CASE("valid UTF-8 of every length is read") {
    CHECK(FirstLine("\xC4\x8D\xE2\x82\xAC") == L"\x10D\x20AC");
    CHECK(FirstLine("\xF0\x9F\x98\x80") == L"\U0001F600");
    CHECK(FirstLine("\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF") == L"\xD7FF\xE000\xFFFF");
    CHECK(FirstLine("\xF4\x8F\xBF\xBF") == L"\U0010FFFF");
}

TEST_CASE("each invalid sequence of UTF-8 reads as one U+FFFD and nothing after it is lost") {
    struct {
        const char* bytes;
        const wchar_t* text;
    } cases[] = {
        {"a\x80z", L"a\xFFFDz"},                                // continuation without a lead
        {"a\xFFz", L"a\xFFFDz"},                                // never part of UTF-8
        {"a\xC0\x80z", L"a\xFFFD\xFFFDz"},                      // overlong NUL
        {"a\xE0\x80\x80z", L"a\xFFFD\xFFFD\xFFFDz"},            // overlong in three
        {"a\xF0\x80\x80\x80z", L"a\xFFFD\xFFFD\xFFFD\xFFFDz"},  // overlong in four
        {"a\xED\xA0\x80z", L"a\xFFFD\xFFFD\xFFFDz"},            // a surrogate
        {"a\xF4\x90\x80\x80z", L"a\xFFFD\xFFFD\xFFFD\xFFFDz"},  // beyond U+10FFFF
        {"a\xF5\x80\x80\x80z", L"a\xFFFD\xFFFD\xFFFD\xFFFDz"},  // no lead: all would be beyond U+10FFFF
        {"a\xE2\x82z", L"a\xFFFDz"},                            // cut short
        {"a\xF0\x9F\x98", L"a\xFFFD"},                          // cut short by the file's end
        {"a\xE2\x82\xE2\x82\xAC", L"a\xFFFD\x20AC"},            // cut short by the next one
    };
    for (auto [bytes, text] : cases) CHECK(FirstLine(bytes) == text);
    CHECK(Lines("a\xE2\x82\nb") == TextLines{L"a\xFFFD", L"b"});
}

TEST_CASE("a file in UTF-16 with its mark is read, broken pairs as U+FFFD") {
    CHECK(Lines("\xFF\xFEO\0k\0\r\0\n\0\x0D\x01\n\0"s) == TextLines{L"Ok", L"\x10D"});
    CHECK(Lines("\xFF\xFE\x3D\xD8\x00\xDE"s) == TextLines{L"\U0001F600"});
    CHECK(Lines("\xFF\xFE\x3D\xD8x\0\x00\xDE"s) == TextLines{L"\xFFFDx\xFFFD"});
    CHECK(Lines("\xFF\xFE\x3D\xD8"s) == TextLines{L"\xFFFD"});
    CHECK(Lines("\xFF\xFEx\0y"s) == TextLines{L"x\xFFFD"});
    CHECK(Lines("\xFF\xFE"s) == TextLines{});
    CHECK(Lines("\xFE\xFF\0O"s).size() == 1);  // the other byte order is no text of ours
}

TEST_CASE("a line one unit shorter than its buffer's room comes whole, a longer one in pieces") {
    const std::wstring a(7, L'a');
    CHECK(Lines("aaaaaa\nb", 8) == TextLines{L"aaaaaa", L"b"});
    // Seven units fill the buffer, so that the line's end comes alone.
    CHECK(Lines("aaaaaaa\nb", 8) == TextLines{a, L"", L"b"});
    CHECK(Lines("aaaaaaa\r\nb", 8) == TextLines{a, L"", L"b"});
    CHECK(Lines("aaaaaaaa\nb", 8) == TextLines{a, L"a", L"b"});
    CHECK(Lines("aaaaaaa", 8) == TextLines{a});
    CHECK(Lines("aaaaaaaaaaaaaa", 8) == TextLines{a, a});
    CHECK(Lines("aaaaaaaaaaaaaa\n", 8) == TextLines{a, a, L""});
    CHECK(Lines("aaaaaa\r", 8) == TextLines{L"aaaaaa"});
    CHECK(Lines("aaaaaaa\r", 8) == TextLines{a, L""});  // the CR comes alone
    CHECK(Lines("aaaaaa\r\r\nb", 8) == TextLines{L"aaaaaa", L"", L"b"});
}

TEST_CASE("the pieces of a long line add up to the line") {
    for (const size_t length : {8190u, 8191u, 8192u, 100'000u}) {
        const auto lines = Lines(std::string(length, 'x') + "\nnext\n");
        std::wstring joined;
        for (size_t i = 0; i + 1 < lines.size(); ++i) {
            CHECK(lines[i].size() <= 8191);
            joined += lines[i];
        }
        CHECK(joined == std::wstring(length, L'x'));
        CHECK(lines.back() == L"next");
    }
}

TEST_CASE("a single line of ten million characters is read in pieces") {
    const auto lines = Lines(std::string(10'000'000, 'x'));
    CHECK(lines.size() == 10'000'000 / 8191 + 1);
    CHECK(lines.back().size() == 10'000'000 % 8191);
}

TEST_CASE("characters beyond 16 bits survive a piece's end as whole characters or as two halves") {
    std::string bytes;
    for (int32_t i = 0; i < 10; ++i) bytes += "\xF0\x9F\x98\x80";
    std::wstring joined;
    for (const std::wstring& line : Lines(bytes, 4)) joined += line;
    std::wstring expected;
    for (int32_t i = 0; i < 10; ++i) expected += L"\U0001F600";
    CHECK(joined == expected);
}

TEST_CASE("reading fails for a missing file and for a folder") {
    const ScratchFolder folder;
    TextFile file{.bytes = "kept"};
    CHECK_FALSE(ReadTextFile(folder / L"missing.txt", file));
    CHECK_FALSE(ReadTextFile(folder.path, file));
    CHECK_FALSE(ReadTextFile(L"", file));
    CHECK(file.bytes == "kept");
}

TEST_CASE("a line is cut at every TAB and keeps its empty fields") {
    std::vector<std::wstring_view> fields = {L"old"};
    SplitAtTabs(L"a\t\tb\t", fields);
    CHECK(fields == std::vector<std::wstring_view>{L"a", L"", L"b", L""});
    SplitAtTabs(L"", fields);
    CHECK(fields == std::vector<std::wstring_view>{L""});
    SplitAtTabs(L"one", fields);
    CHECK(fields == std::vector<std::wstring_view>{L"one"});
}

TEST_CASE("a file is written with a byte-order mark and CR LF") {
    const ScratchFolder folder;
    const std::wstring path = folder / L"file.txt";
    CHECK(WriteTextFile(path, L"one\tx\n\x10D\x20AC\U0001F600\n"));
    CHECK(FileBytes(path) == "\xEF\xBB\xBFone\tx\r\n\xC4\x8D\xE2\x82\xAC\xF0\x9F\x98\x80\r\n");
    CHECK(WriteTextFile(path, L""));
    CHECK(FileBytes(path) == "\xEF\xBB\xBF");
}

TEST_CASE("the first and last character of each length of UTF-8 is written and read back") {
    struct {
        const wchar_t* text;
        const char* bytes;
    } cases[] = {{L"\x7F", "\x7F"},
                 {L"\u0080", "\xC2\x80"},
                 {L"\u07FF", "\xDF\xBF"},
                 {L"\u0800", "\xE0\xA0\x80"},
                 {L"\uFFFF", "\xEF\xBF\xBF"},
                 {L"\U00010000", "\xF0\x90\x80\x80"},
                 {L"\U0010FFFF", "\xF4\x8F\xBF\xBF"}};
    for (const auto& [text, bytes] : cases) {
        CHECK(EncodeUtf8(text) == bytes);
        CHECK(FirstLine(bytes) == text);
    }
}

TEST_CASE("a surrogate pair is written as its character and a lone half as U+FFFD") {
    std::wstring text = L"abcdef";
    text[0] = static_cast<wchar_t>(0xD83D);
    text[1] = static_cast<wchar_t>(0xDE00);
    text[3] = static_cast<wchar_t>(0xD83D);
    text[5] = static_cast<wchar_t>(0xDE00);
    CHECK(EncodeUtf8(text) ==
          "\xF0\x9F\x98\x80"
          "c\xEF\xBF\xBD"
          "e\xEF\xBF\xBD");
    if constexpr (sizeof(wchar_t) == 4) {
        text = L"ab";
        text[0] = static_cast<wchar_t>(0x110000);
        text[1] = static_cast<wchar_t>(0xFFFFFFFF);
        CHECK(EncodeUtf8(text) == "\xEF\xBF\xBD\xEF\xBF\xBD");
    }
}

TEST_CASE("long plain runs are written whole across every boundary of the encoder") {
    for (size_t length = 1020; length < 1030; ++length) {
        const std::wstring text =
            std::wstring(length, L'x') + L"\x10D\n" + std::wstring(length, L'y') + L"\n";
        const std::string bytes = std::string(length, 'x') + "\xC4\x8D\n" + std::string(length, 'y') + "\n";
        CHECK(EncodeUtf8(text) == bytes);
    }
}

TEST_CASE("a field is appended with its TABs and line ends as spaces") {
    std::wstring line = L"a\t";
    AppendField(line, L"b\tc\r\nd");
    CHECK(line == L"a\tb c  d");
}
