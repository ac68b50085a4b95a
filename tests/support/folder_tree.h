// Everything below a folder, read without the program's own functions.
#pragma once

#include <map>
#include <string>

// The bytes of each file and "<folder>" for each folder, by the path relative to `folder`. Links are neither
// followed nor listed.
using FolderContents = std::map<std::wstring, std::string>;
FolderContents ContentsOf(const std::wstring& folder);

// Makes a symbolic link at `path`. False where the machine does not let us.
bool PutLink(const std::wstring& path, const std::wstring& target);
