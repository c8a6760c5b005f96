#include "oxSuperAPI/editor/editor_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QStyle>
#include <QTextBlock>
#include <QVBoxLayout>
#include <algorithm>

#include "oxSuperAPI/editor/find_bar.h"
#include "oxSuperAPI/editor/json_highlighter.h"
#include "oxSuperAPI/reference/editor_form.h"
#include "oxSuperAPI/reference/json_problem.h"

namespace oxSuperAPI {

namespace {

constexpr std::size_t PartBytes = std::size_t{32} << 10;  // shown of each end of a text that is shown in part
constexpr QSize FirstSize(820, 620);

/// QSettings replaces its file as a whole under a lock, so of two processes the one that closes its form last wins.
QSettings Remembered() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, "oxSuperAPI", "editor");
}

QString AsQString(const std::string& Text) {
  return QString::fromUtf8(Text.data(), static_cast<qsizetype>(Text.size()));
}

bool HasLongLine(const std::string& Text) {
  for (std::size_t Begin = 0; Begin < Text.size();) {
    const std::size_t End = std::min(Text.find('\n', Begin), Text.size());
    if (End - Begin > TEditorDialog::MaxLineBytes) return true;
    Begin = End + 1;
  }
  return false;
}

}  // namespace

TEditorDialog::TEditorDialog(TEditorKind Kind, const QString& Explanation, QWidget* Parent)
    : QDialog(Parent), FKind(Kind) {
  setAttribute(Qt::WA_QuitOnClose, false);  // closing the form must not end an application without other windows
  setSizeGripEnabled(true);
  Build(Explanation);
  AddKeys();
  const QSize Size = Remembered().value(SizeKey(), FirstSize).toSize();
  resize(Size.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize()));
}

void TEditorDialog::Build(const QString& Explanation) {
  auto* const Layout = new QVBoxLayout(this);
  auto* const Top = new QHBoxLayout;
  auto* const ExplanationLabel = new QLabel(Explanation);
  ExplanationLabel->setWordWrap(true);
  Top->addWidget(ExplanationLabel, 1);
  if (!IsRequest()) {
    FStatus = new QLineEdit;
    FStatus->setObjectName("status");
    FStatus->setMaximumWidth(fontMetrics().horizontalAdvance("0000000000"));
    auto* const Label = new QLabel("HTTP &status:");
    Label->setBuddy(FStatus);
    Top->addWidget(Label);
    Top->addWidget(FStatus);
  }
  Layout->addLayout(Top);

  FText = new QPlainTextEdit;
  FText->setObjectName("text");
  FText->setAccessibleName(IsRequest() ? "Request" : "Response");
  FText->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  FText->setLineWrapMode(QPlainTextEdit::NoWrap);
  FText->setTabChangesFocus(true);
  Layout->addWidget(FText, 1);
  FFind = new TFindBar(*FText, this);
  Layout->addWidget(FFind);

  FHintRow = new QWidget;
  auto* const HintLayout = new QHBoxLayout(FHintRow);
  HintLayout->setContentsMargins(0, 0, 0, 0);
  auto* const Icon = new QLabel;
  Icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(16));
  FHint = new QLabel;
  FHint->setObjectName("hint");
  FHint->setWordWrap(true);
  auto* const GoTo = new QPushButton("&Go there");
  GoTo->setAutoDefault(false);
  connect(GoTo, &QPushButton::clicked, this, [this] { GoToProblem(); });
  FGoTo = GoTo;
  HintLayout->addWidget(Icon);
  HintLayout->addWidget(FHint, 1);
  HintLayout->addWidget(FGoTo);
  FHintRow->hide();
  Layout->addWidget(FHintRow);

  auto* const Bottom = new QHBoxLayout;
  if (IsRequest()) {
    FSkip = new QCheckBox("S&kip: do not send this request");
    FSkip->setObjectName("skip");
    Bottom->addWidget(FSkip);
  }
  FPosition = new QLabel;
  FPosition->setForegroundRole(QPalette::PlaceholderText);
  Bottom->addStretch(1);
  Bottom->addWidget(FPosition);
  auto* const Find = new QPushButton("&Find");
  Find->setToolTip("Ctrl+F");
  Find->setAutoDefault(false);
  connect(Find, &QPushButton::clicked, this, [this] { FFind->Open(); });
  Bottom->addWidget(Find);
  auto* const Buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  Buttons->button(QDialogButtonBox::Ok)->setToolTip("Ctrl+Enter");
  Buttons->button(QDialogButtonBox::Cancel)->setToolTip("Esc");
  connect(Buttons, &QDialogButtonBox::accepted, this, &TEditorDialog::accept);
  connect(Buttons, &QDialogButtonBox::rejected, this, &TEditorDialog::reject);
  Bottom->addWidget(Buttons);
  Layout->addLayout(Bottom);

  connect(FText, &QPlainTextEdit::textChanged, this, [this] { CheckText(); });
  connect(FText, &QPlainTextEdit::cursorPositionChanged, this, [this] { ShowPosition(); });
  FText->setFocus();
}

void TEditorDialog::AddKeys() {
  const auto AddKey = [this](const QKeySequence& Keys, auto Action) {
    connect(new QShortcut(Keys, this), &QShortcut::activated, this, Action);
  };
  AddKey(Qt::CTRL | Qt::Key_Return, [this] { accept(); });
  AddKey(Qt::CTRL | Qt::Key_Enter, [this] { accept(); });
  AddKey(QKeySequence::Find, [this] { FFind->Open(); });
  AddKey(Qt::Key_F3, [this] { FFind->Next(); });
  AddKey(Qt::SHIFT | Qt::Key_F3, [this] { FFind->Previous(); });
}

void TEditorDialog::SetLines(const TStringList& Lines) {
  FLines = Lines;
  FShown.reset();
  std::size_t Bytes = 0;
  for (const std::string& Line : Lines) Bytes += Line.size() + 2;
  if (Bytes <= MaxTextBytes) FShown.emplace(Lines);
  if (!FShown || FShown->Shown().size() > MaxTextBytes || HasLongLine(FShown->Shown())) {
    FShown.reset();
    return ShowPartly(Lines.Text());
  }
  if (IsRequest() || FShown->IsJSON()) new TJSONHighlighter(FText->document(), palette().color(QPalette::Base));
  FText->setPlainText(AsQString(FShown->Shown()));
  FText->document()->setModified(false);
}

void TEditorDialog::ShowPartly(const std::string& Text) {
  const auto IsInside = [&](std::size_t At) { return (static_cast<unsigned char>(Text[At]) & 0xC0) == 0x80; };
  std::size_t First = std::min(PartBytes, Text.size()), Second = std::max(Text.size() - First, First);
  while (First > 0 && First < Text.size() && IsInside(First)) --First;
  while (Second < Text.size() && IsInside(Second)) ++Second;
  const QString Between = QString("\n\n[ %1 of %2 bytes are not shown ]\n\n")
                              .arg(QLocale::c().toString(static_cast<qlonglong>(Second - First)))
                              .arg(QLocale::c().toString(static_cast<qlonglong>(Text.size())));
  FText->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  FText->setReadOnly(true);
  FText->setPlainText(AsQString(Text.substr(0, First)) + Between + AsQString(Text.substr(Second)));
  Hint(QString("This text has %1, too much for this form: only its beginning and its end are shown, and it cannot be "
               "changed here. With OK, too, it stays as it came.")
           .arg(QLocale::c().formattedDataSize(static_cast<qint64>(Text.size()))));
}

std::string TEditorDialog::Text() const {
  // toPlainText() would replace no-break spaces.
  return FText->document()->toRawText().replace(QChar::ParagraphSeparator, '\n').toStdString();
}

TStringList TEditorDialog::Lines() const {
  return FShown && FText->document()->isModified() ? FShown->Edited(Text()) : FLines;
}

void TEditorDialog::SetStatusText(const std::string& Status) {
  if (FStatus) FStatus->setText(AsQString(Status));
}

std::string TEditorDialog::StatusText() const {
  return FStatus ? FStatus->text().trimmed().toStdString() : "";
}

bool TEditorDialog::SkipChecked() const {
  return FSkip && FSkip->isChecked();
}

void TEditorDialog::accept() {
  if (FStatus && !IsStatusText(StatusText())) {
    Hint("The status has to be a number of one to three digits, such as 200.");
    FStatus->selectAll();
    FStatus->setFocus();
    return;
  }
  QDialog::accept();
}

void TEditorDialog::done(int Result) {
  if (Remembered().value(SizeKey()).toSize() != size()) Remembered().setValue(SizeKey(), size());
  QDialog::done(Result);
}

QString TEditorDialog::SizeKey() const {
  return IsRequest() ? "request/size" : "response/size";
}

void TEditorDialog::CheckText() {
  if (!FShown) return;
  const std::string Now = Text();
  const auto Problem = IsRequest() && !Now.empty() ? FindJSONProblem(Now) : std::nullopt;
  FProblemPosition = -1;
  QList<QTextEdit::ExtraSelection> Marks;
  if (Problem) {
    FProblemPosition = static_cast<int>(AsQString(Now.substr(0, Problem->Offset)).size());
    const QTextBlock Line = FText->document()->findBlock(FProblemPosition);
    QTextEdit::ExtraSelection Mark{QTextCursor(Line), {}};
    Mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    Mark.format.setBackground(QColor(palette().color(QPalette::Base).lightness() < 128 ? "#4a3a1c" : "#fff1d6"));
    Marks.append(Mark);
    Hint(QString("Not JSON, line %1, column %2: %3 It can still be sent.")
             .arg(Problem->Line)
             .arg(Problem->Column)
             .arg(AsQString(Problem->Reason)));
  } else {
    Hint({});
  }
  FText->setExtraSelections(Marks);
}

void TEditorDialog::Hint(const QString& Message) {
  FHint->setText(Message);
  FGoTo->setVisible(FProblemPosition >= 0);
  FHintRow->setVisible(!Message.isEmpty());
}

void TEditorDialog::GoToProblem() {
  QTextCursor Cursor = FText->textCursor();
  Cursor.setPosition(std::max(FProblemPosition, 0));
  FText->setTextCursor(Cursor);
  FText->setFocus();
}

void TEditorDialog::ShowPosition() {
  const QTextCursor Cursor = FText->textCursor();
  const auto Column = Cursor.block().text().left(Cursor.positionInBlock()).toUcs4().size() + 1;  // in code points
  FPosition->setText(FShown ? QString("Line %1, column %2  ").arg(Cursor.blockNumber() + 1).arg(Column) : QString());
}

}  // namespace oxSuperAPI
