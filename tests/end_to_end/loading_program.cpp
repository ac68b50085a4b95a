// Loads a file as the program does, and says whether it did.
//
//   loading_program FILE            "loaded N", N objects, triangles, nodes or pixels, or "refused"
//   loading_program - N              the same for a window of N times N pixels
//
// Ends with 0 either way.
#include "base/path_text.h"
#include "blueprint/blueprint_file.h"
#include "formats/obj_file.h"
#include "formats/prefab.h"
#include "formats/project_file.h"
#include "formats/scene_file.h"
#include "platform/image_decoder.h"
#include "render/frame_buffer.h"
#include "state/editor_state.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

// How much the file holds; 0 for one that is refused.
static size_t Load(const std::wstring& path) {
    const std::wstring extension = FileExtension(path);
    if (extension == L".scene") return LoadScene(path) ? editorState.scene.size() : 0;
    if (extension == L".prefab") {
        Scene objects;
        return LoadPrefab(path, objects) ? objects.size() : 0;
    }
    if (extension == L".obj") {
        Mesh mesh;
        return ReadObjFile(path, mesh) ? mesh.triangles.size() : 0;
    }
    if (extension == L".blueprint") return LoadBlueprint(path) ? editorState.blueprintNodes.size() : 0;
    if (extension == L".zel") return ReadProjectFile(ParentFolder(path)) ? editorState.scene.size() : 0;
    DecodedImage image;
    return DecodeImageFile(path, image) ? image.argb.size() : 0;
}

static size_t MakeWindow(int32_t side) { return EnsureSize(side, side) ? frameBuffer.depth.size() : 0; }

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2 && argumentCount != 3) return 2;
    const std::string name = arguments[1];
    const size_t count = argumentCount == 3 ? MakeWindow(std::atoi(arguments[2]))
                                            : Load(std::wstring(name.begin(), name.end()));
    if (count > 0) {
        std::printf("loaded %zu\n", count);
    } else {
        std::printf("refused\n");
    }
    return 0;
}
