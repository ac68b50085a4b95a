#include "scene/editor_state.h"

EditorState editorState;
