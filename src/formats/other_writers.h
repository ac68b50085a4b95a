// Other writers of the program's files: a second window, a version control update, another editor. What one
// of them has written is never lost under a save.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Stands for the bytes of a file; others have another one, but for one in 2^64.
uint64_t Fingerprint(std::string_view bytes);

// The program has read these bytes from a file that it may save over, or written them there.
void RememberFile(const std::wstring& path, uint64_t fingerprint);

// The same of what stands there now.
void RememberFile(const std::wstring& path);

bool IsRemembered(const std::wstring& path, uint64_t fingerprint);

// After a file or folder was renamed, or copied as a whole, what is known of it holds for its new path.
void MoveRememberedFiles(const std::wstring& from, const std::wstring& to);

// Writes a file as WriteWholeFile does. Where other bytes stand there than those that the program last read
// or wrote, they are first put beside it under a free name, "Main_jine.scene", which the next status message
// tells. False, with the file as it was, when either cannot be written.
bool SaveOver(const std::wstring& path, std::string_view bytes);
