#include "formats/obj_file.h"

#include "base/enough_memory.h"
#include "base/numbers.h"
#include "base/path_text.h"
#include "formats/project_file.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "render/builtin_meshes.h"
#include "render/raster/mesh_measures.h"
#include "scene/long_work.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cmath>
#include <string_view>

constexpr size_t kObjPiece = 1023;         // bytes of a line that are read at once, its end included
constexpr int32_t kLinesPerTurn = 4096;    // read between two looks at the clock
constexpr double kSmallestExtent = 0.001;  // of a model before it is scaled
constexpr double kModelSize = 2;           // edge of the cube that a model fits
constexpr Pixel kVertexColor{0xFFFFFF};
constexpr std::string_view kBlanks = " \t\r\n\v\f";

// Takes the next line off the front, or the piece of it that fits the buffer. Each piece of a longer line is
// read as a line of its own.
static std::string_view TakeLine(std::string_view& bytes) {
    const std::string_view piece = bytes.substr(0, kObjPiece);
    const std::string_view line = piece.substr(0, piece.find('\n'));
    bytes.remove_prefix(std::min(line.size() + 1, piece.size()));
    return line;
}

// A number that is not finite becomes 0: without its vertex every later face would turn to the wrong corners.
static bool TakeCoordinate(std::string_view& text, float& coordinate) {
    if (!TakeFloat(text, coordinate)) return false;
    if (!std::isfinite(coordinate)) coordinate = 0;
    return true;
}

static void ReadVertex(std::string_view text, Mesh& mesh) {
    Vec3 position;
    for (float Vec3::*axis : {&Vec3::x, &Vec3::y, &Vec3::z}) {
        if (!TakeCoordinate(text, position.*axis)) return;
    }
    mesh.vertices.push_back({position, kVertexColor});
}

// The vertex that a token of a face names: n counts from 1, -n back from the last vertex. -1 for none.
static int32_t FaceVertex(std::string_view token, size_t vertexCount) {
    int32_t number = 0;
    if (!TakeInteger(token, number)) return -1;
    const auto count = static_cast<int64_t>(vertexCount);
    const int64_t index = number > 0 ? int64_t{number} - 1 : count + number;
    return index >= 0 && index < count ? static_cast<int32_t>(index) : -1;
}

// Cuts a polygon into a fan of triangles around its first corner: (first, second, third), (first, third,
// fourth) ... Corners that name no vertex are left out before the fan is made, so the rest of the face still
// shows. A token is "vertex/texture/normal"; only the number before the first slash counts.
static void ReadFace(std::string_view text, Mesh& mesh) {
    int32_t corners = 0, first = -1, previous = -1;
    size_t start = 0;
    while ((start = text.find_first_not_of(kBlanks)) != std::string_view::npos) {
        text.remove_prefix(start);
        const std::string_view token = text.substr(0, text.find_first_of(kBlanks));
        text.remove_prefix(token.size());

        const int32_t vertex = FaceVertex(token, mesh.vertices.size());
        if (vertex < 0) continue;
        ++corners;
        if (corners == 1) first = vertex;
        if (corners >= 3) mesh.triangles.push_back({first, previous, vertex});
        previous = vertex;
    }
}

// Moves the model's box onto the origin and scales it, the same along all axes, until its longest edge is
// kModelSize: an imported model can be seen and grabbed whatever its unit was. In double, because the
// difference of two floats may be too large for a float.
static void FitIntoCube(Mesh& mesh) {
    Vec3 low = mesh.vertices[0].position, high = low;
    for (const MeshVertex& vertex : mesh.vertices) {
        const Vec3& p = vertex.position;
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    const auto extent = [](float a, float b) { return static_cast<double>(b) - static_cast<double>(a); };
    const double size =
        std::max({extent(low.x, high.x), extent(low.y, high.y), extent(low.z, high.z), kSmallestExtent});

    const auto fit = [size](float value, float a, float b) {
        const double centre = (static_cast<double>(a) + static_cast<double>(b)) / 2;
        return static_cast<float>((static_cast<double>(value) - centre) * (kModelSize / size));
    };
    for (MeshVertex& vertex : mesh.vertices) {
        Vec3& p = vertex.position;
        p = {fit(p.x, low.x, high.x), fit(p.y, low.y, high.y), fit(p.z, low.z, high.z)};
    }
}

static void AppendToLibrary(Mesh mesh, const std::wstring& fullPath) {
    editorState.meshes.push_back({std::move(mesh), NameWithoutExtension(fullPath), fullPath});
}

// Reads the whole file into memory and walks it once, line by line. Vertices come before the faces that name
// them, so one pass is enough. Everything but "v" and "f" lines is skipped. The result replaces `mesh` at the
// very end: a file without triangles, or memory that does not suffice, leaves it as it was.
static bool ReadModel(const std::wstring& path, Mesh& mesh) {
    std::string bytes;
    if (!ReadWholeFile(path, bytes)) return false;
    std::string_view rest = bytes;
    if (rest.starts_with(kUtf8Mark)) rest.remove_prefix(kUtf8Mark.size());

    Mesh model;
    LongWork work(L"Nacitam model", L"MB");
    int32_t lines = 0;
    while (!rest.empty()) {
        if (++lines % kLinesPerTurn == 0)
            work.Continue(Megabytes(std::ssize(bytes) - std::ssize(rest)), Megabytes(std::ssize(bytes)));
        const std::string_view line = TakeLine(rest);
        if (line.starts_with("v ")) ReadVertex(line.substr(2), model);
        if (line.starts_with("f ")) ReadFace(line.substr(2), model);
    }
    if (model.triangles.empty()) return false;
    FitIntoCube(model);
    MeasureMesh(model);
    mesh = std::move(model);
    return true;
}

bool ReadObjFile(const std::wstring& path, Mesh& mesh) {
    return WithEnoughMemory([&] { return ReadModel(path, mesh); });
}

KnownModels ModelsInLibrary() {
    KnownModels known;
    for (int32_t index = 0; const MeshAsset& asset : editorState.meshes) {
        if (!asset.source.empty()) known.try_emplace(asset.source, index);
        ++index;
    }
    return known;
}

int32_t LoadObjIntoLibrary(const std::wstring& path) {
    KnownModels known = ModelsInLibrary();
    return LoadObjIntoLibrary(path, known);
}

// A path is tried once: a failure is remembered as -1, so that a scene with a thousand objects of a missing
// model opens as fast as one with a single object.
int32_t LoadObjIntoLibrary(const std::wstring& path, KnownModels& known) {
    const std::wstring fullPath = AbsolutePath(path);
    const auto [entry, isNew] = known.try_emplace(fullPath, -1);
    Mesh mesh;
    if (isNew && ReadObjFile(fullPath, mesh)) {
        AppendToLibrary(std::move(mesh), fullPath);
        entry->second = static_cast<int32_t>(editorState.meshes.size()) - 1;
    }
    if (entry->second < 0) SetStatus(L"OBJ model se nepodarilo nacist.");
    return entry->second;
}

constexpr std::wstring_view kBuiltinPrefix = L"builtin:";
constexpr std::wstring_view kFilePrefix = L"file:";

int32_t MeshIndexFromReference(std::wstring_view reference) {
    KnownModels known = ModelsInLibrary();
    return MeshIndexFromReference(reference, known);
}

int32_t MeshIndexFromReference(std::wstring_view reference, KnownModels& known) {
    if (reference.starts_with(kFilePrefix)) {
        const std::wstring_view stored = reference.substr(kFilePrefix.size());
        return LoadObjIntoLibrary(stored.empty() ? std::wstring{} : JoinProjectPath(stored), known);
    }
    if (reference.starts_with(kBuiltinPrefix)) {
        const std::wstring_view name = reference.substr(kBuiltinPrefix.size());
        for (int32_t i = 0; i < kBuiltinMeshCount; ++i) {
            if (name == kBuiltinMeshNames[i]) return i;
        }
    }
    return kCubeMesh;
}

std::wstring MeshReferenceFromIndex(int32_t meshIndex) {
    const auto builtin = [](int32_t index) {
        return std::wstring(kBuiltinPrefix) + kBuiltinMeshNames[index];
    };
    if (meshIndex >= 0 && meshIndex < kBuiltinMeshCount) return builtin(meshIndex);

    const auto& meshes = editorState.meshes;
    const bool isImported = meshIndex >= 0 && static_cast<size_t>(meshIndex) < meshes.size() &&
                            !meshes[static_cast<size_t>(meshIndex)].source.empty();
    if (!isImported) return builtin(kCubeMesh);
    return std::wstring(kFilePrefix) + MakeProjectRelative(meshes[static_cast<size_t>(meshIndex)].source);
}
