#pragma once

#include <string>
#include <string_view>

#include "oxSuperAPI/host/uHostEditor.h"

namespace oxSuperAPI {

/// What a form tells the person.
struct TEditorOptions {
  /// What Cancel on the request form means to this host, as the end of a sentence. The library sends the request as
  /// it was.
  std::string RequestCancelled = "the request is sent as it was";
};

/// What the forms have in common, whatever they are shown with: they keep what the library sets, and give back what the
/// person left. A form shows it and, when it is closed with OK, puts the changes here.
class OXSUPERAPI_EXPORT TEditorForm : public TfrmResponseEditor {
 public:
  /// For the form that derives from it.
  TEditorForm(TEditorKind Kind, TEditorOptions Options);
  /// As TfrmResponseEditor says. @{
  void SetCaption(const std::string& Caption) override { FCaption = Caption; }
  void SetLines(const TStringList& Lines) override { FLines = Lines; }
  void SetStatusText(const std::string& Status) override { FStatus = Status; }
  TStringList Lines() const override { return FLines; }
  std::string StatusText() const override { return FStatus; }
  bool SkipChecked() const override { return FSkip; }
  /// @}

 protected:
  /// Any value but mrOk means Cancel.
  static constexpr int mrCancel = 2;

  /// As it was given. @{
  TEditorKind Kind() const { return FKind; }
  bool IsRequest() const { return FKind == TEditorKind::Request; }
  /// @}
  /// What OK and Cancel do, for the person.
  std::string Explanation() const;

  /// What the form shows, then what was left in it. @{
  std::string FCaption;
  TStringList FLines;
  std::string FStatus;
  bool FSkip = false;
  /// @}

 private:
  TEditorKind FKind;
  TEditorOptions FOptions;
};

/// Whether `Text` is the decimal text of a status: one to three digits. 0 stands for "no answer".
OXSUPERAPI_EXPORT bool IsStatusText(std::string_view Text);

}  // namespace oxSuperAPI
