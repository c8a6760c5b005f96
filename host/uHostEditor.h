#pragma once

#include <cstdint>
#include <string>

#include "oxSuperAPI/host/uHostStrings.h"

namespace oxSuperAPI {

/// Result of `ShowModal` when the person closed the form with OK. Any other value means Cancel.
inline constexpr int mrOk = 1;

/// What an editor form is for: the request form has the skip check box, the response form the status field.
enum class TEditorKind : std::uint8_t { Request, Response };

/// The host's modal form in which a developer looks at, and may change, a request or a response.
class OXSUPERAPI_EXPORT TfrmResponseEditor {
 public:
  virtual ~TfrmResponseEditor() = default;
  /// What the form shows; set before `ShowModal`. @{
  virtual void SetCaption(const std::string& Caption) = 0;
  virtual void SetLines(const TStringList& Lines) = 0;
  /// @}

  /// Decimal text of the HTTP status; called on the response form only.
  virtual void SetStatusText(const std::string& Status) = 0;
  /// Blocks until the form is closed.
  virtual int ShowModal() = 0;
  /// What the person left in the form. Asked only after `ShowModal` returned `mrOk`. @{
  virtual TStringList Lines() const = 0;
  virtual std::string StatusText() const = 0;
  /// @}

  /// The skip check box of the request form: do not send this request.
  virtual bool SkipChecked() const = 0;
};

}  // namespace oxSuperAPI
