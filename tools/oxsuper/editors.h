#pragma once

#include <cstdint>
#include <memory>

#include "oxSuperAPI/host/uHostEditor.h"

/// The forms of --edit-request and --edit-response: the dialog where it is built in and a display is there, else the
/// person's own editor on the terminal.
namespace oxSuperAPI {

/// What a person decided about a request in its form. In either of the last two cases it is not sent.
enum class TReview : std::uint8_t { Passed, Skipped, Cancelled };

/// Whether CreateEditor can give a form.
bool EditorAvailable();

/// A form that fails leaves a warning and counts as cancelled. A cancelled form of a request raises, so that nothing is
/// sent; an answer is there and has to be read. `Review`, which has to outlive the form, learns what was decided. When
/// no form can be shown, null for a response, and TBeamError for a request.
std::unique_ptr<TfrmResponseEditor> CreateEditor(TEditorKind Kind, TReview& Review);

}  // namespace oxSuperAPI
