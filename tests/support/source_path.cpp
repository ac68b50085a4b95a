#include "support/source_path.h"

std::wstring SourcePath(const std::wstring& path) { return L"" ZEL_SOURCE_DIR "/" + path; }
