#include "notification_text.h"

#include "output.h"
#include "oxSuperAPI/foundation/uBeamText.h"

namespace oxSuperAPI {
namespace {

using TEvent = TBeamNotificationEventItem;
using TException = TBeamNotificationException;

bool IsException(const TBeamNotification& Notification) {
  return Notification.NotificationType == "EXCEPTION";
}

bool IsResponse(const TBeamNotification& Notification) {
  return Notification.NotificationType.ends_with("_RESPONSE");
}

/// Adds a part of the line, with what introduces it, unless there is nothing to say.
void Add(std::string& Line, const std::string& Introduction, const std::string& Text) {
  if (!Text.empty()) Line += (Line.empty() ? "" : "; ") + Introduction + Text;
}

bool HasRefund(const TEvent& Event) {
  return CentsOf(Event.RefundAmount) != 0 || CentsOf(Event.RefundPaymentTotal) != 0;
}

std::string Refund(const TEvent& Event) {
  if (!HasRefund(Event)) return "";
  return "refund " + FormatDollars(CentsOf(Event.RefundAmount)) + " of " +
         FormatDollars(CentsOf(Event.RefundPaymentTotal)) +
         (Event.RefundPaymentReferenceNumber.empty() ? "" : ", reference " + Event.RefundPaymentReferenceNumber);
}

std::string Response(const TBeamNotification& Notification) {
  const TEvent& Event = Notification.EventItem;
  std::string Line = Notification.Summary;
  const bool Repeated = Line.find(Event.ShortDescription) != std::string::npos;
  std::string Error = Event.ErrorCode;
  if (!Repeated) Error += (Error.empty() ? "" : " ") + Event.ShortDescription;
  if (SameText(Event.SeverityCode, "error") && !Error.empty()) Error = "error " + Error;
  Add(Line, "", Error);
  if (Notification.NotificationType == "MEMBER_RESPONSE") Add(Line, "LINE ID ", Event.ContextId);
  Add(Line, "member ", Event.MemberNumber);
  Add(Line, "fund ", Event.FundUSI.empty() ? Event.FundABN : Event.FundUSI);
  Add(Line, "", Refund(Event));
  return Line;
}

std::string Exception(const TException& Exception) {
  const TBeamNotificationProperties& Pay = Exception.Properties;
  std::string Line = Exception.ExceptionType;
  Add(Line, "", Exception.ExceptionMessage);
  Add(Line, "pay ", Pay.Amount);
  Add(Line, "to BSB ", Pay.BSB);
  Add(Line, "account ", Pay.account);
  Add(Line, "", Pay.accountName);
  Add(Line, "biller ", Pay.BPAYBillerCode);
  Add(Line, "reference ", Pay.RefNo.empty() ? Pay.Reference : Pay.RefNo);
  if (!Pay.RefNo.empty() && Pay.Reference != Pay.RefNo) Add(Line, "", Pay.Reference);
  return Line;
}

TJSONObject EventDocument(const TEvent& Event) {
  TJSONObject Document;
  AddText(Document, "contextId", Event.ContextId);
  AddText(Document, "severityCode", Event.SeverityCode);
  AddText(Document, "errorCode", Event.ErrorCode);
  AddText(Document, "shortDescription", Event.ShortDescription);
  AddText(Document, "detailedDescription", Event.DetailedDescription);
  AddText(Document, "memberNumber", Event.MemberNumber);
  AddText(Document, "reportPartyType", Event.ReportPartyType);
  AddText(Document, "employerAbn", Event.EmployersABN);
  AddText(Document, "fundUsi", Event.FundUSI);
  AddText(Document, "fundAbn", Event.FundABN);
  AddText(Document, "elementName", Event.ElementName);
  AddDollars(Document, "refundAmount", CentsOf(Event.RefundAmount));
  AddDollars(Document, "refundPaymentTotal", CentsOf(Event.RefundPaymentTotal));
  AddText(Document, "refundPaymentReferenceNumber", Event.RefundPaymentReferenceNumber);
  return Document;
}

TJSONObject ExceptionDocument(const TException& Exception) {
  TJSONObject Document;
  AddText(Document, "exceptionType", Exception.ExceptionType);
  AddText(Document, "message", Exception.ExceptionMessage);
  AddText(Document, "amount", Exception.Properties.Amount);
  AddText(Document, "bsb", Exception.Properties.BSB);
  AddText(Document, "accountNumber", Exception.Properties.account);
  AddText(Document, "accountName", Exception.Properties.accountName);
  AddText(Document, "billerCode", Exception.Properties.BPAYBillerCode);
  AddText(Document, "refNo", Exception.Properties.RefNo);
  AddText(Document, "reference", Exception.Properties.Reference);
  return Document;
}

}  // namespace

std::string WhatHappened(const TBeamNotification& Notification) {
  if (IsException(Notification)) return Exception(Notification.Exception);
  return IsResponse(Notification) ? Response(Notification) : Notification.StatusMessage;
}

TJSONObject NotificationDocument(const TBeamNotification& Notification) {
  TJSONObject Document;
  AddNumber(Document, "notificationId", Notification.NotificationId);
  AddText(Document, "createDate", Notification.Createdate);
  AddText(Document, "type", Notification.NotificationType);
  AddText(Document, "processId", Notification.ProcessId);
  if (IsResponse(Notification)) {
    AddText(Document, "summary", Notification.Summary);
    Document.Append("event", TJSONValue(EventDocument(Notification.EventItem)));
  } else if (IsException(Notification)) {
    Document.Append("exception", TJSONValue(ExceptionDocument(Notification.Exception)));
  } else {
    AddText(Document, "statusMessage", Notification.StatusMessage);
  }
  return Document;
}

}  // namespace oxSuperAPI
