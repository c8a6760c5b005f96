#include "oxSuperAPI/model/uBeamNotification.h"

#include <optional>

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/foundation/uBeamNumbers.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

namespace {

using TEventItem = TBeamNotificationEventItem;

// Names of parameters, compared as they stand: the dots are part of the name.
constexpr struct {
  std::string_view Name;
  std::string TEventItem::*Field;
} TextParameters[] = {
    {"SuperannuationFundDetails.MemberClient.Identifier", &TEventItem::MemberNumber},
    {"Identifier", &TEventItem::Identifier},
    {"Scheme", &TEventItem::Scheme},
    {"ContextID", &TEventItem::ContextId},
    {"EmployersABNDimension", &TEventItem::EmployersABN},
    {"ReportPartyTypeDimension", &TEventItem::ReportPartyType},
    {"SuperFundUniqueSuperannuationIdentifierDimension", &TEventItem::FundUSI},
    {"SuperFundABNDimension", &TEventItem::FundABN},
    {"elementname", &TEventItem::ElementName},
    {"RefundPaymentReferenceNumber", &TEventItem::RefundPaymentReferenceNumber},
    {"elementvalue", &TEventItem::ElementValue},
};

constexpr struct {
  std::string_view Name;
  double TEventItem::*Field;
} AmountParameters[] = {
    {"RefundAmount", &TEventItem::RefundAmount},
    {"RefundPaymentTotal", &TEventItem::RefundPaymentTotal},
};

void ReadParameter(const TBeamRecordReader& Json, TEventItem& EventItem) {
  const std::string_view Name = Json.Text("name");
  const std::string_view Value = Json.Text("value");
  for (const auto& Parameter : TextParameters)
    if (Name == Parameter.Name) EventItem.*Parameter.Field = Value;
  for (const auto& Parameter : AmountParameters)
    if (Name == Parameter.Name)
      EventItem.*Parameter.Field = TryParseFloat(Trim(Value)).value_or(EventItem.*Parameter.Field);
}

}  // namespace

template <class Sink>
void TBeamNotification::Write(Sink& Json) const {
  Json.AddString("create_date", Createdate);
  Json.AddPair("notificationId", NotificationId);
  Json.AddString("notification_type", NotificationType);
  Json.AddString("payload", Payload);
  Json.AddString("processId", ProcessId);
  // kept: wire behaviour, nothing of the event item and the exception is written
}

void TBeamNotification::ReadHeader(const TBeamRecordReader& Json) {
  Createdate = Json.Text("create_date");
  NotificationId = Json.Integer("notificationId");
  NotificationType = Json.Text("notification_type");
}

void TBeamNotification::LoadFromJsonObject(TJSONView Source) {
  if (!Source.Object()) return;
  const TBeamRecordReader Json(Source);
  ReadHeader(Json);
  Payload = Json.Text("payload");  // kept: wire behaviour, the content; a list keeps the JSON text
  ProcessId = Json.Text("processId");
  if (!Source.Object()->Find("payload")) return;
  StatusMessage = Json.Below("payload").Text("statusMessage");  // a payload that is a text has no members
  Summary = Json.Below("payload").Text("summary");
  // kept: wire behaviour, these two stand beside the payload and not in it
  Json.Object("eventItem", [&](const TBeamRecordReader& Item) {
    EventItem.ContextId = Item.Text("contextId");
    EventItem.SeverityCode = Item.Text("severityCode");
    EventItem.ErrorCode = Item.Text("errorCode");
    EventItem.ShortDescription = Item.Text("shortDescription");
    EventItem.DetailedDescription = Item.Text("detailedDescription");
  });
  ReadParameters(Source.Object()->Find("parameters"));
}

void TBeamNotification::ReadInList(const TBeamRecordReader& Json) {
  ReadHeader(Json);
  Payload = PrintJSON(Json.Required("payload"), TJSONLayout::Compact);
  ReadPayload();
  ProcessId = Json.RequiredTextAnywhere("processId");
}

void TBeamNotification::ReadPayload() {
  const bool IsStatus = NotificationType == "STATUS";
  const bool IsResponse = NotificationType == "CONTRIBUTION_RESPONSE" || NotificationType == "MEMBER_RESPONSE";
  const bool IsException = NotificationType == "EXCEPTION";
  if (!IsStatus && !IsResponse && !IsException) return;
  const std::unique_ptr<TJSONValue> Document = ParseJSON(TBeamAPIHelper::CleanUp(Payload));
  if (!Document || !Document->AsObject()) return;
  const TBeamRecordReader Content(Document.get());
  if (IsStatus) StatusMessage = Content.Text("statusMessage");
  if (IsResponse) ReadResponse(Content);
  if (IsException) ReadException(Content);
}

void TBeamNotification::ReadResponse(const TBeamRecordReader& Content) {
  Summary = Content.RequiredTextAnywhere("summary");
  const TJSONValue* Parameters = nullptr;
  if (const TJSONValue* Found = Content.Anywhere("eventItem")) {
    const TBeamRecordReader Item(Found);
    EventItem.ContextId = Item.RequiredTextAnywhere("contextId");
    EventItem.ErrorCode = Item.RequiredTextAnywhere("errorCode");
    EventItem.SeverityCode = Item.RequiredTextAnywhere("severityCode");
    EventItem.ShortDescription = Item.RequiredTextAnywhere("shortDescription");
    EventItem.DetailedDescription = Item.RequiredTextAnywhere("detailedDescription");
    Parameters = Item.Anywhere("parameters");
  }
  // Some payloads have them beside the event item.
  ReadParameters(Parameters ? Parameters : Content.Anywhere("parameters"));
}

void TBeamNotification::ReadException(const TBeamRecordReader& Content) {
  Exception.ExceptionType = Content.RequiredTextAnywhere("exceptionType");
  Exception.ExceptionMessage = Content.RequiredTextAnywhere("message");
  Content.ObjectAnywhere("properties", [&](const TBeamRecordReader& Properties) {
    Exception.Properties.Amount = Properties.Text("Amount");
    Exception.Properties.BSB = Properties.Text("BSB");
    Exception.Properties.account = Properties.Text("Account");
    Exception.Properties.accountName = Properties.Text("Account Name");
    Exception.Properties.RefNo = Properties.Text("RefNo");
    Exception.Properties.BPAYBillerCode = Properties.Text("BPAY\xC2\xAE Biller Code");  // the registered sign
    Exception.Properties.Reference = Properties.Text("Reference");
  });
}

void TBeamNotification::ReadParameters(const TJSONValue* Parameters) {
  TBeamRecordReader::EachElement(Parameters ? Parameters->AsArray() : nullptr, "parameters",
                                 [&](const TBeamRecordReader& Parameter) { ReadParameter(Parameter, EventItem); });
}

std::string TBeamNotification::GetOtherProperties(std::string_view Name) const {
  for (const TPair& Pair : FOtherProperties)
    if (Pair.first == Name) return Pair.second;
  return "";
}

void TBeamNotification::SetOtherProperties(std::string Name, std::string Value) {
  FOtherProperties.emplace_back(std::move(Name), std::move(Value));
}

std::unique_ptr<TJSONObject> TBeamNotification::GetAsJsonObject() const {
  return WriteToObject(*this);
}

std::string TBeamNotification::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamNotification::Write(TJSONObjectHelper&) const;
template void TBeamNotification::Write(TJSONTextCounter&) const;
template void TBeamNotification::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
