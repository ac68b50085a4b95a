// Any bytes are a model or none; a model's triangles name its vertices, which lie in the cube of edge 2.
#include "formats/obj_file.h"
#include "fuzz_input.h"

#include <cmath>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Mesh mesh;
    if (!ReadObjFile(PutFuzzInput(data, size, "in.obj"), mesh)) return 0;
    const auto count = static_cast<int32_t>(mesh.vertices.size());
    for (const MeshTriangle& triangle : mesh.triangles) {
        for (const int32_t index : triangle) {
            if (index < 0 || index >= count) std::abort();
        }
    }
    for (const MeshVertex& vertex : mesh.vertices) {
        const Vec3& p = vertex.position;
        if (!(std::fabs(p.x) <= 1 && std::fabs(p.y) <= 1 && std::fabs(p.z) <= 1)) std::abort();
    }
    return 0;
}
