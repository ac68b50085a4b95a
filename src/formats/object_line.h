// The line of tab-separated columns in which scene, prefab and project files store an object.
#pragma once

#include "formats/obj_file.h"
#include "formats/text_file.h"
#include "formats/texture_file.h"
#include "state/game_object.h"

#include <span>
#include <string>
#include <string_view>

// Appends the object's line with its "\n": "O" and 60 columns. References are made relative to the open
// project. A float that is not finite is written as "nan" or "inf", which reads as the column's default.
void WriteObjectLine(std::wstring& text, const GameObject& object);

// The lines of all objects, in their order.
void WriteObjects(std::wstring& text, std::span<const GameObject> objects);

// Fills `object` from a line cut at its TABs, and loads the model and the image that it names. Columns that
// an older line lacks, and numbers that cannot be read, keep the values of a new object. False, with `object`
// as it was, for a line that stores no object: not tagged "O", or of fewer than 30 columns with the tag.
bool ParseObjectLine(std::span<const std::wstring_view> fields, GameObject& object);

// The files that object lines name: those loaded so far, and those that failed.
struct KnownFiles {
    KnownModels models = ModelsInLibrary();
    KnownTextures textures = LoadedTextures();
};

// Like ParseObjectLine above, but reuses `known` between lines.
bool ParseObjectLine(std::span<const std::wstring_view> fields, GameObject& object, KnownFiles& known);

// The text of a file of a header line and the lines of all objects.
std::wstring ObjectFileText(std::wstring_view header, std::span<const GameObject> objects);

// Writes a file of a header line and the lines of all objects, and makes the folder of `path` first. False,
// with the old file as it was, when it cannot be written.
bool WriteObjectFile(const std::wstring& path, std::wstring_view header, std::span<const GameObject> objects);

// The objects of a file from its next line on, in its order, read into a buffer of 8192 units. Lines that
// store no object are skipped, headers among them.
Scene ReadObjects(TextFile& file);
