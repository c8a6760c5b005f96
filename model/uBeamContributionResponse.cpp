#include "oxSuperAPI/model/uBeamContributionResponse.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamChildren.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamSuperValidation::Write(Sink& Json) const {
  Json.AddString("context", context);
  Json.AddString("errorCode", errorCode);
  Json.AddString("message", message);
  Json.AddString("severity", severity);
  // kept: wire behaviour, the path is not written
}

void TBeamSuperValidation::LoadFromJSONObject(TJSONView Source) {
  if (!Source.Object()) return;
  const TBeamRecordReader Json(Source);
  context = Json.Text("context");
  errorCode = Json.Text("errorCode");
  message = Json.Text("message");
  severity = Json.Text("severity");
  path = Json.Text("path");
}

template <class Sink>
void TBeamSuperPayment::Write(Sink& Json) const {
  Json.AddString("abn", ABN);
  Json.Object("account", Always, [&](Sink& Account) { account.Write(Account); });
  Json.AddPair("amount", amount);
  Json.AddString("billerCode", billerCode);
  Json.AddString("customerReferenceNumber", customerReferenceNumber);
  Json.AddString("organisationName", organisationName);
  Json.AddString("paymentReferenceNumber", paymentReferenceNumber);
  Json.AddString("paymentType", paymentType);
  Json.AddString("usi", USI);
}

void TBeamSuperPayment::LoadFromJSONObject(TJSONView Source) {
  if (!Source.Object()) return;
  const TBeamRecordReader Json(Source);
  ABN = Json.Text("abn");
  Json.ObjectAnywhere("account", [&](const TBeamRecordReader& Account) { account.Read(Account); });
  amount = Json.Number("amount");
  billerCode = Json.Text("billerCode");
  customerReferenceNumber = Json.Text("customerReferenceNumber");
  organisationName = Json.Text("organisationName");
  paymentReferenceNumber = Json.Text("paymentReferenceNumber");
  paymentType = Json.Text("paymentType");
  USI = Json.Text("usi");
}

template <class Sink>
void TBeamContributionResponse::Write(Sink& Json) const {
  Json.Object("identifier", Always, [&](Sink& Identifier) {
    Identifier.AddString("messageId", messageId);
    Identifier.AddString("processId", processId);
    Identifier.AddString("time", time);
  });
  // kept: wire behaviour, status and hasErrors are not written
  Json.Array("payments", Always, [&](auto& Elements) {
    for (const auto& Child : FPayments) Elements.Element(Always, [&](Sink& Payment) { Child->Write(Payment); });
  });
  Json.AddPair("processed", processed);
  Json.Array("validations", Always, [&](auto& Elements) {
    for (const auto& Child : FValidations) Elements.Element(Always, [&](Sink& Finding) { Child->Write(Finding); });
  });
  Json.AddPair("version", processed);  // kept: wire behaviour, the processed flag and not the version
}

void TBeamContributionResponse::LoadFromJSONObject(TJSONView Source) {
  if (!Source.Object()) return;
  const TBeamRecordReader Json(Source);
  Json.ObjectAnywhere("identifier", [&](const TBeamRecordReader& Identifier) {
    messageId = Identifier.Text("messageId");
    processId = Identifier.Text("processId");
    time = Identifier.Text("time");
  });
  if (Json.Has("messageId")) messageId = Json.Text("messageId");  // the response's own, before the identifier's
  if (Json.Has("processId")) processId = Json.Text("processId");
  if (Json.Has("status")) status = Json.Text("status");
  if (Json.Has("hasErrors")) hasErrors = Json.Boolean("hasErrors");
  const auto ReadPayment = [&](const TBeamRecordReader& Payment) {
    auto Child = std::make_shared<TBeamSuperPayment>();
    Child->LoadFromJSONObject(Payment.Source());
    AddPayment(std::move(Child));
  };
  if (!Json.ArrayAnywhere("payments", ReadPayment)) Json.ArrayAnywhere("paymentInstructions", ReadPayment);
  if (Json.Has("processed")) processed = Json.Boolean("processed");
  Json.ArrayAnywhere("validations", [&](const TBeamRecordReader& Finding) {
    auto Child = std::make_shared<TBeamSuperValidation>();
    Child->LoadFromJSONObject(Finding.Source());
    AddValidation(std::move(Child));
  });
  if (Json.Has("version")) version = Json.Text("version");
}

namespace {

// Unlike the batch's children: a negative index is an error of the caller.
template <class Item>
std::shared_ptr<Item> ItemAt(const std::vector<std::shared_ptr<Item>>& Items, std::ptrdiff_t Index) {
  if (Index < 0) throw TBeamRangeError("Contribution response index " + std::to_string(Index) + " is out of range");
  return ChildAt(Items, Index);
}

}  // namespace

void TBeamContributionResponse::AddPayment(std::shared_ptr<TBeamSuperPayment> Payment) {
  AddChild(FPayments, std::move(Payment));
}

void TBeamContributionResponse::AddValidation(std::shared_ptr<TBeamSuperValidation> Validation) {
  AddChild(FValidations, std::move(Validation));
}

std::shared_ptr<TBeamSuperPayment> TBeamContributionResponse::GetPayment(std::ptrdiff_t Index) const {
  return ItemAt(FPayments, Index);
}

std::shared_ptr<TBeamSuperValidation> TBeamContributionResponse::GetValidation(std::ptrdiff_t Index) const {
  return ItemAt(FValidations, Index);
}

std::unique_ptr<TJSONObject> TBeamSuperValidation::GetAsJsonObject() const {
  return WriteToObject(*this);
}
std::string TBeamSuperValidation::GetAsJsonString() const {
  return WriteToText(*this);
}
std::unique_ptr<TJSONObject> TBeamSuperPayment::GetAsJsonObject() const {
  return WriteToObject(*this);
}
std::string TBeamSuperPayment::GetAsJsonString() const {
  return WriteToText(*this);
}
std::unique_ptr<TJSONObject> TBeamContributionResponse::GetAsJsonObject() const {
  return WriteToObject(*this);
}
std::string TBeamContributionResponse::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamSuperValidation::Write(TJSONObjectHelper&) const;
template void TBeamSuperValidation::Write(TJSONTextCounter&) const;
template void TBeamSuperValidation::Write(TJSONTextWriter&) const;
template void TBeamSuperPayment::Write(TJSONObjectHelper&) const;
template void TBeamSuperPayment::Write(TJSONTextCounter&) const;
template void TBeamSuperPayment::Write(TJSONTextWriter&) const;
template void TBeamContributionResponse::Write(TJSONObjectHelper&) const;
template void TBeamContributionResponse::Write(TJSONTextCounter&) const;
template void TBeamContributionResponse::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
