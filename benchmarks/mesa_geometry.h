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
    std::vector<TexturePoint> points{};  // as many; only for a texture, see mesa_texture.h
    std::vector<Vec3> normals{};         // as many; only for faces that are lit while they are drawn
    std::vector<uint32_t> indices{};     // three for each face
};

// Where an object stands, for the vertices of its mesh.
struct MesaInstance {
    std::array<std::array<float, 4>, 3> world{};  // the upper three rows
    std::array<Vec3, 3> normalRows{};             // turn a normal, of which the length does not count
};

// The brightness of a white byte in the geometry of lit objects with a texture.
constexpr float kMesaWhite = 1.6f;

// All faces of the objects in world space, for a picture of the size of `viewport`. The colours are lit;
// those of faces with a texture are greys that hold the light alone.
MesaGeometry LitMesaGeometry(std::span<const BenchObject> objects, const Rect& viewport);

// The faces of an object's mesh in object space, with normals. Those with a texture are white. Other objects
// may use them that differ in place only, unless the mesh reaches through the near plane.
MesaGeometry MesaMesh(const BenchObject& object, const Rect& viewport);

MesaInstance MesaInstanceOf(const BenchObject& object);
