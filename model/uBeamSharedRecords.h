#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace oxSuperAPI {

/// Tables inside a record have five entries; what the service sends beyond them is not kept.
inline constexpr std::size_t MaxTableEntries = 5;

class TBeamRecordReader;

// Each record describes its JSON once, in Write, for either sink; Read stands beside it.

struct TBeamPersonName {
  std::string familyName;
  std::string givenName;
  std::string otherGivenName;
  std::string suffix;
  std::string title;

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
};

struct TBeamPhoneNumber {
  std::string areaCode;
  std::string number;
  std::string phoneNumberType;
};
/// An entry without a number is never written.
using TBeamPhoneNumbers = std::array<TBeamPhoneNumber, MaxTableEntries>;

/// Adds "phoneNumbers" to the record that is being written.
template <class Sink>
void WritePhoneNumbers(Sink& Json, const TBeamPhoneNumbers& PhoneNumbers);
void ReadPhoneNumber(const TBeamRecordReader& Json, TBeamPhoneNumber& Entry);

struct TBeamBankAccount {
  std::string accountName;
  std::string accountNumber;
  std::string BSB;

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
};

}  // namespace oxSuperAPI
