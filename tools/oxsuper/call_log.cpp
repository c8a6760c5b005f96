#include "call_log.h"

#include <algorithm>

#include "oxSuperAPI/foundation/uBeamText.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/reference/db_cells.h"
#include "tool.h"

namespace oxSuperAPI {
namespace {

constexpr std::int32_t RowsAtATime = 1000;
constexpr TDateTime FirstMoment = 0, LastMoment = 2958465;  // 1899-12-30, 9999-12-31
constexpr std::size_t DateSize = 10;

/// A date alone stands for its beginning, or with `WholeDay` for the next day's.
TDateTime MomentOf(const std::string& Text, bool WholeDay, TDateTime Default) {
  if (Text.empty()) return Default;
  const std::optional<TDateTime> Moment = ParseDateTime(Text);
  if (!Moment) throw TToolError(exitUsage, CheckMoment(Text));
  return *Moment + (WholeDay && Text.size() == DateSize ? 1 : 0);
}

bool HasStatus(const std::string& Status, const std::string& Wanted) {
  if (Wanted.empty()) return true;
  if (Wanted == "failed") return Status != "200";
  return Wanted.ends_with("xx") ? Status.size() == 3 && Status[0] == Wanted[0] : Status == Wanted;
}

TLogHead HeadOf(const TDBRows& Rows, TLogMasker& Masker) {
  return {Rows.FieldAsInteger("idBeamSuperLog"),      FormatDateTime(Rows.FieldAsDateTime("dLogged")).substr(0, 19),
          Masker.Mask(Rows.FieldAsString("cSource")), Rows.FieldAsString("cMethod"),
          Masker.Mask(Rows.FieldAsString("cURL")),    Rows.FieldAsString("cStatus")};
}

}  // namespace

std::string CheckMoment(const std::string& Text) {
  return ParseDateTime(Text) ? "" : "\"" + Text + "\" is no date (2026-11-21) or date and time (2026-11-21T10:00)";
}

std::string CheckStatus(const std::string& Text) {
  const auto IsDigit = [](char Each) { return Each >= '0' && Each <= '9'; };
  const bool Number = !Text.empty() && Text.size() <= 3 && std::ranges::all_of(Text, IsDigit);
  const bool Class = Text.size() == 3 && IsDigit(Text[0]) && Text.ends_with("xx");
  return Number || Class || Text == "failed" ? "" : "\"" + Text + "\" is no status (200), class (4xx) or \"failed\"";
}

std::vector<TLogHead> TCallLog::Find(const TLogFilter& Filter) {
  const TDateTime Since = MomentOf(Filter.Since, false, FirstMoment);
  const TDateTime Until =
      std::min(MomentOf(Filter.Until, true, LastMoment), MomentOf(Filter.Before, false, LastMoment));
  const std::string Source = LowerCase(Filter.Source);
  const auto Ends = FConnection.OpenRows(
      {"select min(idBeamSuperLog) as iFirst, max(idBeamSuperLog) as iLast from _iptblBeamSuperLog", {}});
  const std::int32_t First = Ends->FieldAsInteger("iFirst"), Last = Ends->FieldAsInteger("iLast");
  const std::size_t Wanted = Filter.Count > 0 ? static_cast<std::size_t>(Filter.Count) : std::size_t(-1);
  TLogMasker Masker(FMasking, FKnown);
  // From the end, so that the last rows of a long log come quickly; in pieces that every database can cut out.
  std::vector<TLogHead> Found;
  for (std::int64_t UpTo = Last; UpTo >= First && UpTo > 0 && Found.size() < Wanted; UpTo -= RowsAtATime) {
    const auto Rows = FConnection.OpenRows(
        {"select idBeamSuperLog, dLogged, cSource, cMethod, cURL, cStatus from _iptblBeamSuperLog where "
         "idBeamSuperLog > :After and idBeamSuperLog <= :UpTo and dLogged >= :Since and dLogged < :Until "
         "order by idBeamSuperLog desc",
         {{"After", static_cast<std::int32_t>(UpTo > RowsAtATime ? UpTo - RowsAtATime : 0)},
          {"UpTo", static_cast<std::int32_t>(UpTo)},
          {"Since", Since},
          {"Until", Until}}});
    for (; !Rows->Eof() && Found.size() < Wanted; Rows->Next())
      if (HasStatus(Rows->FieldAsString("cStatus"), Filter.Status) &&
          LowerCase(Rows->FieldAsString("cSource")).find(Source) != std::string::npos)
        Found.push_back(HeadOf(*Rows, Masker));
  }
  std::ranges::reverse(Found);
  return Found;
}

std::optional<TLogRow> TCallLog::Read(std::int32_t Id) {
  const auto Row = FConnection.OpenRows({"select * from _iptblBeamSuperLog where idBeamSuperLog = :Id", {{"Id", Id}}});
  if (Row->Eof()) return {};
  TLogMasker Masker(FMasking, FKnown);
  TLogRow Result;
  // In the order in which a row is written: what the request told is hidden in the answer.
  Result.RequestHeader = Masker.Mask(Row->FieldAsString("cRequestHeader"));
  Result.RequestBody = Masker.Mask(Row->FieldAsString("cRequestBody"));
  Result.Response = Masker.Mask(Row->FieldAsString("cResponse"));
  Result.Details = Masker.Mask(Row->FieldAsString("cLogDetails"));
  Result.Agent = Row->FieldAsString("iAgentID");
  static_cast<TLogHead&>(Result) = HeadOf(*Row, Masker);
  return Result;
}

std::string PrettyText(const std::string& Text) {
  const auto Value = ParseJSON(Text);
  if (!Value) return Text;
  if (const auto* Object = Value->AsObject()) return PrintJSON(*Object, TJSONLayout::Pretty);
  return PrintJSON(*Value, TJSONLayout::Pretty);
}

}  // namespace oxSuperAPI
