#include "oxSuperAPI/editor/json_highlighter.h"

namespace oxSuperAPI {

namespace {

qsizetype EndOfString(const QString& Line, qsizetype At) {
  while (++At < Line.size() && Line[At] != '"')
    if (Line[At] == '\\') ++At;
  return qMin(At + 1, Line.size());
}

qsizetype EndOfWord(const QString& Line, qsizetype At) {
  static const QString Inside = "+-._";
  while (At < Line.size() && (Line[At].isLetterOrNumber() || Inside.contains(Line[At]))) ++At;
  return At;
}

bool IsName(const QString& Line, qsizetype Behind) {
  while (Behind < Line.size() && Line[Behind].isSpace()) ++Behind;
  return Behind < Line.size() && Line[Behind] == ':';
}

}  // namespace

TJSONHighlighter::TJSONHighlighter(QTextDocument* Document, const QColor& Background) : QSyntaxHighlighter(Document) {
  const bool Dark = Background.lightness() < 128;
  FName.setForeground(QColor(Dark ? "#7cb7ff" : "#0b4f9e"));
  FString.setForeground(QColor(Dark ? "#8fd19e" : "#1b6e2f"));
  FNumber.setForeground(QColor(Dark ? "#e0b072" : "#8a4b08"));
  FWord.setForeground(QColor(Dark ? "#d6a0f0" : "#7a1fa2"));
}

void TJSONHighlighter::highlightBlock(const QString& Line) {
  for (qsizetype At = 0, End = 0; At < Line.size(); At = End) {
    const QTextCharFormat* Format = nullptr;
    if (Line[At] == '"') {
      End = EndOfString(Line, At);
      Format = IsName(Line, End) ? &FName : &FString;
    } else if (End = EndOfWord(Line, At); End > At) {
      Format = Line[At].isLetter() ? &FWord : &FNumber;
    } else {
      End = At + 1;
    }
    if (Format) setFormat(static_cast<int>(At), static_cast<int>(End - At), *Format);
  }
}

}  // namespace oxSuperAPI
