#include "formats/obj_file.h"

#include "render/builtin_meshes.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

constexpr const char* kTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

TEST_CASE("the seven built-in references name the seven indices") {
    const ScratchFolder folder;
    resetScene(false);
    const wchar_t* references[] = {L"builtin:Cube",    L"builtin:Pyramid", L"builtin:Ground",
                                   L"builtin:Plane",   L"builtin:Sphere",  L"builtin:Capsule",
                                   L"builtin:Cylinder"};
    for (int32_t i = 0; i < 7; ++i) {
        CHECK(MeshIndexFromReference(references[i]) == i);
        CHECK(MeshReferenceFromIndex(i) == references[i]);
    }
}

TEST_CASE("an unknown reference gives the Cube and is written as such") {
    const ScratchFolder folder;
    resetScene(false);
    for (const wchar_t* reference : {L"", L"builtin:sphere", L"builtin:Cone", L"builtin:", L"builtin:Sphere ",
                                     L" builtin:Sphere", L"Sphere", L"4", L"FILE:a.obj", L"file"}) {
        CHECK(MeshIndexFromReference(reference) == kCubeMesh);
    }
    for (const int32_t index : {-1, 7, 100, INT32_MAX, INT32_MIN}) {
        CHECK(MeshReferenceFromIndex(index) == L"builtin:Cube");
    }
}

TEST_CASE("a model is loaded by its reference and written relative to the project") {
    const ScratchFolder folder;
    resetScene(false);
    editorState.projectRoot = folder.path;
    PutFile(folder / L"Files\\box.obj", kTriangle);
    CHECK(MeshIndexFromReference(L"file:Files\\box.obj") == 7);
    CHECK(MeshIndexFromReference(L"file:Files\\box.obj") == 7);
    CHECK(editorState.meshes.size() == 8);
    CHECK(MeshReferenceFromIndex(7) == L"file:Files\\box.obj");

    editorState.projectRoot = L"C:\\Elsewhere";
    CHECK(MeshReferenceFromIndex(7) == L"file:" + (folder / L"Files\\box.obj"));
}

TEST_CASE("an imported mesh without a source is written as the Cube") {
    const ScratchFolder folder;
    resetScene(false);
    editorState.meshes.push_back({.name = L"lost"});
    CHECK(MeshReferenceFromIndex(7) == L"builtin:Cube");
}

TEST_CASE("a model reference without a path names no file, not even the project folder's") {
    const ScratchFolder folder;
    resetScene(false);
    PutFile(folder / L"model.obj", kTriangle);
    editorState.projectRoot = folder / L"model.obj";
    CHECK(MeshIndexFromReference(L"file:") == -1);
    CHECK(editorState.meshes.size() == 7);
}

TEST_CASE("a model that cannot be loaded gives no mesh and the importer's message") {
    const ScratchFolder folder;
    resetScene(false);
    editorState.projectRoot = folder.path;
    for (const wchar_t* reference :
         {L"file:missing.obj", L"file:", L"file:.", L"file:..\\..\\..\\nothing.obj"}) {
        editorState.statusMessage.clear();
        CHECK(MeshIndexFromReference(reference) == -1);
        CHECK(editorState.statusMessage == L"OBJ model se nepodarilo nacist.");
    }
    CHECK(editorState.meshes.size() == 7);
}
