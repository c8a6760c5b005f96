#include "oxSuperAPI/model/uBeamContributionDetail.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamChildren.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamContributionDetail::Write(Sink& Json) const {
  Json.Object("contributionDetail", IfFilled, [&](Sink& Detail) {
    Detail.Array("employers", IfFilled, [&](auto& Elements) {
      for (const auto& Child : FEmployers) Elements.Element(Always, [&](Sink& Employer) { Child->Write(Employer); });
    });
    Detail.Object("participantDetail", IfFilled, [&](Sink& Participant) {
      Participant.AddString("clientParticipantNumber", participant.clientParticipantNumber);
      Participant.Object("businessIdentifier", IfFilled, [&](Sink& Identifier) {
        Identifier.AddString("businessIdentifierType", participant.businessIdentifierType);
        Identifier.AddString("value", participant.businessIdentifierValue);
      });
      Participant.AddString("email", participant.email);
      Participant.Object("name", IfFilled, [&](Sink& Name) { participant.name.Write(Name); });
      Participant.AddString("organisationName", participant.organisationName);
      WritePhoneNumbers(Participant, participant.phoneNumbers);
    });
    Detail.Object("paymentDetail", IfFilled, [&](Sink& Payment) {
      Payment.Object("businessIdentifier", IfFilled, [&](Sink& Identifier) {
        // kept: wire behaviour, a lower-case i only here
        Identifier.AddString("businessidentifierType", payment.businessIdentifierType);
        Identifier.AddString("value", payment.businessIdentifierValue);
      });
      Payment.Object("directDebitDetail", IfFilled, [&](Sink& DirectDebit) {
        DirectDebit.Object("account", IfFilled, [&](Sink& Account) { payment.directDebitAccount.Write(Account); });
      });
      Payment.AddString("organisationName", payment.organisationName);
      Payment.AddString("paymentType", payment.paymentType);
      Payment.Object("refundDetail", IfFilled, [&](Sink& Refund) {
        Refund.Object("account", IfFilled, [&](Sink& Account) { payment.refundAccount.Write(Account); });
      });
    });
  });
  Json.Object("identifier", IfFilled, [&](Sink& Identifier) {
    Identifier.AddString("messageId", identifier.messageId);
    Identifier.AddString("processId", identifier.processId);
    Identifier.AddString("time", identifier.time);
  });
  Json.AddString("version", version);
}

void TBeamContributionDetail::LoadFromJsonObject(TJSONView Source) {
  if (!Source.Object()) return;
  const TBeamRecordReader Json(Source);
  Json.Object("contributionDetail", [&](const TBeamRecordReader& Detail) {
    Detail.Array("employers", [&](const TBeamRecordReader& Employer) {
      auto Child = std::make_shared<TBeamContributionEmployer>();
      Child->Read(Employer);
      AddContributionEmployer(std::move(Child));
    });
    Detail.Object("participantDetail", [&](const TBeamRecordReader& Participant) {
      participant.clientParticipantNumber = Participant.Text("clientParticipantNumber");
      Participant.Object("businessIdentifier", [&](const TBeamRecordReader& Identifier) {
        participant.businessIdentifierType = Identifier.Text("businessIdentifierType");
        participant.businessIdentifierValue = Identifier.Text("value");
      });
      participant.email = Participant.Text("email");
      Participant.Object("name", [&](const TBeamRecordReader& Name) { participant.name.Read(Name); });
      participant.organisationName = Participant.Text("organisationName");
      Participant.FillTable("phoneNumbers", participant.phoneNumbers, ReadPhoneNumber);  // kept: not emptied first
    });
    Detail.Object("paymentDetail", [&](const TBeamRecordReader& Payment) {
      Payment.Object("businessIdentifier", [&](const TBeamRecordReader& Identifier) {
        // kept: wire behaviour, an upper-case I although the writer's is lower-case
        payment.businessIdentifierType = Identifier.Text("businessIdentifierType");
        payment.businessIdentifierValue = Identifier.Text("value");
      });
      Payment.Object("directDebitDetail", [&](const TBeamRecordReader& DirectDebit) {
        DirectDebit.Object("account",
                           [&](const TBeamRecordReader& Account) { payment.directDebitAccount.Read(Account); });
      });
      payment.organisationName = Payment.Text("organisationName");
      payment.paymentType = Payment.Text("paymentType");
      Payment.Object("refundDetail", [&](const TBeamRecordReader& Refund) {
        Refund.Object("account", [&](const TBeamRecordReader& Account) { payment.refundAccount.Read(Account); });
      });
    });
  });
  Json.Object("identifier", [&](const TBeamRecordReader& Identifier) {
    identifier.messageId = Identifier.Text("messageId");
    identifier.processId = Identifier.Text("processId");
    identifier.time = Identifier.Text("time");
  });
  version = Json.Text("version");
}

void TBeamContributionDetail::AddContributionEmployer(std::shared_ptr<TBeamContributionEmployer> Employer) {
  AddChild(FEmployers, std::move(Employer));
}

std::shared_ptr<TBeamContributionEmployer> TBeamContributionDetail::GetContributionEmployer(
    std::ptrdiff_t Index) const {
  return ChildAt(FEmployers, Index);
}

std::unique_ptr<TJSONObject> TBeamContributionDetail::GetAsJsonObject() const {
  return WriteToObject(*this);
}

std::string TBeamContributionDetail::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamContributionDetail::Write(TJSONObjectHelper&) const;
template void TBeamContributionDetail::Write(TJSONTextCounter&) const;
template void TBeamContributionDetail::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
