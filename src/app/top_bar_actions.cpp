#include "app/top_bar_actions.h"

#include "editor/top_bar.h"
#include "project/build_project.h"
#include "project/prefab_editor.h"
#include "project/project_hub.h"
#include "project/save_project.h"
#include "scene/text_entry.h"

bool ClickTopBar(Point pointer, const EditorLayout& layout) {
    const TopBarButton button = TopBarButtonAt(pointer, layout);
    if (button == TopBarButton::None) return false;
    CloseMenu();
    switch (button) {
        case TopBarButton::None: break;
        case TopBarButton::CloseEditor: ClosePrefabEditor(); break;
        case TopBarButton::SavePrefab: SavePrefabEditor(); break;
        case TopBarButton::ProjectHub: ReturnToHub(); break;
        case TopBarButton::SaveProject: SaveProject(); break;
        case TopBarButton::BuildProject: BuildProject(); break;
    }
    return true;
}
