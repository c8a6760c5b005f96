#pragma once

#include <QDialog>
#include <optional>
#include <string>

#include "oxSuperAPI/host/uHostEditor.h"
#include "oxSuperAPI/reference/editor_text.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace oxSuperAPI {

class TFindBar;

/// The dialog behind CreateQtEditor.
class TEditorDialog final : public QDialog {
 public:
  /// Above these a text is shown in part and cannot be changed: Qt needs seconds to lay such lines and texts out. In
  /// bytes as shown. @{
  static constexpr std::size_t MaxTextBytes = std::size_t{4} << 20;
  static constexpr std::size_t MaxLineBytes = std::size_t{64} << 10;
  /// @}

  /// `Explanation` says what OK and Cancel do.
  TEditorDialog(TEditorKind Kind, const QString& Explanation, QWidget* Parent = nullptr);

  /// As TfrmResponseEditor says. @{
  void SetLines(const TStringList& Lines);
  void SetStatusText(const std::string& Status);
  TStringList Lines() const;
  std::string StatusText() const;
  bool SkipChecked() const;
  /// @}

  /// Stays open, and points it out, while the status is no number.
  void accept() override;
  void done(int Result) override;

 private:
  bool IsRequest() const { return FKind == TEditorKind::Request; }
  QString SizeKey() const;
  void Build(const QString& Explanation);
  void AddKeys();
  void ShowPartly(const std::string& Text);
  std::string Text() const;
  void CheckText();
  void ShowPosition();
  void GoToProblem();
  void Hint(const QString& Message);

  TEditorKind FKind;
  TStringList FLines;
  std::optional<TEditorText> FShown;  ///< none while the text is shown in part
  int FProblemPosition = -1;          ///< where the text stops being JSON
  QPlainTextEdit* FText = nullptr;
  TFindBar* FFind = nullptr;
  QLineEdit* FStatus = nullptr;  ///< response only
  QCheckBox* FSkip = nullptr;    ///< request only
  QWidget* FHintRow = nullptr;
  QLabel* FHint = nullptr;
  QWidget* FGoTo = nullptr;
  QLabel* FPosition = nullptr;
};

}  // namespace oxSuperAPI
