#include "support/sample_project.h"

#include "base/path_text.h"
#include "formats/project_file.h"
#include "platform/files.h"
#include "project/asset_list.h"
#include "project/project_folder.h"
#include "scene/object_fields.h"
#include "support/frame_update.h"
#include "support/source_path.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>

void OpenSample(const std::wstring& name) {
    editorState = EditorState{};
    const std::wstring folder = AbsolutePath(SourcePath(L"sample/" + name));
    SetProjectFolder(folder);
    REQUIRE(ReadProjectFile(folder));
    RefreshAssetList();
}

std::wstring InSample(std::wstring_view file) { return JoinPath(editorState.projectRoot, file); }

GameObject& Named(std::wstring_view name) {
    const auto found = std::ranges::find(editorState.scene, name, &GameObject::name);
    REQUIRE(found != editorState.scene.end());
    return *found;
}

int32_t Collected(std::wstring_view name) {
    return static_cast<int32_t>(std::ranges::count_if(editorState.scene, [name](const GameObject& object) {
        return object.name == name && !object.active;
    }));
}

void HoldFor(int32_t sixtieths, std::initializer_list<char> keys) {
    Hold(keys);
    const auto frames = std::lround(static_cast<float>(sixtieths) / 60 / frameTime);
    for (long i = 0; i < frames; ++i) UpdateFrame(frameTime);
    ReleaseKeys();
}

void CheckPlaysTheSameTwice(void (*play)()) {
    play();
    const Scene first = editorState.scene;
    play();
    const Scene& second = editorState.scene;
    REQUIRE(first.size() == second.size());
    for (size_t i = 0; i < first.size(); ++i) CHECK(SameBits(first[i], second[i]));
}
