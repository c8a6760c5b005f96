#include "oxSuperAPI/testing/uFakeEditor.h"

#include <utility>

namespace oxSuperAPI {

/// One form. What it shows is filed in the editor when it is shown.
class TFakeEditorForm final : public TfrmResponseEditor {
 public:
  TFakeEditorForm(TFakeEditor& Editor, TEditorKind Kind) : FEditor(Editor) {
    FForm.Kind = Kind;
    ++FEditor.FOpenForms;
  }
  ~TFakeEditorForm() override { --FEditor.FOpenForms; }
  TFakeEditorForm(const TFakeEditorForm&) = delete;
  TFakeEditorForm& operator=(const TFakeEditorForm&) = delete;

  void SetCaption(const std::string& Caption) override {
    FEditor.Faults.Check("SetCaption");
    FForm.Caption = Caption;
  }

  void SetLines(const TStringList& Lines) override {
    FEditor.Faults.Check("SetLines");
    FForm.Lines = Lines;
  }

  void SetStatusText(const std::string& Status) override {
    FEditor.Faults.Check("SetStatusText");
    Expect(FForm.Kind == TEditorKind::Response, "a status was given to the request form");
    FForm.StatusText = Status;
  }

  int ShowModal() override {
    FEditor.Shown.push_back(FForm);
    FEditor.Faults.Check("ShowModal");
    auto& Answers = FForm.Kind == TEditorKind::Request ? FEditor.RequestAnswers : FEditor.ResponseAnswers;
    FAnswer = {.Result = mrCancel};
    if (!Answers.empty()) {
      FAnswer = std::move(Answers.front());
      Answers.pop_front();
    }
    if (FAnswer.During) FAnswer.During();
    return FAnswer.Result;
  }

  TStringList Lines() const override {
    FEditor.Faults.Check("Lines");
    ExpectOk();
    TStringList Result = FForm.Lines;
    if (FAnswer.Text) Result.SetText(*FAnswer.Text);
    return Result;
  }

  std::string StatusText() const override {
    FEditor.Faults.Check("StatusText");
    ExpectOk();
    Expect(FForm.StatusText.has_value(), "the status was asked for, but none was shown");
    return FAnswer.StatusText.value_or(*FForm.StatusText);
  }

  bool SkipChecked() const override {
    FEditor.Faults.Check("SkipChecked");
    ExpectOk();
    Expect(FForm.Kind == TEditorKind::Request, "the response form has no skip check box");
    return FAnswer.Skip;
  }

 private:
  static constexpr int mrCancel = 2;

  static void Expect(bool Condition, const char* Problem) {
    if (!Condition) throw TBeamError(std::string("Editor form: ") + Problem);
  }
  void ExpectOk() const { Expect(FAnswer.Result == mrOk, "its content was asked for, but it was not closed with OK"); }

  TFakeEditor& FEditor;
  TFakeEditorShown FForm;
  TFakeEditorAnswer FAnswer{.Result = mrCancel};
};

std::unique_ptr<TfrmResponseEditor> TFakeEditor::Create(TEditorKind Kind) {
  Faults.Check("Create");
  if (!Available) return nullptr;
  return std::make_unique<TFakeEditorForm>(*this, Kind);
}

}  // namespace oxSuperAPI
