#include "editors.h"

#include <unistd.h>

#include <iostream>
#include <string>
#include <utility>

#include "output.h"
#include "oxSuperAPI/reference/editor_terminal.h"
#ifdef OXSUPER_QT_EDITOR
#include "oxSuperAPI/editor/editor_qt.h"
#endif

namespace oxSuperAPI {
namespace {

std::unique_ptr<TfrmResponseEditor> CreateForm(TEditorKind Kind) {
  const TEditorOptions Options{.RequestCancelled = "nothing is sent"};
#ifdef OXSUPER_QT_EDITOR
  if (auto Dialog = CreateQtEditor(Kind, Options)) return Dialog;
#endif
  return CreateTerminalEditor(Kind, Options);
}

/// Hands everything on to the form that is shown.
class TReviewedForm final : public TfrmResponseEditor {
 public:
  TReviewedForm(std::unique_ptr<TfrmResponseEditor> Form, TEditorKind Kind, TReview& Review)
      : FForm(std::move(Form)), FKind(Kind), FReview(Review) {}

  void SetCaption(const std::string& Caption) override { FForm->SetCaption(Caption); }
  void SetLines(const TStringList& Lines) override { FForm->SetLines(Lines); }
  void SetStatusText(const std::string& Status) override { FForm->SetStatusText(Status); }
  TStringList Lines() const override { return FForm->Lines(); }
  std::string StatusText() const override { return FForm->StatusText(); }
  bool SkipChecked() const override { return FForm->SkipChecked(); }

  int ShowModal() override {
    if (::isatty(STDERR_FILENO) == 1) std::cerr << "\r\033[K" << std::flush;  // what is under way stands there
    const bool Edited = ShowForm();
    if (FKind == TEditorKind::Response) return Edited ? mrOk : mrOk + 1;
    FReview = !Edited ? TReview::Cancelled : FForm->SkipChecked() ? TReview::Skipped : TReview::Passed;
    if (!Edited) throw TBeamError("The request was cancelled in the editor");
    return mrOk;
  }

 private:
  bool ShowForm() {
    try {
      return FForm->ShowModal() == mrOk;
    } catch (const std::exception& Error) {
      Note("warning: " + Printable(Error.what()));
      return false;
    }
  }

  std::unique_ptr<TfrmResponseEditor> FForm;
  TEditorKind FKind;
  TReview& FReview;
};

}  // namespace

bool EditorAvailable() {
#ifdef OXSUPER_QT_EDITOR
  if (QtEditorAvailable()) return true;
#endif
  return TerminalEditorAvailable();
}

std::unique_ptr<TfrmResponseEditor> CreateEditor(TEditorKind Kind, TReview& Review) {
  auto Form = CreateForm(Kind);
  if (Form) return std::make_unique<TReviewedForm>(std::move(Form), Kind, Review);
  if (Kind == TEditorKind::Response) return nullptr;
  Review = TReview::Cancelled;
  throw TBeamError("The request was to be shown, and no editor is available");
}

}  // namespace oxSuperAPI
