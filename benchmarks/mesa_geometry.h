// A benchmark scene as vertices and indices, the way that OpenGL takes it.
#pragma once

#include "bench_scenes.h"

#include "render/raster/fill_triangle.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

struct MesaVertex {
    Vec3 position{};
    Pixel color{};  // of the faces that begin with this vertex
};

// A face shows the colour and the normal of its first vertex, so that vertices may be shared all the same.
struct MesaGeometry {
    std::vector<MesaVertex> vertices{};
    std::vector<TexturePoint> points{};  // as many; only for a texture, row 0 of which is at v = 0
    std::vector<Vec3> normals{};         // as many; only for faces that are lit while they are drawn
    std::vector<uint32_t> indices{};     // three for each face
};

// Where an object stands, for the vertices of its mesh.
struct MesaInstance {
    std::array<std::array<float, 4>, 3> world{};  // the upper three rows
    std::array<Vec3, 3> normalRows{};             // turn a normal, of which the length does not count
};

// The brightness of a white byte in the geometry of a lit scene with a texture.
constexpr float kMesaWhite = 1.6f;

// All faces of a scene in world space. The colours are lit; those of faces with a texture are greys that hold
// the light alone.
MesaGeometry LitMesaGeometry(const BenchScene& scene);

// The faces of an object's mesh in object space, with normals. Those with a texture are white.
MesaGeometry MesaMesh(const BenchObject& object);

MesaInstance MesaInstanceOf(const BenchObject& object);
