#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "oxSuperAPI/host/uHostEditor.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// What the imagined person does with one form.
struct TFakeEditorAnswer {
  /// What `ShowModal` returns.
  int Result = mrOk;
  std::optional<std::string> Text = {};        ///< new content, as one line; without it the lines stay as shown
  std::optional<std::string> StatusText = {};  ///< new status; without it the status stays as shown
  bool Skip = false;                           ///< the skip check box of the request form
  std::function<void()> During = nullptr;      ///< run while the form is open
};

/// A form as it was shown.
struct TFakeEditorShown {
  /// As set before it opened; the status is empty on a request form. @{
  TEditorKind Kind = TEditorKind::Request;
  std::string Caption;
  TStringList Lines;
  std::optional<std::string> StatusText;
  /// @}
};

/// Editor forms that show themselves to a script. A form without a scripted answer is cancelled. A form used against
/// its contract (status on the request form, result asked for without OK, ...) raises TBeamError.
class TFakeEditor {
 public:
  /// The operations of all forms, and "Create".
  TFaults Faults{"Create",    "SetCaption", "SetLines",   "SetStatusText",
                 "ShowModal", "Lines",      "StatusText", "SkipChecked"};
  /// False: this host has no editors, and Create gives null.
  bool Available = true;
  /// Every form that was shown, in order.
  std::vector<TFakeEditorShown> Shown;
  /// What the next forms of each kind get. @{
  std::deque<TFakeEditorAnswer> RequestAnswers;
  std::deque<TFakeEditorAnswer> ResponseAnswers;
  /// @}

  /// Forms that are still alive.
  int OpenForms() const { return FOpenForms; }

  /// The form must not outlive this object.
  std::unique_ptr<TfrmResponseEditor> Create(TEditorKind Kind);

 private:
  friend class TFakeEditorForm;
  int FOpenForms = 0;
};

}  // namespace oxSuperAPI
