#pragma once

#include <string>

#include "oxSuperAPI/foundation/uBeamCompactText.h"
#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/model/uBeamEntryTable.h"

namespace oxSuperAPI {

class TBeamRecordReader;

// Each record describes its JSON once, in Write, for either sink; Read stands beside it.

/// A person, as the service splits a name. Texts are passed through.
struct OXSUPERAPI_EXPORT TBeamPersonName {
  /// A text that is empty is left out. @{
  TBeamText familyName;
  TBeamText givenName;
  TBeamText otherGivenName;
  TBeamText suffix;
  TBeamText title;

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
  /// @}
};

/// One way to reach a person. An entry without a number is never written.
struct OXSUPERAPI_EXPORT TBeamPhoneNumber {
  /// Texts of the service. @{
  TBeamText areaCode;
  TBeamText number;
  TBeamText phoneNumberType;
  /// @}
};
/// An entry without a number is never written.
using TBeamPhoneNumbers = TBeamEntryTable<TBeamPhoneNumber>;

/// Adds "phoneNumbers" to the record that is being written.
template <class Sink>
void WritePhoneNumbers(Sink& Json, const TBeamPhoneNumbers& PhoneNumbers);
/// Replaces all of `Entry`; what the JSON lacks becomes "".
void ReadPhoneNumber(const TBeamRecordReader& Json, TBeamPhoneNumber& Entry);

/// An account to pay from or to. `BSB` is the branch number.
struct OXSUPERAPI_EXPORT TBeamBankAccount {
  /// Texts as the bank writes them; empty ones are left out. @{
  std::string accountName;
  std::string accountNumber;
  std::string BSB;

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
  /// @}
};

}  // namespace oxSuperAPI
