// The object clipboard: one copied object, kept across scenes and independent of the system's clipboard.
#pragma once

void copySelected();

// Places the copy beside the copied object's place and selects it.
void pasteObject();
