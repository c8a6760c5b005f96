#pragma once

#include <string>
#include <string_view>

#include "oxSuperAPI/host/uHostStrings.h"

namespace oxSuperAPI {

/// A body as a person sees and edits it, and the way back to what travels.
///
/// JSON is laid out, one member a line; other text is shown in its own lines. Line ends are LF. What cannot be shown
/// (control characters, marks that reverse the direction of writing, bytes that are no UTF-8) stands as one code point
/// from U+F700 to U+F7FF a byte.
class OXSUPERAPI_EXPORT TEditorText {
 public:
  /// Takes the body over; JSON is recognised as TJSONRapidJson does.
  explicit TEditorText(TStringList Lines);

  /// UTF-8.
  const std::string& Shown() const { return FShown; }
  /// Whether it is JSON and therefore laid out.
  bool IsJSON() const { return FIsJSON; }
  /// The body with the person's changes, given `Text`, which was made out of `Shown()`. When nothing was changed, the
  /// lines as they came; else one entry, in which all that stands before the first and behind the last change is byte
  /// for byte as it came, and new lines have the line ends of the body.
  TStringList Edited(std::string_view Text) const;

 private:
  TStringList FLines;
  std::string FShown;
  bool FIsJSON = false;
};

}  // namespace oxSuperAPI
