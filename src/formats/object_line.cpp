#include "formats/object_line.h"

#include "base/enough_memory.h"
#include "base/numbers.h"
#include "base/path_text.h"
#include "formats/obj_file.h"
#include "formats/other_writers.h"
#include "formats/project_file.h"
#include "platform/files.h"
#include "render/builtin_meshes.h"
#include "scene/long_work.h"
#include "state/editor_state.h"

#include <algorithm>
#include <limits>
#include <variant>

constexpr int32_t kObjectsPerTurn =
    16;  // read or written between two looks at the clock; each may load a model
constexpr std::wstring_view kObjectTag = L"O";
constexpr wchar_t kListSeparator = L';';

// Lengths of a line with its tag. Shorter lines were written by earlier releases.
constexpr size_t kFewestColumns = 30;
constexpr size_t kFewestWithCollision = 32;
constexpr size_t kFewestWithCollectPrefab = 53;

constexpr size_t kObjectLineBuffer = 8192;
constexpr size_t kUsualLineLength = 450;  // units; room that is made before many lines are written

constexpr int32_t kFirstPathColumn = 50;  // of those that moved when collectPrefab came before them
constexpr int32_t kLastColumn = 60;

namespace {
// What a column holds beyond the type of its member.
enum class Form {
    Plain,
    MeshReference,  // an index into the mesh library, as text that names the mesh
    ScriptCount,    // the size of `scripts`, which alone counts on reading
    Path,           // relative to the project
    TexturePath,    // a path whose image is loaded
};

using Member =
    std::variant<bool GameObject::*, int32_t GameObject::*, uint32_t GameObject::*, float GameObject::*,
                 Vec3 GameObject::*, std::wstring GameObject::*, std::vector<std::wstring> GameObject::*>;

// One column, or three for a Vec3. The type of the member picks how it is written and read.
struct ObjectColumn {
    int32_t number;  // of the first column; 0 is the tag
    Member member;
    Form form = Form::Plain;
    float low = std::numeric_limits<float>::lowest();  // a float is limited to these on reading
    float high = std::numeric_limits<float>::max();
};
}  // namespace

// clang-format off
constexpr ObjectColumn kObjectColumns[] = {
    { 1, &GameObject::name},
    { 2, &GameObject::position},
    { 5, &GameObject::rotation},
    { 8, &GameObject::scale},
    {11, &GameObject::meshIndex, Form::MeshReference},
    {12, &GameObject::hasAnimation},
    {13, &GameObject::parentIndex},
    {14, &GameObject::isEntity},
    {15, &GameObject::isCamera},
    {16, &GameObject::isLight},
    {17, &GameObject::hasShape},
    {18, &GameObject::hasColor},
    {19, &GameObject::transformExpanded},
    {20, &GameObject::shapeExpanded},
    {21, &GameObject::colorExpanded},
    {22, &GameObject::animationExpanded},
    {23, &GameObject::animationType},
    {24, &GameObject::animationSpeed},
    {25, &GameObject::scriptCount, Form::ScriptCount},
    {26, &GameObject::color},
    {27, &GameObject::roughness, Form::Plain, 0, 1},
    {28, &GameObject::gloss,     Form::Plain, 0, 1},
    {29, &GameObject::colorWheelExpanded},
    {30, &GameObject::scripts},
    {31, &GameObject::hasCollision},
    {32, &GameObject::hasGravitation},
    {33, &GameObject::collisionExpanded},
    {34, &GameObject::gravitationExpanded},
    {35, &GameObject::velocityY},
    {36, &GameObject::gravityStrength},
    {37, &GameObject::hasTexture},
    {38, &GameObject::textureExpanded},
    {39, &GameObject::textureRepeat},
    {40, &GameObject::texturePath, Form::TexturePath},
    {41, &GameObject::hasRigidbody},
    {42, &GameObject::rigidbodyExpanded},
    {43, &GameObject::mass, Form::Plain, 0.1f},
    {44, &GameObject::drag, Form::Plain, 0, 5},
    {45, &GameObject::velocity},
    {48, &GameObject::active},
    {49, &GameObject::collectTarget},
    {50, &GameObject::collectPrefab, Form::Path},
    {51, &GameObject::prefabSource,  Form::Path},
    {52, &GameObject::spawnerPrefab, Form::Path},
    {53, &GameObject::cameraExpanded},
    {54, &GameObject::cameraBackgroundSet},
    {55, &GameObject::cameraBackground},
    {56, &GameObject::cameraBrightness, Form::Plain, 0, 1},
    {57, &GameObject::isText},
    {58, &GameObject::textExpanded},
    {59, &GameObject::text},
    {60, &GameObject::textSize, Form::Plain, 4, 180},
};

// What a line without collectPrefab holds from column 50 on.
constexpr ObjectColumn kEarlierPathColumns[] = {
    {50, &GameObject::prefabSource,  Form::Path},
    {51, &GameObject::spawnerPrefab, Form::Path},
};
// clang-format on

static constexpr int32_t ColumnWidth(const ObjectColumn& column) {
    return std::holds_alternative<Vec3 GameObject::*>(column.member) ? 3 : 1;
}

static constexpr bool ColumnsFollowEachOther(std::span<const ObjectColumn> columns) {
    int32_t next = 1;
    for (const ObjectColumn& column : columns) {
        if (column.number != next) return false;
        next += ColumnWidth(column);
    }
    return next == kLastColumn + 1;
}
static_assert(ColumnsFollowEachOther(kObjectColumns));

static void AppendPath(std::wstring& text, const std::wstring& path) {
    AppendField(text, MakeProjectRelative(path));
}

// An object whose image was set without its path still names it.
static void AppendTexturePath(std::wstring& text, const GameObject& object) {
    const auto slot = static_cast<size_t>(object.textureIndex);  // far beyond the end for -1
    if (object.texturePath.empty() && slot < editorState.textures.size()) {
        AppendPath(text, editorState.textures[slot].path);
    } else {
        AppendPath(text, object.texturePath);
    }
}

namespace {
// Appends one column of an object, by the type of its member.
struct ColumnWriter {
    std::wstring& text;
    const GameObject& object;
    Form form;

    void operator()(bool GameObject::*member) const { text += object.*member ? L'1' : L'0'; }

    void operator()(int32_t GameObject::*member) const {
        if (form == Form::MeshReference) {
            text += MeshReferenceFromIndex(object.*member);
        } else if (form == Form::ScriptCount) {
            AppendInteger(text, static_cast<int64_t>(object.scripts.size()));
        } else {
            AppendInteger(text, object.*member);
        }
    }

    void operator()(uint32_t GameObject::*member) const { AppendInteger(text, object.*member); }

    void operator()(float GameObject::*member) const { AppendFixed(text, object.*member, 6); }

    void operator()(Vec3 GameObject::*member) const {
        const Vec3& vector = object.*member;
        AppendFixed(text, vector.x, 6);
        text += L'\t';
        AppendFixed(text, vector.y, 6);
        text += L'\t';
        AppendFixed(text, vector.z, 6);
    }

    void operator()(std::wstring GameObject::*member) const {
        if (form == Form::TexturePath) {
            AppendTexturePath(text, object);
        } else if (form == Form::Path) {
            AppendPath(text, object.*member);
        } else {
            AppendField(text, object.*member);
        }
    }

    void operator()(std::vector<std::wstring> GameObject::*member) const {
        bool isFirst = true;
        for (const std::wstring& entry : object.*member) {
            if (!isFirst) text += kListSeparator;
            AppendField(text, entry);
            isFirst = false;
        }
    }
};

// Reads one column into an object that holds the defaults, by the type of its member.
struct ColumnReader {
    std::span<const std::wstring_view> fields;  // from this column on; not empty
    GameObject& object;
    const ObjectColumn& column;
    KnownFiles& known;

    void operator()(bool GameObject::*member) const {
        object.*member = ReadInteger(fields[0], object.*member ? 1 : 0) != 0;
    }

    void operator()(int32_t GameObject::*member) const {
        object.*member = column.form == Form::MeshReference ? MeshIndexFromReference(fields[0], known.models)
                                                            : ReadInteger(fields[0], object.*member);
    }

    void operator()(uint32_t GameObject::*member) const {
        object.*member = ReadUnsigned(fields[0], object.*member);
    }

    void operator()(float GameObject::*member) const {
        object.*member = std::clamp(ReadFloat(fields[0], object.*member), column.low, column.high);
    }

    // All three or none.
    void operator()(Vec3 GameObject::*member) const {
        if (fields.size() < 3) return;
        Vec3& vector = object.*member;
        vector.x = ReadFloat(fields[0], vector.x);
        vector.y = ReadFloat(fields[1], vector.y);
        vector.z = ReadFloat(fields[2], vector.z);
    }

    void operator()(std::wstring GameObject::*member) const {
        if (column.form == Form::Plain) {
            object.*member = fields[0];
            return;
        }
        if (fields[0].empty()) return;
        object.*member = JoinProjectPath(fields[0]);
        if (column.form == Form::TexturePath) LoadTexture();
    }

    void LoadTexture() const {
        object.textureIndex = LoadTextureImage(object.texturePath, known.textures);
        if (object.textureIndex < 0) object.hasTexture = false;
    }

    // Empty entries are entries; an empty field is an empty list.
    void operator()(std::vector<std::wstring> GameObject::*member) const {
        std::wstring_view rest = fields[0];
        if (rest.empty()) return;
        size_t separator = 0;
        while ((separator = rest.find(kListSeparator)) != std::wstring_view::npos) {
            (object.*member).emplace_back(rest.substr(0, separator));
            rest.remove_prefix(separator + 1);
        }
        (object.*member).emplace_back(rest);
    }
};
}  // namespace

static void ReadColumn(std::span<const std::wstring_view> fields, const ObjectColumn& column,
                       GameObject& object, KnownFiles& known) {
    const auto number = static_cast<size_t>(column.number);
    if (number >= fields.size()) return;
    std::visit(ColumnReader{fields.subspan(number), object, column, known}, column.member);
}

// Ground and platforms were solid before objects could say so.
static bool WasAlwaysSolid(const GameObject& object) {
    return object.meshIndex == kGroundMesh || object.name == L"Ground" ||
           object.name.starts_with(L"Platform");
}

// What one column implies for another, in this order.
static void SettleColumns(GameObject& object, size_t columnCount) {
    if (object.isText) {
        object.meshIndex = -1;
        object.hasShape = false;
    }
    if (object.hasRigidbody) object.hasCollision = true;
    if (columnCount < kFewestWithCollision && WasAlwaysSolid(object)) object.hasCollision = true;
    object.scriptCount = static_cast<int32_t>(object.scripts.size());
}

// One walk over the table of columns writes a line, another reads it. A component's new field is one row
// there, at the end: readers of earlier releases ignore columns that they do not know, and this one gives a
// new object's value to those that an old line lacks.
void WriteObjectLine(std::wstring& text, const GameObject& object) {
    text += kObjectTag;
    for (const ObjectColumn& column : kObjectColumns) {
        text += L'\t';
        std::visit(ColumnWriter{text, object, column.form}, column.member);
    }
    text += L'\n';
}

void WriteObjects(std::wstring& text, std::span<const GameObject> objects) {
    text.reserve(text.size() + objects.size() * kUsualLineLength);
    LongWork work(L"Ukladam", L"objektu");
    const auto total = static_cast<int64_t>(objects.size());
    int64_t done = 0;
    for (const GameObject& object : objects) {
        WriteObjectLine(text, object);
        if (++done % kObjectsPerTurn == 0) work.Continue(done, total);
    }
}

std::wstring ObjectFileText(std::wstring_view header, std::span<const GameObject> objects) {
    std::wstring text(header);
    text += L'\n';
    WriteObjects(text, objects);
    return text;
}

bool WriteObjectFile(const std::wstring& path, std::wstring_view header,
                     std::span<const GameObject> objects) {
    return WithEnoughMemory([&] {
        const std::wstring folder = ParentFolder(path);
        if (!folder.empty()) MakeFolders(folder);
        return SaveOver(path, TextFileBytes(ObjectFileText(header, objects)));
    });
}

bool ParseObjectLine(std::span<const std::wstring_view> fields, GameObject& object) {
    KnownFiles known;
    return ParseObjectLine(fields, object, known);
}

bool ParseObjectLine(std::span<const std::wstring_view> fields, GameObject& object, KnownFiles& known) {
    if (fields.size() < kFewestColumns || fields[0] != kObjectTag) return false;

    object = GameObject{};
    const bool hasCollectPrefab = fields.size() >= kFewestWithCollectPrefab;
    for (const ObjectColumn& column : kObjectColumns) {
        if (!hasCollectPrefab && column.number >= kFirstPathColumn) break;
        ReadColumn(fields, column, object, known);
    }
    if (!hasCollectPrefab) {
        for (const ObjectColumn& column : kEarlierPathColumns) ReadColumn(fields, column, object, known);
    }
    SettleColumns(object, fields.size());
    return true;
}

// One pass over the lines. What many lines share is loaded once: `known` answers for models and images that
// were loaded, or could not be, on an earlier line, and the field list keeps its memory from line to line. A
// line that is no object changes nothing, so headers need no reader of their own, and a damaged line costs
// one object.
Scene ReadObjects(TextFile& file) {
    Scene objects;
    GameObject object;
    KnownFiles known;
    std::wstring_view line;
    std::vector<std::wstring_view> fields;
    LongWork work(L"Nacitam objekty", L"MB");
    int32_t lines = 0;
    while (NextLine(file, kObjectLineBuffer, line)) {
        if (++lines % kObjectsPerTurn == 0)
            work.Continue(Megabytes(static_cast<int64_t>(file.nextByte)), Megabytes(std::ssize(file.bytes)));
        SplitAtTabs(line, fields);
        if (ParseObjectLine(fields, object, known)) objects.push_back(std::move(object));
    }
    return objects;
}
