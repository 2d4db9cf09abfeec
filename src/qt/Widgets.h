#pragma once

/// Everything that a program with windows needs to embed the editor.

#include "component/Core.h"
#include "qt/CLSEditorWidget.h"
#include "qt/EmbeddableEditors.h"
#include "qt/ShownDiagramWindow.h"
#include "qt/Suite.h"
