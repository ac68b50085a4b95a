#include "support/plain_renderer.h"

#include "render/frame_buffer.h"
#include "render/raster/line.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

struct Corner {
    float x, y, z, w;  // clip space
    float u, v;
    float red, green, blue;
};

}  // namespace

static float Channel(uint32_t color, int shift) { return static_cast<float>(color >> shift & 255); }

static bool Project(const Corner& c, ScreenCorner& s) {
    if (!(c.w > 0.05f)) return false;
    const float inv = 1 / c.w;
    const float depth = c.z * inv;
    if (!(depth >= -0.001f) || !(depth <= 1.001f)) return false;
    const Rect& v = frameBuffer.viewport;
    const float x =
        (c.x * inv * 0.5f + 0.5f) * static_cast<float>(v.right - v.left) + static_cast<float>(v.left);
    const float y =
        (0.5f - c.y * inv * 0.5f) * static_cast<float>(v.bottom - v.top) + static_cast<float>(v.top);
    if (x != x || y != y) return false;
    s = {std::min(std::max(x, -100000.0f), 100000.0f), std::min(std::max(y, -100000.0f), 100000.0f),
         std::min(std::max(depth, 0.0f), 1.0f), inv};
    return true;
}

static std::vector<Corner> CutAtNearPlane(const Corner (&triangle)[3]) {
    std::vector<Corner> kept;
    for (int i = 0; i < 3; ++i) {
        const Corner& a = triangle[i];
        const Corner& b = triangle[(i + 1) % 3];
        if (a.z >= 0) kept.push_back(a);
        if ((a.z >= 0) == (b.z >= 0)) continue;
        float t = std::abs(a.z - b.z) <= 1e-6f ? 0.0f : a.z / (a.z - b.z);
        t = std::min(std::max(t, 0.0f), 1.0f);
        const auto mix = [t](float p, float q) { return p + t * (q - p); };
        kept.push_back({mix(a.x, b.x), mix(a.y, b.y), mix(a.z, b.z), mix(a.w, b.w), mix(a.u, b.u),
                        mix(a.v, b.v), std::trunc(mix(a.red, b.red)), std::trunc(mix(a.green, b.green)),
                        std::trunc(mix(a.blue, b.blue))});
    }
    return kept;
}

static float Fraction(float value, bool repeat) {
    const float part = repeat ? value - std::floor(value) : value;
    return part != part ? 0.0f : std::min(std::max(part, 0.0f), 1.0f);
}

// What one pixel shows: each channel averaged with the tint's, lit, cut and truncated.
static Pixel Shade(float red, float green, float blue, uint32_t tint, float brightness) {
    const float light = std::min(std::max(brightness, 0.22f), 1.6f);
    const auto shade = [light, tint](float value, int shift) {
        if (tint != 0) value = std::floor((value + Channel(tint, shift)) / 2);
        return static_cast<uint32_t>(std::min(value * light, 255.0f)) << shift;
    };
    return Pixel{shade(red, 16) | shade(green, 8) | shade(blue, 0)};
}

static Pixel Texel(const TextureFill& fill, float u, float v) {
    uint32_t texel = 0xFFFFFF;
    if (const TextureImage& image = *fill.texture; !image.texels.empty()) {
        const float across = Fraction(u, fill.repeat), up = Fraction(v, fill.repeat);
        const auto column = static_cast<int32_t>(across * static_cast<float>(image.width - 1));
        const auto row = static_cast<int32_t>((1 - up) * static_cast<float>(image.height - 1));
        texel = static_cast<uint32_t>(image.texels[static_cast<size_t>(row * image.width + column)]);
    }
    return Shade(Channel(texel, 16), Channel(texel, 8), Channel(texel, 0), fill.tint, fill.brightness);
}

// In `color` without a texture, which is then null.
static void Fill(const std::array<ScreenCorner, 3>& s, Pixel color, const std::array<TexturePoint, 3>* points,
                 const TextureFill* fill) {
    const float area = (s[2].x - s[0].x) * (s[1].y - s[0].y) - (s[2].y - s[0].y) * (s[1].x - s[0].x);
    if (std::abs(area) < 0.0001f) return;
    const auto edge = [](const ScreenCorner& a, const ScreenCorner& b, float x, float y) {
        return (x - a.x) * (b.y - a.y) - (y - a.y) * (b.x - a.x);
    };
    const Rect& v = frameBuffer.viewport;
    const int32_t left =
        std::max(v.left, static_cast<int32_t>(std::floor(std::min({s[0].x, s[1].x, s[2].x}))));
    const int32_t right =
        std::min(static_cast<int32_t>(std::ceil(std::max({s[0].x, s[1].x, s[2].x}))), v.right - 1);
    const int32_t top = std::max(v.top, static_cast<int32_t>(std::floor(std::min({s[0].y, s[1].y, s[2].y}))));
    const int32_t bottom =
        std::min(static_cast<int32_t>(std::ceil(std::max({s[0].y, s[1].y, s[2].y}))), v.bottom - 1);
    for (int32_t py = top; py <= bottom; ++py) {
        for (int32_t px = left; px <= right; ++px) {
            const auto x = static_cast<float>(px), y = static_cast<float>(py);
            const float w0 = edge(s[1], s[2], x + 0.5f, y + 0.5f) / area;
            const float w1 = edge(s[2], s[0], x + 0.5f, y + 0.5f) / area;
            const float w2 = edge(s[0], s[1], x + 0.5f, y + 0.5f) / area;
            if (w0 < 0 || w1 < 0 || w2 < 0) continue;
            const size_t at =
                static_cast<size_t>(py) * static_cast<size_t>(frameBuffer.width) + static_cast<size_t>(px);
            const float depth = w0 * s[0].depth + w1 * s[1].depth + w2 * s[2].depth;
            if (depth < 0 || depth >= frameBuffer.depth[at]) continue;

            Pixel pixel = color;
            if (fill != nullptr) {
                const auto& p = *points;
                const float q0 = w0 * s[0].inverseW, q1 = w1 * s[1].inverseW, q2 = w2 * s[2].inverseW;
                const float q = q0 + q1 + q2;
                if (std::abs(q) <= 1e-6f) continue;
                pixel = Texel(*fill, (q0 * p[0].u + q1 * p[1].u + q2 * p[2].u) / q,
                              (q0 * p[0].v + q1 * p[1].v + q2 * p[2].v) / q);
            }
            frameBuffer.depth[at] = depth;
            frameBuffer.pixels[at] = pixel;
        }
    }
}

void FillTrianglePlainly(const std::array<ScreenCorner, 3>& corners, Pixel color) {
    PrepareDepth(frameBuffer.viewport, frameBuffer);
    Fill(corners, color, nullptr, nullptr);
}

void FillTrianglePlainly(const std::array<ScreenCorner, 3>& corners,
                         const std::array<TexturePoint, 3>& points, const TextureFill& fill) {
    PrepareDepth(frameBuffer.viewport, frameBuffer);
    Fill(corners, {}, &points, &fill);
}

static float AxisLength(const Matrix4& m, size_t column) {
    const float x = m.m[0][column], y = m.m[1][column], z = m.m[2][column];
    return std::max(std::sqrt(x * x + y * y + z * z), 0.001f);
}

static void DrawFacesPlainly(const Mesh& mesh, const MeshDraw& draw) {
    const float scale[3] = {AxisLength(draw.world, 0), AxisLength(draw.world, 1), AxisLength(draw.world, 2)};
    for (const MeshTriangle& triangle : mesh.triangles) {
        const MeshVertex* vertex[3];
        Vec3 p[3];
        for (size_t i = 0; i < 3; ++i) {
            vertex[i] = &mesh.vertices[static_cast<size_t>(triangle[i])];
            p[i] = TransformPoint(draw.world, vertex[i]->position);
        }
        const Vec3 n = Normalise(Cross(p[1] - p[0], p[2] - p[0]));
        const Vec3 view = Normalise(draw.eye - p[0]);
        if (!(Dot(view, n) > 0)) continue;
        const Vec3 h = Normalise(draw.light + view);
        const float brightness = 0.3f +
                                 (0.62f - 0.12f * draw.roughness) * std::max(Dot(n, draw.light), 0.0f) +
                                 draw.gloss * (1.15f - 0.55f * draw.roughness) *
                                     std::pow(std::max(Dot(n, h), 0.0f), (1 - draw.roughness) * 72 + 8);

        Corner corners[3];
        for (int i = 0; i < 3; ++i) {
            const Vec3 o = vertex[i]->position;
            float a = o.x, b = o.y, scaleA = scale[0], scaleB = scale[1];
            if (std::abs(n.y) >= std::abs(n.x) && std::abs(n.y) >= std::abs(n.z)) {
                b = o.z, scaleB = scale[2];
            } else if (std::abs(n.x) >= std::abs(n.z)) {
                a = o.z, scaleA = scale[2];
            }
            const Vec4 clip = TransformToClip(draw.viewProjection, p[i]);
            const auto color = static_cast<uint32_t>(vertex[i]->color);
            corners[i] = {clip.x,
                          clip.y,
                          clip.z,
                          clip.w,
                          draw.repeat ? a * scaleA * 0.5f : a * 0.5f + 0.5f,
                          draw.repeat ? b * scaleB * 0.5f : b * 0.5f + 0.5f,
                          Channel(color, 16),
                          Channel(color, 8),
                          Channel(color, 0)};
        }
        const std::vector<Corner> polygon = CutAtNearPlane(corners);
        for (size_t k = 1; k + 1 < polygon.size(); ++k) {
            const Corner part[3] = {polygon[0], polygon[k], polygon[k + 1]};
            std::array<ScreenCorner, 3> screen;
            std::array<TexturePoint, 3> points;
            bool visible = true;
            for (size_t i = 0; i < 3; ++i) {
                visible = visible && Project(part[i], screen[i]);
                points[i] = {part[i].u, part[i].v};
            }
            if (!visible) continue;
            if (draw.texture != nullptr) {
                const TextureFill fill{draw.texture, draw.repeat, draw.tint, brightness};
                Fill(screen, {}, &points, &fill);
            } else {
                const Corner& first = polygon[0];
                const Pixel color = Shade(first.red, first.green, first.blue, draw.tint, brightness);
                Fill(screen, color, nullptr, nullptr);
            }
        }
    }
}

static void DrawOutlinePlainly(const Mesh& mesh, const MeshDraw& draw) {
    for (const MeshTriangle& triangle : mesh.triangles) {
        for (size_t i = 0; i < 3; ++i) {
            Point ends[2];
            bool visible = true;
            for (size_t e = 0; e < 2; ++e) {
                const auto index = static_cast<size_t>(triangle[(i + e) % 3]);
                const Vec4 clip = TransformToClip(draw.viewProjection,
                                                  TransformPoint(draw.world, mesh.vertices[index].position));
                ScreenCorner s;
                visible = visible && Project({clip.x, clip.y, clip.z, clip.w, 0, 0, 0, 0, 0}, s);
                if (visible) ends[e] = {static_cast<int32_t>(s.x), static_cast<int32_t>(s.y)};
            }
            if (visible) DrawLine(ends[0], ends[1], Pixel{0x56D6FF}, frameBuffer);
        }
    }
}

void DrawMeshPlainly(const Mesh& mesh, const MeshDraw& draw) {
    PrepareDepth(frameBuffer.viewport, frameBuffer);
    DrawFacesPlainly(mesh, draw);
    if (draw.selected) DrawOutlinePlainly(mesh, draw);
}
