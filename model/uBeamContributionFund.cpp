#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamChildren.h"
#include "oxSuperAPI/model/uBeamContributionDetail.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamContributionFund::Write(Sink& Json) const {
  Json.AddString("fundEmployerNumber", fundEmployerNumber);
  Json.Object("fundIdentifier", Always, [&](Sink& Identifier) {  // kept: wire behaviour, sent although empty
    Identifier.AddString("abn", ABN);
    Identifier.AddString("usi", USI);
  });
  Json.AddString("fundTransactionContextId", fundTransactionContextId);
  Json.AddPair("isDefaultFund", isDefaultFund);
  Json.Array("members", IfFilled, [&](auto& Elements) {
    for (const auto& Child : FMembers) Elements.Element(Always, [&](Sink& Member) { Child->Write(Member); });
  });
  Json.AddString("organisationName", organisationName);
  Json.Object("smsfDetail", IfFilled, [&](Sink& Smsf) {
    Smsf.Object("bankDetail", IfFilled, [&](Sink& Bank) {
      Bank.Object("account", IfFilled, [&](Sink& Account) { smsfDetail.bankAccount.Write(Account); });
    });
    Smsf.AddString("electronicServiceAddressAlias", smsfDetail.electronicServiceAddressAlias);
    Smsf.AddString("email", smsfDetail.email);
    Smsf.AddString("fundName", smsfDetail.fundName);
    WritePhoneNumbers(Smsf, smsfDetail.phoneNumbers);
  });
}

void TBeamContributionFund::LoadFromJsonObject(TJSONView Source) {
  if (Source.Object()) Read(TBeamRecordReader(Source));
}

void TBeamContributionFund::Read(const TBeamRecordReader& Json) {
  fundEmployerNumber = Json.Text("fundEmployerNumber");
  Json.Object("fundIdentifier", [&](const TBeamRecordReader& Identifier) {
    ABN = Identifier.Text("abn");
    USI = Identifier.Text("usi");
  });
  fundTransactionContextId = Json.Text("fundTransactionContextId");
  isDefaultFund = Json.Boolean("isDefaultFund");
  Json.Array("members", [&](const TBeamRecordReader& Member) {
    auto Child = std::make_shared<TBeamMemberContribution>();
    Child->Read(Member);
    AddMemberContribution(std::move(Child));
  });
  organisationName = Json.Text("organisationName");
  Json.Object("smsfDetail", [&](const TBeamRecordReader& Smsf) {
    Smsf.Object("bankDetail", [&](const TBeamRecordReader& Bank) {
      Bank.Object("account", [&](const TBeamRecordReader& Account) {
        smsfDetail.bankAccount.accountName = Account.Text("name");      // kept: wire behaviour, not "accountName"
        smsfDetail.bankAccount.accountNumber = Account.Text("number");  // kept: wire behaviour, not "accountNumber"
        smsfDetail.bankAccount.BSB = Account.Text("bsb");
      });
    });
    smsfDetail.electronicServiceAddressAlias = Smsf.Text("electronicServiceAddressAlias");
    smsfDetail.email = Smsf.Text("email");
    smsfDetail.fundName = Smsf.Text("fundName");
    Smsf.ReplaceTable("phoneNumbers", smsfDetail.phoneNumbers, ReadPhoneNumber);
  });
}

void TBeamContributionFund::AddMemberContribution(std::shared_ptr<TBeamMemberContribution> Member) {
  AddChild(FMembers, std::move(Member));
}

std::shared_ptr<TBeamMemberContribution> TBeamContributionFund::GetMemberContribution(std::ptrdiff_t Index) const {
  return ChildAt(FMembers, Index);
}

std::unique_ptr<TJSONObject> TBeamContributionFund::GetAsJsonObject() const {
  return WriteToObject(*this);
}

std::string TBeamContributionFund::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamContributionFund::Write(TJSONObjectHelper&) const;
template void TBeamContributionFund::Write(TJSONTextCounter&) const;
template void TBeamContributionFund::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
