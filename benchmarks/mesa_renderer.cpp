#include "mesa_renderer.h"

#include "mesa_geometry.h"
#include "mesa_opengl.h"
#include "mesa_program.h"
#include "mesa_texture.h"

#include <GL/osmesa.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>

// One thread, and no files left in the user's folders. Both must be known before the context is made.
static OSMesaContext MakeContext() {
    setenv("LP_NUM_THREADS", "0", 1);
    setenv("MESA_SHADER_CACHE_DISABLE", "true", 1);
    // clang-format off
    constexpr int kAttributes[] = {
        OSMESA_FORMAT,                OSMESA_BGRA,
        OSMESA_PROFILE,               OSMESA_CORE_PROFILE,
        OSMESA_CONTEXT_MAJOR_VERSION, 3,
        OSMESA_CONTEXT_MINOR_VERSION, 3,
        0};
    // clang-format on
    return OSMesaCreateContextAttribs(kAttributes, nullptr);
}

static void SetUpDrawing() {
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glEnable(GL_CULL_FACE);
    glFrontFace(GL_CW);  // where the cross product of a face's sides points to the eye
    glProvokingVertex(GL_FIRST_VERTEX_CONVENTION);
    glDisable(GL_DITHER);
}

static std::string StartMesa() {
    static uint32_t unused = 0;
    const OSMesaContext context = MakeContext();
    if (context == nullptr || !OSMesaMakeCurrent(context, &unused, GL_UNSIGNED_BYTE, 1, 1)) return {};
    std::string renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    if (!renderer.starts_with("llvmpipe")) return {};
    SetUpDrawing();
    return renderer;
}

std::string MesaRenderer() {
    static const std::string renderer = StartMesa();
    return renderer;
}

static float Channel(Pixel color, int shift) {
    return static_cast<float>(static_cast<uint32_t>(color) >> shift & 255) / 255;
}

static void AttachRenderbuffer(MesaScene& scene, GLenum attachment, GLenum format) {
    GLuint buffer = 0;
    glGenRenderbuffers(1, &buffer);
    glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    glRenderbufferStorage(GL_RENDERBUFFER, format, scene.width, scene.height);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
    scene.renderbuffers.push_back(buffer);
}

// Memory of Mesa's own: a buffer of ours would be copied to at the end of each frame.
static void MakeFramebuffer(MesaScene& scene, Pixel background) {
    glGenFramebuffers(1, &scene.framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, scene.framebuffer);
    AttachRenderbuffer(scene, GL_COLOR_ATTACHMENT0, GL_RGBA8);
    AttachRenderbuffer(scene, GL_DEPTH_ATTACHMENT, GL_DEPTH_COMPONENT24);
    Require(glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE, "no frame buffer");
    glViewport(0, 0, scene.width, scene.height);
    glClearColor(Channel(background, 16), Channel(background, 8), Channel(background, 0), 0);
}

// Bound to `target` afterwards.
template <typename Value>
static void AddBuffer(MesaCall& call, GLenum target, const std::vector<Value>& values) {
    GLuint buffer = 0;
    glGenBuffers(1, &buffer);
    glBindBuffer(target, buffer);
    glBufferData(target, static_cast<GLsizeiptr>(values.size() * sizeof(Value)), values.data(),
                 GL_STATIC_DRAW);
    call.buffers.push_back(buffer);
}

// From the buffer that is bound, which holds floats from `offset` on.
static void AddInput(GLuint input, GLint floats, size_t stride, size_t offset = 0) {
    glEnableVertexAttribArray(input);
    glVertexAttribPointer(input, floats, GL_FLOAT, GL_FALSE, static_cast<GLsizei>(stride),
                          reinterpret_cast<const void*>(offset));
}

static void AddVertexColors() {
    glEnableVertexAttribArray(kColor);
    glVertexAttribPointer(kColor, GL_BGRA, GL_UNSIGNED_BYTE, GL_TRUE, sizeof(MesaVertex),
                          reinterpret_cast<const void*>(offsetof(MesaVertex, color)));
}

static MesaCall LoadGeometry(const MesaGeometry& geometry) {
    MesaCall call{.indexCount = static_cast<int32_t>(geometry.indices.size())};
    glGenVertexArrays(1, &call.vertexArray);
    glBindVertexArray(call.vertexArray);
    AddBuffer(call, GL_ELEMENT_ARRAY_BUFFER, geometry.indices);
    AddBuffer(call, GL_ARRAY_BUFFER, geometry.vertices);
    AddInput(kPosition, 3, sizeof(MesaVertex));
    AddVertexColors();
    return call;
}

// For the call that was loaded last.
static void LoadTexturePoints(MesaCall& call, const std::vector<TexturePoint>& points) {
    AddBuffer(call, GL_ARRAY_BUFFER, points);
    AddInput(kPoint, 2, sizeof(TexturePoint));
}

// For the call that was loaded last.
static void LoadInstances(MesaCall& call, const std::vector<MesaInstance>& instances) {
    call.instanceCount = static_cast<int32_t>(instances.size());
    AddBuffer(call, GL_ARRAY_BUFFER, instances);
    for (GLuint row = 0; row < 3; ++row) {
        AddInput(kWorldRows + row, 4, sizeof(MesaInstance),
                 offsetof(MesaInstance, world) + row * sizeof(MesaInstance::world[0]));
        AddInput(kNormalRows + row, 3, sizeof(MesaInstance),
                 offsetof(MesaInstance, normalRows) + row * sizeof(Vec3));
        glVertexAttribDivisor(kWorldRows + row, 1);
        glVertexAttribDivisor(kNormalRows + row, 1);
    }
}

static bool TurnAlike(const Matrix4& a, const Matrix4& b) {
    for (size_t row = 0; row < 3; ++row) {
        if (!std::equal(a.m[row].begin(), a.m[row].begin() + 3, b.m[row].begin())) return false;
    }
    return true;
}

// Where a texture lies on a face depends on how the object is turned and scaled.
static bool DifferInPlaceOnly(const BenchObject& a, const BenchObject& b) {
    if (a.mesh != b.mesh || a.draw.tint != b.draw.tint) return false;
    if (!ShareMesaTexture(a.draw, b.draw) || !ShareMesaProgram(a.draw, b.draw, MesaWay::Instanced))
        return false;
    return a.draw.texture == nullptr || TurnAlike(a.draw.world, b.draw.world);
}

// Objects that one call draws.
using MesaGroup = std::vector<BenchObject>;

static std::vector<MesaGroup> GroupsOf(const BenchScene& scene, MesaWay way) {
    const auto belongTogether = [way](const BenchObject& a, const BenchObject& b) {
        return way == MesaWay::PreLit ? ShareMesaTexture(a.draw, b.draw) : DifferInPlaceOnly(a, b);
    };
    std::vector<MesaGroup> groups;
    for (const BenchObject& object : scene.objects) {
        const auto known = std::ranges::find_if(
            groups, [&](const MesaGroup& group) { return belongTogether(group[0], object); });
        if (known == groups.end()) {
            groups.push_back({object});
        } else {
            known->push_back(object);
        }
    }
    return groups;
}

static MesaCall LoadPreLit(const MesaGroup& group, const Rect& viewport) {
    const MesaGeometry geometry = LitMesaGeometry(group, viewport);
    MesaCall call = LoadGeometry(geometry);
    if (group[0].draw.texture != nullptr) LoadTexturePoints(call, geometry.points);
    return call;
}

static MesaCall LoadInstanced(const MesaGroup& group, const Rect& viewport) {
    const MesaGeometry mesh = MesaMesh(group[0], viewport);
    MesaCall call = LoadGeometry(mesh);
    if (group[0].draw.texture != nullptr) LoadTexturePoints(call, mesh.points);
    AddBuffer(call, GL_ARRAY_BUFFER, mesh.normals);
    AddInput(kNormal, 3, sizeof(Vec3));
    std::vector<MesaInstance> instances;
    for (const BenchObject& object : group) instances.push_back(MesaInstanceOf(object));
    LoadInstances(call, instances);
    return call;
}

// What was made for an earlier object that shares it, or what `make` gives.
template <typename Share, typename Make>
static uint32_t NameFor(const MeshDraw& draw, std::vector<MesaShared>& made, Share share, Make make) {
    for (const MesaShared& known : made) {
        if (share(known.draw, draw)) return known.name;
    }
    made.push_back({draw, make(draw)});
    return made.back().name;
}

static MesaCall LoadCall(const MesaGroup& group, MesaWay way, MesaScene& scene) {
    const MeshDraw& draw = group[0].draw;
    const Rect viewport{0, 0, scene.width, scene.height};
    MesaCall call = way == MesaWay::PreLit ? LoadPreLit(group, viewport) : LoadInstanced(group, viewport);
    call.program = NameFor(
        draw, scene.programs,
        [way](const MeshDraw& a, const MeshDraw& b) { return ShareMesaProgram(a, b, way); },
        [way](const MeshDraw& made) { return MakeMesaProgram(made, way); });
    call.texture = NameFor(draw, scene.textures, ShareMesaTexture, MakeMesaTexture);
    return call;
}

MesaScene LoadMesaScene(const BenchScene& scene, MesaWay way) {
    MesaScene loaded{.width = scene.width, .height = scene.height};
    MakeFramebuffer(loaded, scene.background);
    for (const MesaGroup& group : GroupsOf(scene, way)) loaded.calls.push_back(LoadCall(group, way, loaded));
    glFinish();
    Require(glGetError() == GL_NO_ERROR, "a scene could not be loaded");
    return loaded;
}

void ReleaseMesaScene(const MesaScene& scene) {
    for (const MesaCall& call : scene.calls) {
        glDeleteVertexArrays(1, &call.vertexArray);
        glDeleteBuffers(static_cast<GLsizei>(call.buffers.size()), call.buffers.data());
    }
    for (const MesaShared& texture : scene.textures) glDeleteTextures(1, &texture.name);
    for (const MesaShared& program : scene.programs) glDeleteProgram(program.name);
    glDeleteRenderbuffers(static_cast<GLsizei>(scene.renderbuffers.size()), scene.renderbuffers.data());
    glDeleteFramebuffers(1, &scene.framebuffer);
}

void DrawMesaFrame(const MesaScene& scene) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    uint32_t program = 0, texture = 0;
    for (const MesaCall& call : scene.calls) {
        if (call.program != program) glUseProgram(call.program);
        if (call.texture != texture) glBindTexture(GL_TEXTURE_2D, call.texture);
        program = call.program;
        texture = call.texture;
        glBindVertexArray(call.vertexArray);
        glDrawElementsInstanced(GL_TRIANGLES, call.indexCount, GL_UNSIGNED_INT, nullptr, call.instanceCount);
    }
    glFinish();
}

std::vector<Pixel> MesaPicture(const MesaScene& scene) {
    const auto width = static_cast<size_t>(scene.width), height = static_cast<size_t>(scene.height);
    std::vector<Pixel> picture(width * height);
    glReadPixels(0, 0, scene.width, scene.height, GL_BGRA, GL_UNSIGNED_BYTE, picture.data());
    for (size_t row = 0; row < height / 2; ++row) {  // OpenGL's row 0 is at the bottom
        std::swap_ranges(&picture[row * width], &picture[row * width] + width,
                         &picture[(height - 1 - row) * width]);
    }
    return picture;
}
