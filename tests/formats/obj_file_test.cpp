#include "formats/obj_file.h"

#include "platform/headless/fault_injection.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/picture.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>

using namespace std::string_literals;

using Triangles = std::vector<MeshTriangle>;

static const std::string kThreeVertices = "v 0 0 0\nv 2 0 0\nv 0 2 0\n";

static bool Read(std::string_view bytes, Mesh& mesh) {
    const ScratchFolder folder;
    PutFile(folder / L"model.obj", bytes);
    return ReadObjFile(folder / L"model.obj", mesh);
}

static Mesh Model(std::string_view bytes) {
    Mesh mesh;
    REQUIRE(Read(bytes, mesh));
    return mesh;
}

// The triangles that face lines give over four vertices.
static Triangles Faces(const std::string& lines) {
    return Model(kThreeVertices + "v 2 2 0\n" + lines).triangles;
}

TEST_CASE("a face of four corners becomes a fan of two triangles") {
    CHECK(Faces("f 1 2 3 4\n") == Triangles{{0, 1, 2}, {0, 2, 3}});
    CHECK(Faces("f 1 2 3 4 1 2\n") == Triangles{{0, 1, 2}, {0, 2, 3}, {0, 3, 0}, {0, 0, 1}});
}

TEST_CASE("negative indices count back from the last vertex read so far") {
    CHECK(Model(kThreeVertices + "f -3 -2 -1\n").triangles == Triangles{{0, 1, 2}});
    CHECK(Model(kThreeVertices + "f -3 -2 -1\nv 1 1 1\nf -1 -2 -3\n").triangles ==
          Triangles{{0, 1, 2}, {3, 2, 1}});
}

TEST_CASE("a corner is read up to its first slash") {
    CHECK(Faces("f 1/7/3 2//9 3/4\n") == Triangles{{0, 1, 2}});
    CHECK(Faces("f 1.9 2abc +3\n") == Triangles{{0, 1, 2}});
}

TEST_CASE("corners that name no vertex are skipped, and a face needs three that do") {
    CHECK(Faces("f 1 0 2 5 x -5 /2 3\nf 1 2\nf 1 2 9\nf\nf \n") == Triangles{{0, 1, 2}});
    CHECK(Faces("f 1 2 3 99999999999 -99999999999 2147483648 4294967297\n") == Triangles{{0, 1, 2}});
    CHECK(Faces("f 1 2 3 -2147483648\n") == Triangles{{0, 1, 2}});
}

TEST_CASE("a face cannot name a vertex that comes after it") {
    CHECK(Model(kThreeVertices + "f 1 2 3 4\nv 1 1 1\nf 2 3 4 5\n").triangles ==
          Triangles{{0, 1, 2}, {1, 2, 3}});
}

TEST_CASE("every kind of blank stands between the corners of a face") {
    CHECK(Faces("f 1\v2\f3\t4\r\n") == Triangles{{0, 1, 2}, {0, 2, 3}});
}

TEST_CASE("a face that comes before its vertices gives no triangle") {
    Mesh mesh;
    CHECK_FALSE(Read("f 1 2 3\n" + kThreeVertices, mesh));
    CHECK(Model("v 0 0 0\nf 1 2 3\nv 2 0 0\nv 0 2 0\nf 3 2 1\n").triangles == Triangles{{2, 1, 0}});
}

TEST_CASE("a model ten units tall and two wide ends two tall and 0.4 wide around the origin") {
    const Mesh mesh = Model("v 5 100 -1\nv 7 100 -1\nv 7 110 -1\nv 5 110 -1\nf 1 2 3 4\n");
    REQUIRE(mesh.vertices.size() == 4);
    const Vec3 expected[] = {{-0.2f, -1, 0}, {0.2f, -1, 0}, {0.2f, 1, 0}, {-0.2f, 1, 0}};
    for (size_t i = 0; i < 4; ++i) {
        CHECK(Length(mesh.vertices[i].position - expected[i]) < 1e-6f);
        CHECK(mesh.vertices[i].color == Pixel{0xFFFFFF});
    }
}

TEST_CASE("a model in one point stays finite, at the origin") {
    const Mesh mesh = Model("v 7 7 7\nv 7 7 7\nv 7 7 7\nf 1 2 3\n");
    for (const MeshVertex& vertex : mesh.vertices) CHECK(vertex.position == Vec3{});
}

TEST_CASE("a model smaller than a thousandth is not blown up to full size") {
    const Mesh mesh = Model("v 0 0 0\nv 0.0005 0 0\nv 0 0 0\nf 1 2 3\n");
    CHECK(mesh.vertices[0].position.x == doctest::Approx(-0.5));
    CHECK(mesh.vertices[1].position.x == doctest::Approx(0.5));
}

TEST_CASE("a model as large as floats go is scaled without overflow") {
    const Mesh mesh = Model("v -3e38 -3e38 3e38\nv 3e38 3e38 3e38\nv 3e38 -3e38 3e38\nf 1 2 3\n");
    CHECK(mesh.vertices[0].position == Vec3{-1, -1, 0});
    CHECK(mesh.vertices[1].position == Vec3{1, 1, 0});
}

TEST_CASE("a vertex whose coordinates cannot be read counts as absent") {
    for (const char* line : {"v 1 2\n", "v 1 2 x\n", "v\n", "v \n", "v 1,5 2 3\n", "v infi 0 0\n",
                             "v n 0 0\n", "v -+inf 0 0\n", "v 0 nann 0\n", "v 0 in 0\n", "v nan(1 0 0\n",
                             "vt 9 9 9\n", "vn 9 9 9\n", "V 9 9 9\n", " v 9 9 9\n", "v\t9 9 9\n"}) {
        CAPTURE(line);
        const Mesh mesh = Model(line + kThreeVertices + "f 1 2 3\n");
        CHECK(mesh.vertices.size() == 3);
    }
}

TEST_CASE("a number of a vertex that is not finite is 0, and the vertex keeps its place in the count") {
    for (const char* number : {"nan", "-nan", "NaN", "nan(7)", "inf", "-inf", "+Infinity", "1e99", "-1e99",
                               "999999999999999999999999999999999999999999"}) {
        CAPTURE(number);
        // The corners of a square of edge 2 around the origin: they are not moved and not scaled.
        const Mesh mesh = Model("v -1 -1 0\nv 1 -1 "s + number + "\nv 1 1 0\nv -1 1 0\nf 2 3 4\n");
        REQUIRE(mesh.vertices.size() == 4);
        CHECK(mesh.vertices[1].position == Vec3{1, -1, 0});
        CHECK(mesh.triangles == Triangles{{1, 2, 3}});
    }
    const Mesh mesh = Model("v inf nan 1e99\nv 1 -1 0\nv -1 1 0\nf 1 2 3\n");
    CHECK(mesh.vertices[0].position == Vec3{0, 0, 0});
}

TEST_CASE("numbers may have exponents, signs, a fourth value and blanks around them") {
    const Mesh mesh = Model("v  -1e0\t-1.0E+0 0 1.0\nv +1 -1 0 # corner\nv 1.e0 .1e1 -0\nf  1\t2   3  \n");
    REQUIRE(mesh.vertices.size() == 3);
    CHECK(mesh.vertices[0].position == Vec3{-1, -1, 0});
    CHECK(mesh.vertices[1].position == Vec3{1, -1, 0});
    CHECK(mesh.vertices[2].position == Vec3{1, 1, 0});
}

TEST_CASE("CR LF, a byte-order mark and a missing last line end make no difference") {
    const Mesh plain = Model(kThreeVertices + "f 1 2 3\n");
    for (const std::string& bytes :
         {"v 0 0 0\r\nv 2 0 0\r\nv 0 2 0\r\nf 1 2 3\r\n"s, "\xEF\xBB\xBF" + kThreeVertices + "f 1 2 3",
          kThreeVertices + "f 1 2 3\r"}) {
        const Mesh mesh = Model(bytes);
        CHECK(mesh.vertices == plain.vertices);
        CHECK(mesh.triangles == plain.triangles);
    }
}

TEST_CASE("everything except vertices and faces is ignored") {
    CHECK(
        Faces("# c\no name\ng group\nusemtl m\nmtllib f.mtl\ns off\nfoo 1 2 3\nf1 2 3\nF 1 2 3\nf 1 2 3\n") ==
        Triangles{{0, 1, 2}});
    CHECK(Faces("f 1 2 3\n\x1A\0\xFF\nf 2 3 4\n"s) == Triangles{{0, 1, 2}, {1, 2, 3}});
}

TEST_CASE("a line is read in pieces of 1023 bytes, each a line of its own") {
    // The second piece of the comment begins with "f " and counts as a face.
    std::string comment(1023, '#');
    CHECK(Faces(comment + "f 1 2 3\n") == Triangles{{0, 1, 2}});
    comment.pop_back();
    CHECK(Faces(comment + "f 1 2 3\nf 2 3 4\n") == Triangles{{1, 2, 3}});

    // A face of many corners ends with its first piece: "f" and 510 corners, then one more blank and corner.
    std::string face = "f";
    for (int32_t i = 0; i < 600; ++i) face += " 1";
    CHECK(Faces(face + "\n").size() == 511 - 2);
}

TEST_CASE("a line of ten megabytes is read in pieces") {
    CHECK(Faces(std::string(10'000'000, '#') + "\nf 1 2 3\n") == Triangles{{0, 1, 2}});
}

TEST_CASE("a file without faces or vertices, an empty and a missing one are no models") {
    Mesh mesh{.vertices = {{}}};
    CHECK_FALSE(Read(kThreeVertices, mesh));
    CHECK_FALSE(Read("f 1 2 3\n", mesh));
    CHECK_FALSE(Read("", mesh));
    CHECK_FALSE(Read("\xFF\xFEv\0 \0"s, mesh));
    const ScratchFolder folder;
    CHECK_FALSE(ReadObjFile(folder / L"missing.obj", mesh));
    CHECK_FALSE(ReadObjFile(folder.path, mesh));
    CHECK_FALSE(ReadObjFile(L"", mesh));
    CHECK(mesh.vertices.size() == 1);
}

TEST_CASE("every triangle of a model names vertices of that model") {
    std::string bytes;
    uint32_t seed = 99;
    for (int32_t i = 0; i < 2000; ++i) {
        seed = seed * 1664525 + 1013904223;
        bytes += seed % 3 == 0 ? "v" : "f";
        for (int32_t k = 0; k < 4; ++k) {
            seed = seed * 1664525 + 1013904223;
            bytes += " " + std::to_string(static_cast<int32_t>(seed >> 20) - 2048);
        }
        bytes += "\n";
    }
    const Mesh mesh = Model(bytes);
    const auto count = static_cast<int32_t>(mesh.vertices.size());
    for (const MeshTriangle& triangle : mesh.triangles) {
        for (const int32_t index : triangle) CHECK((index >= 0 && index < count));
    }
    for (const MeshVertex& vertex : mesh.vertices) CHECK(std::fabs(vertex.position.x) <= 1);
}

TEST_CASE("a model is loaded once and kept under its name and its full path") {
    const ScratchFolder folder;
    resetScene(false);
    folderAnswers.workingFolder = folder.path;
    PutFile(folder / L"v1.2\\my box.obj", kThreeVertices + "f 1 2 3\n");
    PutFile(folder / L"other", kThreeVertices + "f 1 2 3\n");
    CHECK(LoadObjIntoLibrary(L"v1.2\\my box.obj") == 7);
    CHECK(LoadObjIntoLibrary(folder / L"v1.2\\my box.obj") == 7);
    CHECK(LoadObjIntoLibrary(L"v1.2\\..\\v1.2\\my box.obj") == 7);
    CHECK(LoadObjIntoLibrary(folder / L"other") == 8);
    REQUIRE(editorState.meshes.size() == 9);
    CHECK(editorState.meshes[7].name == L"my box");
    CHECK(editorState.meshes[7].source == folder / L"v1.2\\my box.obj");
    CHECK(editorState.meshes[8].name == L"other");

    RemoveTree(folder / L"other");
    CHECK(LoadObjIntoLibrary(folder / L"other") == 8);
}

TEST_CASE("no model is read twice in a row of loads, whether it could be loaded or not") {
    const ScratchFolder folder;
    resetScene(false);
    PutFile(folder / L"old.obj", kThreeVertices + "f 1 2 3\n");
    PutFile(folder / L"new.obj", kThreeVertices + "f 1 2 3\n");
    CHECK(LoadObjIntoLibrary(folder / L"old.obj") == 7);

    KnownModels known = ModelsInLibrary();
    CHECK(known == KnownModels{{folder / L"old.obj", 7}});
    CHECK(LoadObjIntoLibrary(folder / L"new.obj", known) == 8);
    CHECK(LoadObjIntoLibrary(folder / L"late.obj", known) == -1);
    const int32_t steps = fileFaults.steps;
    PutFile(folder / L"late.obj", kThreeVertices + "f 1 2 3\n");
    editorState.statusMessage.clear();
    CHECK(LoadObjIntoLibrary(folder / L"old.obj", known) == 7);
    CHECK(LoadObjIntoLibrary(folder / L".\\new.obj", known) == 8);
    CHECK(editorState.statusMessage == L"");
    CHECK(LoadObjIntoLibrary(folder / L"late.obj", known) == -1);
    CHECK(editorState.statusMessage == L"OBJ model se nepodarilo nacist.");
    CHECK(fileFaults.steps == steps);

    CHECK(LoadObjIntoLibrary(folder / L"late.obj") == 9);
    CHECK(editorState.meshes.size() == 10);
}

TEST_CASE("a model that cannot be loaded leaves the library alone and says so") {
    const ScratchFolder folder;
    resetScene(false);
    PutFile(folder / L"empty.obj", "");
    for (const std::wstring& path :
         {folder / L"empty.obj", folder / L"missing.obj", folder.path, std::wstring{}}) {
        editorState.statusMessage.clear();
        CHECK(LoadObjIntoLibrary(path) == -1);
        CHECK(editorState.statusMessage == L"OBJ model se nepodarilo nacist.");
    }
    CHECK(editorState.meshes.size() == 7);
}

TEST_CASE("a long model shows how many megabytes of it are read") {
    StartPicture(200, 100);
    std::string bytes = kThreeVertices + "f 1 2 3\n";
    for (int32_t line = 0; line < 8200; ++line) bytes += '#' + std::string(298, ' ') + '\n';
    headless.workTimeStep = 1;
    Model(bytes);
    headless.workTimeStep = 0;
    // A look at the clock every 4,096 lines: after 1.2 and after 2.5 million bytes.
    for (const wchar_t* text : {L"Nacitam model: 2 z 3 MB", L"Nacitam model: 3 z 3 MB"})
        CHECK(std::ranges::find(headless.texts, text, &DrawnText::text) != headless.texts.end());
}
