#include "log_html.h"

#include <map>

#include "output.h"

namespace oxSuperAPI {
namespace {

constexpr std::string_view PageBegin = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Call log</title>
<style>
:root { color-scheme: light dark; --line: #8886; --bad: #c0392b; --good: #1e8449; }
body { font: 15px/1.45 system-ui, sans-serif; max-width: 75rem; margin: 2rem auto; padding: 0 1rem; }
h1 { font-size: 1.4rem; }
details { border: 1px solid var(--line); border-radius: .4rem; margin: .4rem 0; padding: .3rem .7rem; }
summary { cursor: pointer; overflow-wrap: anywhere; }
.status { display: inline-block; min-width: 2.5rem; font-weight: 600; color: var(--good); }
.failed .status { color: var(--bad); }
.when, .source { opacity: .75; }
h2 { font-size: .9rem; margin: .8rem 0 .2rem; }
pre { font: 13px/1.4 ui-monospace, monospace; white-space: pre-wrap; overflow-wrap: anywhere; max-height: 40rem;
  overflow: auto; margin: 0; padding: .5rem; border: 1px solid var(--line); border-radius: .3rem; }
li { overflow-wrap: anywhere; }
</style>
</head>
<body>
<h1>Call log</h1>
)";

std::string Escaped(const std::string& Text) {
  std::string Result;
  for (const char Each : Printable(Text, true)) {
    switch (Each) {
      case '&':
        Result += "&amp;";
        break;
      case '<':
        Result += "&lt;";
        break;
      case '>':
        Result += "&gt;";
        break;
      case '"':
        Result += "&quot;";
        break;
      case '\'':
        Result += "&#39;";
        break;
      default:
        Result += Each;
    }
  }
  return Result;
}

std::string Title(const TLogHead& Row) {
  return "<span class=\"status\">" + Escaped(Row.Status) + "</span> " + Escaped(Row.Method) + " " + Escaped(Row.URL) +
         " <span class=\"when\">" + Escaped(Row.When) + "</span> <span class=\"source\">" + Escaped(Row.Source) +
         "</span>";
}

using TGroups = std::map<std::string, std::vector<const TLogHead*>>;

/// Links to the rows, in groups that open and close.
std::string Index(const std::string& Name, const TGroups& Groups) {
  std::string Result = "<details>\n<summary>" + Escaped(Name) + "</summary>\n";
  for (const auto& [Group, Rows] : Groups) {
    Result += "<details>\n<summary>" + Escaped(Group) + " (" + std::to_string(Rows.size()) + ")</summary>\n<ul>\n";
    for (const TLogHead* Row : Rows) {
      const std::string Id = std::to_string(Row->Id);
      Result += "<li class=\"" + std::string(Row->Status == "200" ? "done" : "failed") + "\"><a href=\"#row" + Id +
                "\">" + Id + "</a> " + Title(*Row) + "</li>\n";
    }
    Result += "</ul>\n</details>\n";
  }
  return Result + "</details>\n";
}

}  // namespace

std::string LogPageHead(const std::vector<TLogHead>& Rows, const std::string& Masking) {
  TGroups Days, Sources, Statuses;
  std::size_t Failed = 0;
  for (const TLogHead& Row : Rows) {
    Days[Row.When.substr(0, 10)].push_back(&Row);
    Sources[Row.Source.empty() ? "(none)" : Row.Source].push_back(&Row);
    Statuses[Row.Status == "200" ? "200" : "failed: " + Row.Status].push_back(&Row);
    Failed += Row.Status != "200";
  }
  return std::string(PageBegin) + "<p>" + Counted(Rows.size(), "request") + ", " + std::to_string(Failed) +
         " failed. Masking: " + Escaped(Masking) + ".</p>\n" + Index("By status", Statuses) +
         Index("By source", Sources) + Index("By day", Days);
}

std::string LogPageRow(const TLogRow& Row) {
  std::string Result = "<details id=\"row" + std::to_string(Row.Id) + "\" class=\"" +
                       (Row.Status == "200" ? "done" : "failed") + "\">\n<summary>" + std::to_string(Row.Id) + " " +
                       Title(Row) + "</summary>\n";
  const struct {
    const char* Name;
    const std::string& Text;
  } Parts[] = {{"Request header", Row.RequestHeader},
               {"Request", Row.RequestBody},
               {"Response", Row.Response},
               {"Details", Row.Details},
               {"Agent", Row.Agent}};
  for (const auto& [Name, Text] : Parts)
    if (!Text.empty()) Result += "<h2>" + std::string(Name) + "</h2>\n<pre>" + Escaped(PrettyText(Text)) + "</pre>\n";
  return Result + "</details>\n";
}

std::string LogPageEnd() {
  return "</body>\n</html>\n";
}

}  // namespace oxSuperAPI
