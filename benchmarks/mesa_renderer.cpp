#include "mesa_renderer.h"

#include "mesa_geometry.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/osmesa.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

// Inputs of the vertex shaders.
constexpr GLuint kPosition = 0, kColor = 1, kPoint = 2, kNormal = 3, kWorldRows = 4, kNormalRows = 7;

constexpr auto kLitVertexShader = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec4 color;
layout(location = 2) in vec2 point;
uniform mat4 viewProjection;
uniform float white;
flat out vec3 shown;
out vec2 texturePoint;

void main() {
    gl_Position = viewProjection * vec4(position, 1);
    shown = color.rgb * white;
    texturePoint = point;
}
)";

constexpr auto kInstancedVertexShader = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec4 color;
layout(location = 2) in vec2 point;
layout(location = 3) in vec3 normal;
layout(location = 4) in vec4 world[3];
layout(location = 7) in vec3 normalRows[3];
uniform mat4 viewProjection;
uniform vec3 eye, light;
uniform float roughness, gloss;
flat out vec3 shown;
out vec2 texturePoint;

void main() {
    vec4 p = vec4(position, 1);
    vec3 corner = vec3(dot(world[0], p), dot(world[1], p), dot(world[2], p));
    vec3 n = normalize(vec3(dot(normalRows[0], normal), dot(normalRows[1], normal), dot(normalRows[2], normal)));
    vec3 halfway = normalize(light + normalize(eye - corner));
    float brightness = 0.3 + (0.62 - 0.12 * roughness) * max(dot(n, light), 0.0) +
                       gloss * (1.15 - 0.55 * roughness) *
                           pow(max(dot(n, halfway), 0.0), (1.0 - roughness) * 72.0 + 8.0);
    gl_Position = viewProjection * vec4(corner, 1);
    shown = color.rgb * clamp(brightness, 0.22, 1.6);
    texturePoint = point;
}
)";

constexpr auto kPlainFragmentShader = R"(#version 330 core
flat in vec3 shown;
out vec4 pixel;

void main() { pixel = vec4(shown, 0); }
)";

constexpr auto kTexturedFragmentShader = R"(#version 330 core
flat in vec3 shown;
in vec2 texturePoint;
uniform sampler2D image;
out vec4 pixel;

void main() { pixel = vec4(texture(image, texturePoint).rgb * shown, 0); }
)";

// A mistake of this file, not of the machine.
static void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "Mesa: %s\n", what);
    std::abort();
}

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

static void AttachRenderbuffer(GLenum attachment, GLenum format) {
    GLuint buffer = 0;
    glGenRenderbuffers(1, &buffer);
    glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    glRenderbufferStorage(GL_RENDERBUFFER, format, kBenchWidth, kBenchHeight);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
}

// Memory of Mesa's own: a buffer of ours would be copied to at the end of each frame.
static void MakeFramebuffer() {
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    AttachRenderbuffer(GL_COLOR_ATTACHMENT0, GL_RGBA8);
    AttachRenderbuffer(GL_DEPTH_ATTACHMENT, GL_DEPTH_COMPONENT24);
    Require(glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE, "no frame buffer");
}

static float Channel(Pixel color, int shift) {
    return static_cast<float>(static_cast<uint32_t>(color) >> shift & 255) / 255;
}

static void SetUpDrawing() {
    glViewport(0, 0, kBenchWidth, kBenchHeight);
    const Pixel back = kBenchBackground;
    glClearColor(Channel(back, 16), Channel(back, 8), Channel(back, 0), 0);
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
    MakeFramebuffer();
    SetUpDrawing();
    return renderer;
}

std::string MesaRenderer() {
    static const std::string renderer = StartMesa();
    return renderer;
}

static GLuint CompiledShader(GLenum kind, const char* source) {
    const GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint compiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    Require(compiled != 0, "a shader does not compile");
    return shader;
}

static GLuint LinkedProgram(const char* vertexShader, const char* fragmentShader) {
    const GLuint program = glCreateProgram();
    for (const GLuint shader : {CompiledShader(GL_VERTEX_SHADER, vertexShader),
                                CompiledShader(GL_FRAGMENT_SHADER, fragmentShader)}) {
        glAttachShader(program, shader);
        glDeleteShader(shader);
    }
    glLinkProgram(program);
    GLint linked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    Require(linked != 0, "a program does not link");
    return program;
}

// Depth from 0 .. w, as the program has it, to -w .. w.
static Matrix4 ToOpenGl(const Matrix4& viewProjection) {
    return MultiplyMatrix({{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 2, -1}, {0, 0, 0, 1}}}}, viewProjection);
}

// The objects of a scene differ in mesh and place only. A name that a program does not have is passed over.
static void SetUniforms(GLuint program, const MeshDraw& draw, float white) {
    const auto at = [program](const char* name) { return glGetUniformLocation(program, name); };
    const Matrix4 viewProjection = ToOpenGl(draw.viewProjection);
    glUseProgram(program);
    glUniformMatrix4fv(at("viewProjection"), 1, GL_TRUE, viewProjection.m[0].data());
    glUniform3f(at("eye"), draw.eye.x, draw.eye.y, draw.eye.z);
    glUniform3f(at("light"), draw.light.x, draw.light.y, draw.light.z);
    glUniform1f(at("roughness"), draw.roughness);
    glUniform1f(at("gloss"), draw.gloss);
    glUniform1f(at("white"), white);
}

static GLuint MakeProgram(const MeshDraw& draw, MesaWay way) {
    const bool isTextured = draw.texture != nullptr;
    const GLuint program = LinkedProgram(way == MesaWay::PreLit ? kLitVertexShader : kInstancedVertexShader,
                                         isTextured ? kTexturedFragmentShader : kPlainFragmentShader);
    SetUniforms(program, draw, isTextured ? kMesaWhite : 1);
    return program;
}

static GLuint MakeTexture(const TextureImage& image) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, image.width, image.height, 0, GL_BGRA, GL_UNSIGNED_BYTE,
                 image.texels.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    return texture;
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

static MesaCall LoadGeometry(const MesaGeometry& geometry, bool isTextured) {
    MesaCall call{.indexCount = static_cast<int32_t>(geometry.indices.size())};
    glGenVertexArrays(1, &call.vertexArray);
    glBindVertexArray(call.vertexArray);
    AddBuffer(call, GL_ELEMENT_ARRAY_BUFFER, geometry.indices);
    AddBuffer(call, GL_ARRAY_BUFFER, geometry.vertices);
    AddInput(kPosition, 3, sizeof(MesaVertex));
    AddVertexColors();
    if (!isTextured) return call;
    AddBuffer(call, GL_ARRAY_BUFFER, geometry.points);
    AddInput(kPoint, 2, sizeof(TexturePoint));
    return call;
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

static std::vector<MesaCall> LoadInstanced(const BenchScene& scene) {
    std::vector<MesaCall> calls;
    std::vector<const Mesh*> loaded;
    for (const BenchObject& object : scene.objects) {
        if (std::ranges::find(loaded, object.mesh) != loaded.end()) continue;
        loaded.push_back(object.mesh);
        std::vector<MesaInstance> instances;
        for (const BenchObject& other : scene.objects) {
            if (other.mesh == object.mesh) instances.push_back(MesaInstanceOf(other));
        }
        const MesaGeometry mesh = MesaMesh(object);
        calls.push_back(LoadGeometry(mesh, object.draw.texture != nullptr));
        AddBuffer(calls.back(), GL_ARRAY_BUFFER, mesh.normals);
        AddInput(kNormal, 3, sizeof(Vec3));
        LoadInstances(calls.back(), instances);
    }
    return calls;
}

MesaScene LoadMesaScene(const BenchScene& scene, MesaWay way) {
    const MeshDraw& draw = scene.objects[0].draw;
    MesaScene loaded{.program = MakeProgram(draw, way)};
    if (draw.texture != nullptr) loaded.texture = MakeTexture(*draw.texture);
    loaded.calls = way == MesaWay::PreLit
                       ? std::vector{LoadGeometry(LitMesaGeometry(scene), draw.texture != nullptr)}
                       : LoadInstanced(scene);
    glFinish();
    Require(glGetError() == GL_NO_ERROR, "a scene could not be loaded");
    return loaded;
}

void ReleaseMesaScene(const MesaScene& scene) {
    for (const MesaCall& call : scene.calls) {
        glDeleteVertexArrays(1, &call.vertexArray);
        glDeleteBuffers(static_cast<GLsizei>(call.buffers.size()), call.buffers.data());
    }
    glDeleteTextures(1, &scene.texture);
    glDeleteProgram(scene.program);
}

void DrawMesaFrame(const MesaScene& scene) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glUseProgram(scene.program);
    glBindTexture(GL_TEXTURE_2D, scene.texture);
    for (const MesaCall& call : scene.calls) {
        glBindVertexArray(call.vertexArray);
        glDrawElementsInstanced(GL_TRIANGLES, call.indexCount, GL_UNSIGNED_INT, nullptr, call.instanceCount);
    }
    glFinish();
}

std::vector<Pixel> MesaPicture() {
    constexpr size_t kWidth = kBenchWidth, kHeight = kBenchHeight;
    std::vector<Pixel> picture(kWidth * kHeight);
    glReadPixels(0, 0, kBenchWidth, kBenchHeight, GL_BGRA, GL_UNSIGNED_BYTE, picture.data());
    for (size_t row = 0; row < kHeight / 2; ++row) {  // OpenGL's row 0 is at the bottom
        std::swap_ranges(&picture[row * kWidth], &picture[row * kWidth] + kWidth,
                         &picture[(kHeight - 1 - row) * kWidth]);
    }
    return picture;
}
