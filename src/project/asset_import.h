// Files from outside that become part of the project.
#pragma once

#include <span>
#include <string>

// Copies files into the folder that the Files panel shows, over files of the same name; models are placed in
// the scene too, where it is shown. Folders, and what cannot be copied, are not counted in the message.
void ImportDroppedFiles(std::span<const std::wstring> paths);
