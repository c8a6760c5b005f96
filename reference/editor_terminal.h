#pragma once

#include <memory>

#include "oxSuperAPI/reference/editor_form.h"

namespace oxSuperAPI {

/// Whether CreateTerminalEditor gives a form: a person is at a terminal (see HasTerminal).
OXSUPERAPI_EXPORT bool TerminalEditorAvailable();

/// The form for a session without a display, in the manner of a commit message: the person's own editor ($VISUAL, else
/// $EDITOR, else `editor` or `vi`) on a private file whose commented header holds the status or the skip check box.
/// Null without a terminal.
///
/// `ShowModal` raises TBeamError when the editor cannot be started. An emptied file, or an editor that ends with
/// another status than 0, is Cancel. A header that is not understood is pointed out, and the editor opened again on the
/// same text; the person is asked whether a request that is no JSON is meant so. The file is removed in every case but
/// SIGKILL.
OXSUPERAPI_EXPORT std::unique_ptr<TfrmResponseEditor> CreateTerminalEditor(TEditorKind Kind,
                                                                           const TEditorOptions& Options = {});

}  // namespace oxSuperAPI
