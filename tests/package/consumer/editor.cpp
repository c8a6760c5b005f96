#include "oxSuperAPI/editor/editor_qt.h"

/// Where nobody can see a form, none is offered.
int main() {
  return oxSuperAPI::CreateQtEditor(oxSuperAPI::TEditorKind::Request) ? 1 : 0;
}
