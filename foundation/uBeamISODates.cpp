#include "oxSuperAPI/foundation/uBeamISODates.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/foundation/uBeamNumbers.h"

namespace oxSuperAPI {

namespace {

// Reads a text from front to end. What does not fit makes the reader bad, and everything read from then on is 0.
class TISOReader {
 public:
  explicit TISOReader(std::string_view Text) : FRest(Text) {}

  bool IsGood() const { return FGood; }
  bool AtEnd() const { return FRest.empty(); }
  bool AtDigit() const { return CountDigits() > 0; }

  bool Skip(std::string_view AnyOf) {
    if (AtEnd() || AnyOf.find(FRest.front()) == std::string_view::npos) return false;
    FRest.remove_prefix(1);
    return true;
  }

  void Expect(bool Met) { FGood = FGood && Met; }

  int Number(std::size_t Digits, int Max) {
    Expect(CountDigits() >= Digits);
    if (!FGood) return 0;
    const int Result = *TryParseInteger(FRest.substr(0, Digits));
    FRest.remove_prefix(Digits);
    Expect(Result <= Max);
    return Result;
  }

  double Fraction() {
    const std::size_t Digits = CountDigits();
    Expect(Digits > 0);
    if (!FGood) return 0;
    const std::optional<double> Result = TryParseFloat("0." + std::string(FRest.substr(0, Digits)));
    FRest.remove_prefix(Digits);
    return Result.value_or(0);  // too small for a number
  }

 private:
  std::size_t CountDigits() const { return std::min(FRest.find_first_not_of("0123456789"), FRest.size()); }

  std::string_view FRest;
  bool FGood = true;
};

TDateTime ReadDate(TISOReader& Text, bool& Extended) {
  const int Year = Text.Number(4, 9999);
  Extended = Text.Skip("-");
  const int Month = Text.Number(2, 12);
  Text.Expect(Text.Skip("-") == Extended);
  const int Day = Text.Number(2, 31);
  return Text.IsGood() ? EncodeDate(Year, Month, Day) : 0;
}

// Seconds of the day; a leap second counts as the next one.
double ReadTime(TISOReader& Text, bool Extended) {
  const int Hours = Text.Number(2, 24);
  Text.Expect(Text.Skip(":") == Extended);
  double Seconds = Hours * 3600 + Text.Number(2, 59) * 60;
  const bool HasSeconds = Extended ? Text.Skip(":") : Text.AtDigit();
  if (HasSeconds) {
    Seconds += Text.Number(2, 60);
    if (Text.Skip(".,")) Seconds += Text.Fraction();
  }
  Text.Expect(Hours < 24 || Seconds == 24 * 3600);
  return Seconds;
}

// Seconds by which the zone is ahead of UTC.
double ReadZone(TISOReader& Text) {
  if (Text.AtEnd() || Text.Skip("Zz")) return 0;
  const bool Behind = Text.Skip("-");
  Text.Expect(Behind || Text.Skip("+"));
  double Seconds = Text.Number(2, 23) * 3600;
  if (!Text.AtEnd()) {
    Text.Skip(":");
    Seconds += Text.Number(2, 59) * 60;
  }
  return Behind ? -Seconds : Seconds;
}

}  // namespace

std::optional<TDateTime> ParseISODateTime(std::string_view Text) {
  try {
    TISOReader Reader(Text);
    bool Extended = false;
    const TDateTime Date = ReadDate(Reader, Extended);
    double Seconds = 0;
    if (Reader.Skip("Tt")) {
      Seconds = ReadTime(Reader, Extended);
      Seconds -= ReadZone(Reader);
    }
    if (!Reader.IsGood() || !Reader.AtEnd()) return std::nullopt;
    return IncSeconds(Date, Seconds);
  } catch (const TBeamConversionError&) {
    return std::nullopt;  // a day that the calendar lacks
  }
}

}  // namespace oxSuperAPI
