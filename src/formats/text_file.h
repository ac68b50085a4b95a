// Every text file of the program: UTF-8 on disk, wide text inside.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The byte-order mark that UTF-8 files may begin with.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// A text file in memory, and how far its lines have been handed out.
struct TextFile {
    std::string bytes{};       // UTF-8, behind the byte-order mark
    size_t nextByte = 0;       // where the line after `line` begins
    size_t lineByte = 0;       // where `line` begins
    std::wstring line{};       // the line being handed out, without its end
    size_t nextUnit = 0;       // how much of it has been handed out
    bool inLine = false;       // some of it, or its end, has not been
    bool hasEnd = false;       // it ends with a line feed; the last line of a file may not
    uint64_t fingerprint = 0;  // of all bytes of the file
};

// Reads a whole file: UTF-8 with or without a byte-order mark, or UTF-16 behind its little-endian mark. False
// when it cannot be read or memory does not suffice for it; `file` is then unchanged. Its lines take memory
// of their own.
bool ReadTextFile(const std::wstring& path, TextFile& file);

// The next line without any CR and LF at its end; false when there is none. `line` stays valid until the next
// call. Lines end with LF or CR LF and nothing else; invalid UTF-8 reads as U+FFFD.
//
// A line that does not fit a buffer of `bufferSize` units (at least 2), one of which is kept free and one of
// which the line's end takes, comes in pieces of bufferSize - 1 units, each as a line of its own. When the
// pieces leave only the end for the last one, that piece is an empty line.
bool NextLine(TextFile& file, size_t bufferSize, std::wstring_view& line);

// Cuts a line at every TAB. Empty fields are kept; a line without TAB is one field.
void SplitAtTabs(std::wstring_view line, std::vector<std::wstring_view>& fields);

// What WriteTextFile puts on the disk.
std::string TextFileBytes(std::wstring_view text);

// Appends lines that end with "\n" to what TextFileBytes has begun, each with CR LF at its end.
void AppendTextLines(std::string& bytes, std::wstring_view text);

// Writes a whole file in one step that cannot leave half of it: a byte-order mark, then `text`, whose lines
// each end with "\n" and are written with CR LF. False when it cannot be written, for want of memory too; the
// old file then stands.
bool WriteTextFile(const std::wstring& path, std::wstring_view text);

// Appends free text to a line: TAB, CR and LF become spaces, so that it stays one field of one line.
void AppendField(std::wstring& line, std::wstring_view text);

// Text as UTF-8. What is invalid becomes U+FFFD, lone surrogates too.
std::string EncodeUtf8(std::wstring_view text);
