#include "oxSuperAPI/reference/guarded_log_connection.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace oxSuperAPI {

namespace {

bool NamesCallLog(std::string_view SQL) {
  constexpr std::string_view Table = "_iptblbeamsuperlog";
  const auto Same = [](char Left, char Right) {
    return (Left >= 'A' && Left <= 'Z' ? static_cast<char>(Left + 32) : Left) == Right;
  };
  return !std::ranges::search(SQL, Table, Same).empty();
}

TDBValue Masked(TDBValue Value, TLogMasker& Masker) {
  if (auto* const Text = std::get_if<std::string>(&Value)) *Text = Masker.Mask(std::move(*Text));
  return Value;
}

/// Rows of the call log. A masker serves one row: what one column tells is hidden in the next ones.
class TGuardedRows final : public TADOQuery {
 public:
  TGuardedRows(std::unique_ptr<TADOQuery> Rows, TLogMasking Masking, std::shared_ptr<TKnownSecrets> Known)
      : FRows(std::move(Rows)), FMasking(Masking), FKnown(std::move(Known)) {}

  bool Eof() const override { return FRows->Eof(); }
  std::string FieldAsString(std::string_view Name) const override { return FRows->FieldAsString(Name); }
  std::int32_t FieldAsInteger(std::string_view Name) const override { return FRows->FieldAsInteger(Name); }
  TDateTime FieldAsDateTime(std::string_view Name) const override { return FRows->FieldAsDateTime(Name); }
  void Append() override {
    FMasker.emplace(FMasking, FKnown);
    FRows->Append();
  }
  void Edit() override {
    FMasker.emplace(FMasking, FKnown);
    FRows->Edit();
  }
  void SetField(std::string_view Name, TDBValue Value) override {
    if (!FMasker) FMasker.emplace(FMasking, FKnown);
    FRows->SetField(Name, Masked(std::move(Value), *FMasker));
  }
  void Post() override { FRows->Post(); }

 private:
  std::unique_ptr<TADOQuery> FRows;
  TLogMasking FMasking;
  std::shared_ptr<TKnownSecrets> FKnown;
  std::optional<TLogMasker> FMasker;
};

}  // namespace

std::unique_ptr<TADOQuery> TGuardedLogConnection::Open(const TDBStatement& Statement) {
  std::unique_ptr<TADOQuery> Rows = FConnection.Open(Statement);
  if (FMasking == TLogMasking::Off || !Rows || !NamesCallLog(Statement.SQL)) return Rows;
  return std::make_unique<TGuardedRows>(std::move(Rows), FMasking, FKnown);
}

void TGuardedLogConnection::Execute(const TDBStatement& Statement) {
  if (FMasking == TLogMasking::Off || !NamesCallLog(Statement.SQL)) return FConnection.Execute(Statement);
  TDBStatement Guarded = Statement;
  TLogMasker Masker(FMasking, FKnown);
  for (TDBParameter& Parameter : Guarded.Parameters) Parameter.Value = Masked(std::move(Parameter.Value), Masker);
  FConnection.Execute(Guarded);
}

}  // namespace oxSuperAPI
