#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace oxSuperAPI {

/// The line below a text in which it is searched. Hidden until it is opened; closing it gives the text the focus back.
class TFindBar final : public QWidget {
 public:
  /// `Text` has to live as long as the bar.
  TFindBar(QPlainTextEdit& Text, QWidget* Parent);

  /// Shows the bar, with what is selected in the text as what is looked for.
  void Open();
  /// Selects the next or the previous place, from the other end when there is none before this end. Opens the bar when
  /// nothing is looked for yet. @{
  void Next() { Find(false); }
  void Previous() { Find(true); }
  /// @}

 private:
  void Close();
  void Find(bool Backward);
  /// Goes on from where the selection begins, while what is looked for is being typed.
  void FindAsTyped();
  bool Search(bool Backward);
  void Say(const QString& Message, bool IsProblem);

  QPlainTextEdit& FText;
  QLineEdit* FWanted;
  QCheckBox* FCase;
  QLabel* FMessage;
};

}  // namespace oxSuperAPI
