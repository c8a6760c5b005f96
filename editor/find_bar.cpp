#include "oxSuperAPI/editor/find_bar.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QToolButton>

namespace oxSuperAPI {

TFindBar::TFindBar(QPlainTextEdit& Text, QWidget* Parent)
    : QWidget(Parent), FText(Text), FWanted(new QLineEdit), FCase(new QCheckBox("Match &case")), FMessage(new QLabel) {
  FWanted->setObjectName("wanted");
  FWanted->setPlaceholderText("Find in the text");
  FWanted->setClearButtonEnabled(true);
  FMessage->setObjectName("found");

  auto* const Layout = new QHBoxLayout(this);
  Layout->setContentsMargins(0, 0, 0, 0);
  Layout->addWidget(FWanted, 2);
  const auto AddButton = [&](Qt::ArrowType Arrow, const QString& Tip, auto Action) {
    auto* const Button = new QToolButton;
    Button->setArrowType(Arrow);
    Button->setToolTip(Tip);
    Button->setAccessibleName(Tip);
    connect(Button, &QToolButton::clicked, this, Action);
    Layout->addWidget(Button);
  };
  AddButton(Qt::UpArrow, "Previous (Shift+F3)", [this] { Previous(); });
  AddButton(Qt::DownArrow, "Next (F3)", [this] { Next(); });
  Layout->addWidget(FCase);
  Layout->addWidget(FMessage, 1);
  AddButton(Qt::NoArrow, "Close (Esc)", [this] { Close(); });
  auto* const CloseButton = qobject_cast<QToolButton*>(Layout->itemAt(Layout->count() - 1)->widget());
  CloseButton->setText(QChar(0x00D7));
  CloseButton->setAutoRaise(true);

  connect(FWanted, &QLineEdit::textEdited, this, [this] { FindAsTyped(); });
  connect(FCase, &QCheckBox::toggled, this, [this] { FindAsTyped(); });
  const auto AddKey = [this](const QKeySequence& Keys, auto Action) {
    connect(new QShortcut(Keys, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut), &QShortcut::activated, this,
            Action);
  };
  AddKey(Qt::Key_Return, [this] { Next(); });
  AddKey(Qt::Key_Enter, [this] { Next(); });
  AddKey(Qt::SHIFT | Qt::Key_Return, [this] { Previous(); });
  AddKey(Qt::Key_Escape, [this] { Close(); });
  hide();
}

void TFindBar::Open() {
  const QString Selected = FText.textCursor().selectedText();
  if (!Selected.isEmpty() && !Selected.contains(QChar::ParagraphSeparator)) FWanted->setText(Selected);
  show();
  FWanted->selectAll();
  FWanted->setFocus();
}

void TFindBar::Close() {
  hide();
  FText.setFocus();
}

bool TFindBar::Search(bool Backward) {
  QTextDocument::FindFlags Flags;
  Flags.setFlag(QTextDocument::FindBackward, Backward);
  Flags.setFlag(QTextDocument::FindCaseSensitively, FCase->isChecked());
  return FText.find(FWanted->text(), Flags);
}

void TFindBar::Find(bool Backward) {
  if (FWanted->text().isEmpty()) return Open();
  if (Search(Backward)) return Say({}, false);
  const QTextCursor Before = FText.textCursor();
  FText.moveCursor(Backward ? QTextCursor::End : QTextCursor::Start);
  if (Search(Backward)) return Say(Backward ? "Continued from the end" : "Continued from the beginning", false);
  FText.setTextCursor(Before);
  show();
  Say("Not found", true);
}

void TFindBar::FindAsTyped() {
  QTextCursor Cursor = FText.textCursor();
  Cursor.setPosition(Cursor.selectionStart());
  FText.setTextCursor(Cursor);
  FWanted->text().isEmpty() ? Say({}, false) : Find(false);
}

void TFindBar::Say(const QString& Message, bool IsProblem) {
  FMessage->setText(Message);
  FMessage->setStyleSheet(IsProblem ? "color: #b3261e; font-weight: bold" : "");
}

}  // namespace oxSuperAPI
