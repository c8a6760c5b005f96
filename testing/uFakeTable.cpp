#include "oxSuperAPI/testing/uFakeTable.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "oxSuperAPI/testing/uFakeNames.h"

namespace oxSuperAPI {

namespace {

std::string_view WithoutTrailingBlanks(std::string_view Text) {
  return Text.substr(0, Text.find_last_not_of(' ') + 1);
}

// In UTF-16 units: a lead byte counts once, that of a four-byte form twice, the bytes that follow not at all.
std::size_t WidthOf(std::string_view Text) {
  std::size_t Result = 0;
  for (const char Char : Text) {
    const auto Byte = static_cast<unsigned char>(Char);
    Result += Byte >= 0xF0 ? 2 : (Byte & 0xC0) == 0x80 ? 0 : 1;
  }
  return Result;
}

}  // namespace

bool EqualValues(const TDBValue& Left, const TDBValue& Right) {
  if (std::holds_alternative<std::monostate>(Left) || std::holds_alternative<std::monostate>(Right)) return false;
  const auto* LeftText = std::get_if<std::string>(&Left);
  const auto* RightText = std::get_if<std::string>(&Right);
  if (LeftText && RightText) return WithoutTrailingBlanks(*LeftText) == WithoutTrailingBlanks(*RightText);
  if (LeftText || RightText) return false;
  return ValueAsDateTime(Left) == ValueAsDateTime(Right);
}

std::string ValueAsText(const TDBValue& Value) {
  if (const auto* Text = std::get_if<std::string>(&Value)) return *Text;
  if (const auto* Integer = std::get_if<std::int32_t>(&Value)) return std::to_string(*Integer);
  if (const auto* Moment = std::get_if<TDateTime>(&Value)) {
    char Buffer[32];
    return {Buffer, std::to_chars(Buffer, Buffer + sizeof Buffer, *Moment).ptr};
  }
  return {};
}

std::int32_t ValueAsInteger(const TDBValue& Value) {
  if (std::holds_alternative<std::monostate>(Value)) return 0;
  if (const auto* Integer = std::get_if<std::int32_t>(&Value)) return *Integer;
  std::int32_t Result = 0;
  if (const auto* Text = std::get_if<std::string>(&Value)) {
    const std::string_view Digits = WithoutTrailingBlanks(*Text);
    const auto [End, Error] = std::from_chars(Digits.data(), Digits.data() + Digits.size(), Result);
    if (Error == std::errc() && End == Digits.data() + Digits.size()) return Result;
  }
  throw TBeamError("Conversion failed: the value is not an integer");
}

TDateTime ValueAsDateTime(const TDBValue& Value) {
  if (const auto* Moment = std::get_if<TDateTime>(&Value)) return *Moment;
  if (std::holds_alternative<std::string>(Value)) throw TBeamError("Conversion failed: a text is not a date-time");
  return ValueAsInteger(Value);
}

TFakeTable::TFakeTable(std::string TableName, std::vector<TFakeColumn> TableColumns, std::vector<std::string> Key)
    : Name(std::move(TableName)), Columns(std::move(TableColumns)), UniqueKey(std::move(Key)) {}

std::size_t TFakeTable::ColumnIndex(std::string_view Column) const {
  for (std::size_t Index = 0; Index < Columns.size(); ++Index)
    if (SameName(Columns[Index].Name, Column)) return Index;
  throw TBeamError("Invalid column name '" + std::string(Column) + "' in table '" + Name + "'");
}

const TDBValue& TFakeTable::Value(std::size_t Index, std::string_view Column) const {
  if (Index >= Rows.size())
    throw TBeamRangeError("Table '" + Name + "' has " + std::to_string(Rows.size()) + " rows, none of index " +
                          std::to_string(Index));
  return Rows[Index].at(ColumnIndex(Column));
}

std::string TFakeTable::Text(std::size_t Index, std::string_view Column) const {
  return ValueAsText(Value(Index, Column));
}

std::int32_t TFakeTable::Add(const std::vector<std::pair<std::string, TDBValue>>& Values) {
  TFakeRow Row(Columns.size());
  for (const auto& [Column, Value] : Values) {
    const std::size_t Index = WritableColumn(Column);
    Row[Index] = Convert(Index, Value);
  }
  std::int32_t Identity = 0;
  for (std::size_t Index = 0; Index < Columns.size(); ++Index)
    if (Columns[Index].Kind == TFakeColumnKind::Identity) Row[Index] = Identity = NextIdentity;
  Rows.push_back(std::move(Row));
  try {
    CheckUnique(Rows);
  } catch (const TBeamError&) {
    Rows.pop_back();
    throw;
  }
  ++NextIdentity;
  return Identity;
}

std::size_t TFakeTable::WritableColumn(std::string_view Column) const {
  const std::size_t Index = ColumnIndex(Column);
  if (Columns[Index].Kind == TFakeColumnKind::Identity)
    throw TBeamError("Cannot write identity column '" + Columns[Index].Name + "' of table '" + Name + "'");
  return Index;
}

TDBValue TFakeTable::Convert(std::size_t Column, const TDBValue& Value) const {
  if (std::holds_alternative<std::monostate>(Value)) return {};
  const TFakeColumn& Target = Columns.at(Column);
  if (Target.Kind == TFakeColumnKind::Integer) return ValueAsInteger(Value);
  if (Target.Kind == TFakeColumnKind::DateTime) return ValueAsDateTime(Value);
  std::string Text = ValueAsText(Value);
  if (Target.Width > 0 && WidthOf(Text) > Target.Width)
    throw TBeamError("String or binary data would be truncated in table '" + Name + "', column '" + Target.Name + "'");
  return Text;
}

void TFakeTable::CheckUnique(const std::vector<TFakeRow>& Candidates) const {
  if (UniqueKey.empty()) return;
  std::vector<std::size_t> Key;
  for (const std::string& Column : UniqueKey) Key.push_back(ColumnIndex(Column));
  const auto SameKey = [&](const TFakeRow& Left, const TFakeRow& Right) {
    return std::all_of(Key.begin(), Key.end(),
                       [&](std::size_t Column) { return EqualValues(Left.at(Column), Right.at(Column)); });
  };
  for (auto Row = Candidates.begin(); Row != Candidates.end(); ++Row)
    if (std::any_of(Candidates.begin(), Row, [&](const TFakeRow& Other) { return SameKey(Other, *Row); }))
      throw TBeamError("Violation of the unique key of table '" + Name + "'");
}

}  // namespace oxSuperAPI
