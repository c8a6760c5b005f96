#pragma once

#include <QSyntaxHighlighter>
#include <QTextCharFormat>

namespace oxSuperAPI {

/// Colours the names, strings, numbers and words of JSON. Works on single lines, which is enough: a JSON string has no
/// line break in it.
class TJSONHighlighter final : public QSyntaxHighlighter {
 public:
  /// Colours that can be read on `Background`. Belongs to the document.
  TJSONHighlighter(QTextDocument* Document, const QColor& Background);

 protected:
  void highlightBlock(const QString& Line) override;

 private:
  QTextCharFormat FName, FString, FNumber, FWord;
};

}  // namespace oxSuperAPI
