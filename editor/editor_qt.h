#pragma once

#include <cstdint>
#include <memory>

#include "oxSuperAPI/reference/editor_form.h"

namespace oxSuperAPI {

/// Where a form may be shown: Qt's "offscreen" and "minimal" platforms show nothing to anybody, so that a modal form on
/// them would wait for ever. Tests, which answer it themselves, ask for them.
enum class TScreens : std::uint8_t { Real, OffscreenToo };

/// Whether CreateQtEditor gives a form now. Never aborts the process, as Qt itself does without a display.
///
/// With a QApplication of the host: its platform is a real one. From another thread than its own the form
/// is shown in its thread, by a call that blocks until the form is closed; that thread has to be in its event loop, and
/// must not wait for the calling thread in any other way.
///
/// Without one: this is the process's main thread, the X server of $DISPLAY lets us in or the Wayland socket answers,
/// and Qt's plugin for it can be loaded. Then a QApplication is made and kept as long as the process lives; the locale
/// stays what it was. From then on forms are offered in that thread only.
OXSUPERAPI_EXPORT bool QtEditorAvailable(TScreens Screens = TScreens::Real);

/// The form as a dialog: text with JSON laid out and coloured, find (Ctrl+F, F3), status or skip check box, OK
/// (Ctrl+Enter) and Cancel (Esc). It remembers its size in the person's settings. A text above 4 MiB, or with a line
/// above 64 KiB, is shown in part and cannot be changed. Null when it is not available.
OXSUPERAPI_EXPORT std::unique_ptr<TfrmResponseEditor> CreateQtEditor(TEditorKind Kind,
                                                                     const TEditorOptions& Options = {},
                                                                     TScreens Screens = TScreens::Real);

}  // namespace oxSuperAPI
