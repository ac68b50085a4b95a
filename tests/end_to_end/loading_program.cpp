// Loads a file as the program does, and says whether it did.
//
//   loading_program FILE    "loaded N", N objects, triangles or pixels, or "refused"; ends with 0 either way
#include "formats/obj_file.h"
#include "formats/path_text.h"
#include "formats/prefab_file.h"
#include "formats/scene_file.h"
#include "platform/image_decoder.h"
#include "scene/editor_state.h"

#include <cstddef>
#include <cstdio>
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
    DecodedImage image;
    return DecodeImageFile(path, image) ? image.argb.size() : 0;
}

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) return 2;
    const std::string name = arguments[1];
    const size_t count = Load(std::wstring(name.begin(), name.end()));
    if (count > 0) {
        std::printf("loaded %zu\n", count);
    } else {
        std::printf("refused\n");
    }
    return 0;
}
