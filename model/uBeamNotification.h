#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

class TBeamRecordReader;

/// What a response notification is about. Texts are the service's own; the refund amounts are dollars.
struct TBeamNotificationEventItem {
  /// Texts of the service; "" or 0 where the notification has none. @{
  std::string ContextId;
  std::string SeverityCode;
  std::string ErrorCode;
  std::string ShortDescription;
  std::string DetailedDescription;
  std::string Summary;  ///< for the host; loading fills the notification's own
  std::string MemberNumber;
  std::string MemberContextId;  ///< for the host, never loaded
  std::string Scheme;
  std::string Identifier;
  std::string EmployersABN;
  std::string ReportPartyType;
  std::string FundUSI;
  std::string FundABN;
  double RefundAmount = 0;
  double RefundPaymentTotal = 0;
  std::string ElementName;
  std::string RefundPaymentReferenceNumber;
  std::string ElementValue;
  /// @}
};

/// Where the service asks the employer to pay after a payment exception.
struct TBeamNotificationProperties {
  /// Texts of the service, the amount included. @{
  std::string Amount;
  std::string BSB;
  std::string account;
  std::string accountName;
  std::string RefNo;
  std::string BPAYBillerCode;
  std::string Reference;
  /// @}
};

/// A payment that did not go through.
struct TBeamNotificationException {
  /// What went wrong with which payment. @{
  std::string Channel;  ///< for the host, never loaded
  std::string ExceptionType;
  std::string ExceptionMessage;
  std::string ProcessId;  ///< for the host; loading fills the notification's own
  TBeamNotificationProperties Properties;
  /// @}
};

/// One message of the service about a batch, a member or a payment. Which fields it fills depends on its type:
/// "STATUS", "CONTRIBUTION_RESPONSE", "MEMBER_RESPONSE" or "EXCEPTION"; of any other type only the header is loaded.
class OXSUPERAPI_EXPORT TBeamNotification {
 public:
  /// Name and value.
  using TPair = std::pair<std::string, std::string>;

  /// Texts of the service, passed through. `ProcessId` names the batch. @{
  std::string Createdate;
  std::int32_t NotificationId = 0;
  std::string NotificationType;
  /// From a list: the member's JSON text, quotes and escapes included. Loaded on its own: the text's content.
  std::string Payload;
  std::string ProcessId;
  std::string StatusMessage;
  std::string Summary;
  TBeamNotificationEventItem EventItem;
  TBeamNotificationException Exception;
  /// @}

  /// Names and values that a host attaches. Get gives the first value of exactly that name, "" when there is none; Set
  /// appends, whether or not one of that name exists. @{
  const std::vector<TPair>& OtherProperties() const { return FOtherProperties; }
  std::string GetOtherProperties(std::string_view Name) const;
  void SetOtherProperties(std::string Name, std::string Value);
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  /// The flat form: event item and parameters beside the payload, none of the exception's fields. Raises TBeamTypeError
  /// at a parameter that is neither an object nor null.
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  /// As an element of a list: everything else stands inside the payload, which is a JSON object or the text of one.
  /// Raises TBeamError when a member is missing that its type of notification must have.
  void ReadInList(const TBeamRecordReader& Json);
  /// @}

 private:
  void ReadHeader(const TBeamRecordReader& Json);
  void ReadPayload();
  void ReadResponse(const TBeamRecordReader& Content);
  void ReadException(const TBeamRecordReader& Content);
  void ReadParameters(const TJSONValue* Parameters);

  std::vector<TPair> FOtherProperties;
};

}  // namespace oxSuperAPI
