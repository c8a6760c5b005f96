#include "oxSuperAPI/model/uBeamSharedRecords.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamPersonName::Write(Sink& Json) const {
  Json.AddString("familyName", familyName);
  Json.AddString("givenName", givenName);
  Json.AddString("otherGivenName", otherGivenName);
  Json.AddString("suffix", suffix);
  Json.AddString("title", title);
}

void TBeamPersonName::Read(const TBeamRecordReader& Json) {
  familyName = Json.Text("familyName");
  givenName = Json.Text("givenName");
  otherGivenName = Json.Text("otherGivenName");
  suffix = Json.Text("suffix");
  title = Json.Text("title");
}

template <class Sink>
void WritePhoneNumbers(Sink& Json, const TBeamPhoneNumbers& PhoneNumbers) {
  Json.Array("phoneNumbers", IfFilled, [&](auto& Elements) {
    for (const TBeamPhoneNumber& Entry : PhoneNumbers) {
      if (Entry.number.empty()) continue;
      Elements.Element(IfFilled, [&](Sink& Phone) {
        Phone.AddString("areaCode", Entry.areaCode);
        Phone.AddString("number", Entry.number);
        Phone.AddString("phoneNumberType", Entry.phoneNumberType);
      });
    }
  });
}

void ReadPhoneNumber(const TBeamRecordReader& Json, TBeamPhoneNumber& Entry) {
  Entry.areaCode = Json.Text("areaCode");
  Entry.number = Json.Text("number");
  Entry.phoneNumberType = Json.Text("phoneNumberType");
}

template <class Sink>
void TBeamBankAccount::Write(Sink& Json) const {
  Json.AddString("accountName", accountName);
  Json.AddString("accountNumber", accountNumber);
  Json.AddString("bsb", BSB);
}

void TBeamBankAccount::Read(const TBeamRecordReader& Json) {
  accountName = Json.Text("accountName");
  accountNumber = Json.Text("accountNumber");
  BSB = Json.Text("bsb");
}

template void TBeamPersonName::Write(TJSONObjectHelper&) const;
template void TBeamPersonName::Write(TJSONTextCounter&) const;
template void TBeamPersonName::Write(TJSONTextWriter&) const;
template void WritePhoneNumbers(TJSONObjectHelper&, const TBeamPhoneNumbers&);
template void WritePhoneNumbers(TJSONTextCounter&, const TBeamPhoneNumbers&);
template void WritePhoneNumbers(TJSONTextWriter&, const TBeamPhoneNumbers&);
template void TBeamBankAccount::Write(TJSONObjectHelper&) const;
template void TBeamBankAccount::Write(TJSONTextCounter&) const;
template void TBeamBankAccount::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
