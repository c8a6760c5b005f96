#include "oxSuperAPI/model/uBeamParticipantFields.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamBusinessIdentifierFields::WriteBusinessIdentifier(Sink& Json) const {
  Json.Object("businessIdentifier", Always, [&](Sink& Identifier) {
    Identifier.AddString("businessIdentifierType", BusinessIdentifierType);
    Identifier.AddString("value", BusinessIdentifierValue);
  });
}

void TBeamBusinessIdentifierFields::ReadBusinessIdentifier(const TBeamRecordReader& Json) {
  const TBeamRecordReader Identifier = Json.Below("businessIdentifier");
  BusinessIdentifierType = Identifier.Text("businessIdentifierType");
  BusinessIdentifierValue = Identifier.Text("value");
}

template <class Sink>
void TBeamAddressFields::WriteAddress(Sink& Json) const {
  Json.Object("address", Always, [&](Sink& Address) {
    Address.AddString("addressType", AddressType);
    Address.AddString("countryCode", CountryCode);
    Address.AddString("line1", Line1);
    Address.AddString("line2", Line2);
    Address.AddString("line3", Line3);
    Address.AddString("line4", Line4);
    Address.AddString("postCode", PostCode);
    Address.AddString("state", State);
    Address.AddString("suburb", Suburb);
  });
}

void TBeamAddressFields::ReadAddress(const TBeamRecordReader& Json) {
  const TBeamRecordReader Address = Json.Below("address");
  AddressType = Address.Text("addressType");
  CountryCode = Address.Text("countryCode");
  Line1 = Address.Text("line1");
  Line2 = Address.Text("line2");
  Line3 = Address.Text("line3");
  Line4 = Address.Text("line4");
  PostCode = Address.Text("postCode");
  State = Address.Text("state");
  Suburb = Address.Text("suburb");
}

template <class Sink>
void TBeamContactFields::WriteContact(Sink& Json, TJSONName TitleName) const {
  Json.Object("contact", Always, [&](Sink& Contact) {
    Contact.AddString("email", ContactEmail);
    Contact.AddString("familyName", ContactFamilyName);
    Contact.AddString("firstName", ContactFirstName);
    Contact.Object("phone", Always, [&](Sink& Phone) {
      Phone.AddString("areaCode", ContactPhoneAreaCode);
      Phone.AddString("number", ContactPhoneNumber);
      Phone.AddString("phoneNumberType", ContactPhoneNumberType);
    });
    Contact.AddString(TitleName, ContactTitle);
  });
}

void TBeamContactFields::ReadContactName(const TBeamRecordReader& Contact) {
  ContactEmail = Contact.Text("email");
  ContactFamilyName = Contact.Text("familyName");
  ContactFirstName = Contact.Text("firstName");
}

void TBeamContactFields::ReadContactPhone(const TBeamRecordReader& Phone) {
  ContactPhoneAreaCode = Phone.Text("areaCode");
  ContactPhoneNumber = Phone.Text("number");
  ContactPhoneNumberType = Phone.Text("phoneNumberType");
}

template void TBeamBusinessIdentifierFields::WriteBusinessIdentifier(TJSONObjectHelper&) const;
template void TBeamBusinessIdentifierFields::WriteBusinessIdentifier(TJSONTextCounter&) const;
template void TBeamBusinessIdentifierFields::WriteBusinessIdentifier(TJSONTextWriter&) const;
template void TBeamAddressFields::WriteAddress(TJSONObjectHelper&) const;
template void TBeamAddressFields::WriteAddress(TJSONTextCounter&) const;
template void TBeamAddressFields::WriteAddress(TJSONTextWriter&) const;
template void TBeamContactFields::WriteContact(TJSONObjectHelper&, TJSONName) const;
template void TBeamContactFields::WriteContact(TJSONTextCounter&, TJSONName) const;
template void TBeamContactFields::WriteContact(TJSONTextWriter&, TJSONName) const;

}  // namespace oxSuperAPI
