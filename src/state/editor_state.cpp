#include "state/editor_state.h"

EditorState editorState;
