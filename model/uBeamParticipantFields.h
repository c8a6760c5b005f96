#pragma once

#include <string>
#include <string_view>

#include "oxSuperAPI/foundation/uBeamJSONAddOperations.h"
#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

class TBeamRecordReader;

// Fields that participants, employers and authorities have in common: bases, so that each record has them under their
// flat names, and one description of their JSON. Texts are the service's own, passed through.

/// By which number the business is registered.
struct OXSUPERAPI_EXPORT TBeamBusinessIdentifierFields {
  /// The kind of number (an ABN, for one) and the number; together one object on the wire. @{
  std::string BusinessIdentifierType;
  std::string BusinessIdentifierValue;

  /// Adds "businessIdentifier" to the record that is being written.
  template <class Sink>
  void WriteBusinessIdentifier(Sink& Json) const;
  void ReadBusinessIdentifier(const TBeamRecordReader& Json);
  /// @}
};

/// A postal or street address.
struct OXSUPERAPI_EXPORT TBeamAddressFields {
  /// The members of "address"; what the JSON lacks reads as "". @{
  std::string AddressType;
  std::string CountryCode;
  std::string Line1;
  std::string Line2;
  std::string Line3;
  std::string Line4;
  std::string PostCode;
  std::string State;
  std::string Suburb;

  /// Adds "address" to the record that is being written.
  template <class Sink>
  void WriteAddress(Sink& Json) const;
  void ReadAddress(const TBeamRecordReader& Json);
  /// @}
};

/// The person whom the service turns to.
struct OXSUPERAPI_EXPORT TBeamContactFields {
  /// The members of "contact"; what the JSON lacks reads as "". @{
  std::string ContactEmail;
  std::string ContactFamilyName;
  std::string ContactFirstName;
  std::string ContactPhoneAreaCode;
  std::string ContactPhoneNumber;
  std::string ContactPhoneNumberType;
  std::string ContactTitle;

  /// Adds "contact" to the record that is being written; the records differ in the name of the title.
  template <class Sink>
  void WriteContact(Sink& Json, TJSONName TitleName) const;
  /// First name, family name and e-mail address. Title and phone stand elsewhere in each document.
  void ReadContactName(const TBeamRecordReader& Contact);
  void ReadContactPhone(const TBeamRecordReader& Phone);
  /// @}
};

}  // namespace oxSuperAPI
