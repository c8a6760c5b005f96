#include "oxSuperAPI/editor/editor_qt.h"

#include <QApplication>
#include <QPointer>
#include <QThread>
#include <exception>

#include "oxSuperAPI/editor/display.h"
#include "oxSuperAPI/editor/editor_dialog.h"

namespace oxSuperAPI {

namespace {

class TQtForm final : public TEditorForm {
 public:
  TQtForm(QApplication& Application, TEditorKind Kind, const TEditorOptions& Options)
      : TEditorForm(Kind, Options), FApplication(Application) {}

  int ShowModal() override {
    int Result = mrCancel;
    std::exception_ptr Problem;  // must not pass through Qt's event loop
    const auto Run = [&] {
      try {
        Result = ShowInThisThread();
      } catch (...) {
        Problem = std::current_exception();
      }
    };
    if (QThread::currentThread() == FApplication.thread())
      Run();
    else
      QMetaObject::invokeMethod(&FApplication, Run, Qt::BlockingQueuedConnection);
    if (Problem) std::rethrow_exception(Problem);
    return Result;
  }

 private:
  int ShowInThisThread() {
    const TLocaleKeeper Locale;
    // The window to which the dialog belongs may be closed, and take it along, while it is open.
    const QPointer<TEditorDialog> Dialog =
        new TEditorDialog(Kind(), QString::fromStdString(Explanation()), QApplication::activeWindow());
    struct TDelete {
      const QPointer<TEditorDialog>& Dialog;
      ~TDelete() { delete Dialog.data(); }
    } const Delete{Dialog};
    Dialog->setWindowTitle(QString::fromStdString(FCaption));
    Dialog->SetLines(FLines);
    Dialog->SetStatusText(FStatus);
    if (Dialog->exec() != QDialog::Accepted || !Dialog) return mrCancel;
    FLines = Dialog->Lines();
    FStatus = Dialog->StatusText();
    FSkip = Dialog->SkipChecked();
    return mrOk;
  }

  QApplication& FApplication;
};

}  // namespace

bool QtEditorAvailable(TScreens Screens) {
  return !UsablePlatform(Screens).empty();
}

std::unique_ptr<TfrmResponseEditor> CreateQtEditor(TEditorKind Kind, const TEditorOptions& Options, TScreens Screens) {
  QApplication* const Application = NeedApplication(Screens);
  return Application ? std::make_unique<TQtForm>(*Application, Kind, Options) : nullptr;
}

}  // namespace oxSuperAPI
