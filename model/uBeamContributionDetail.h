#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/model/uBeamMemberContribution.h"
#include "oxSuperAPI/model/uBeamSharedRecords.h"

/// A contribution batch, the body of "validate" and "submit": a detail holds employers, an employer funds, a fund
/// members. Children are shared: the host may keep one longer than its parent.
///
/// For all three classes: Add ignores null; Get gives null for an index out of range; writing leaves out empty texts
/// and nested objects and arrays that would be empty, but for "fundIdentifier"; loading overwrites the texts of what is
/// there, appends children, does nothing without an object, and passes on a member's conversion error and the
/// TBeamTypeError of a wrong element, leaving the children that were complete.
namespace oxSuperAPI {

/// What only a self-managed fund needs: where its money and its messages go.
struct TBeamSmsfDetail {
  /// Members of "smsfDetail". @{
  TBeamBankAccount bankAccount;
  std::string electronicServiceAddressAlias;
  std::string email;
  std::string fundName;
  TBeamPhoneNumbers phoneNumbers;
  /// @}
};

/// One fund and the members whose contributions are paid into it.
class OXSUPERAPI_EXPORT TBeamContributionFund {
 public:
  /// Texts of the host, passed through; `USI` is the unique superannuation identifier. @{
  std::string fundEmployerNumber;
  std::string ABN;
  std::string USI;
  std::string fundTransactionContextId;
  bool isDefaultFund = false;
  std::string organisationName;
  TBeamSmsfDetail smsfDetail;
  /// @}

  /// Children are shared with the host; null is ignored, an index out of range gives null. @{
  void AddMemberContribution(std::shared_ptr<TBeamMemberContribution> Member);
  std::shared_ptr<TBeamMemberContribution> GetMemberContribution(std::ptrdiff_t Index) const;
  std::size_t GetMemberContributionCount() const { return FMembers.size(); }
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink, `Read`
  /// is what loading does with an object. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
  /// @}

 private:
  std::vector<std::shared_ptr<TBeamMemberContribution>> FMembers;
};

/// Who the employer is and whom to ask there.
struct TBeamEmployerDetail {
  /// Members of "employerDetail". @{
  std::string businessIdentifierType;
  std::string businessIdentifierValue;
  std::string email;
  TBeamPersonName name;
  std::string organisationName;
  TBeamPhoneNumbers phoneNumbers;
  /// @}
};

/// One employer and the funds it pays into.
class OXSUPERAPI_EXPORT TBeamContributionEmployer {
 public:
  /// The context id is the host's own text. @{
  TBeamEmployerDetail employerDetail;
  std::string employerTransactionContextId;
  /// @}

  /// Children are shared with the host; null is ignored, an index out of range gives null. @{
  void AddContributionFund(std::shared_ptr<TBeamContributionFund> Fund);
  std::shared_ptr<TBeamContributionFund> GetContributionFund(std::ptrdiff_t Index) const;
  std::size_t GetContributionFundCount() const { return FFunds.size(); }
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink, `Read`
  /// is what loading does with an object. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
  /// @}

 private:
  std::vector<std::shared_ptr<TBeamContributionFund>> FFunds;
};

/// The payroll customer that sends the batch, and whom to ask there.
struct TBeamParticipantDetail {
  /// Texts of the host, passed through. @{
  std::string clientParticipantNumber;
  std::string businessIdentifierType;
  std::string businessIdentifierValue;
  std::string email;
  TBeamPersonName name;
  std::string organisationName;
  TBeamPhoneNumbers phoneNumbers;
  /// @}
};

/// How the batch is paid and refunded. `paymentType` is one of TBeamSuperAPIPaymentMethodString.
struct TBeamPaymentDetail {
  /// Texts of the host, passed through. @{
  std::string businessIdentifierType;
  std::string businessIdentifierValue;
  TBeamBankAccount directDebitAccount;
  std::string organisationName;
  std::string paymentType;
  TBeamBankAccount refundAccount;
  /// @}
};

/// `messageId` and `time` are set by every PostContribution: a new GUID and the UTC moment.
struct TBeamMessageIdentifier {
  /// `processId` names the batch in later requests. @{
  std::string messageId;
  std::string processId;
  std::string time;
  /// @}
};

/// The whole batch.
class OXSUPERAPI_EXPORT TBeamContributionDetail {
 public:
  /// The objects that frame the batch, and the format version that the host declares. @{
  TBeamParticipantDetail participant;
  TBeamPaymentDetail payment;
  TBeamMessageIdentifier identifier;
  std::string version;
  /// Key of the call log row of the last PostContribution with this batch, 0 when none was written. Never in JSON.
  std::int32_t BeamSuperLogID = 0;
  /// @}

  /// Children are shared with the host; null is ignored, an index out of range gives null. @{
  void AddContributionEmployer(std::shared_ptr<TBeamContributionEmployer> Employer);
  std::shared_ptr<TBeamContributionEmployer> GetContributionEmployer(std::ptrdiff_t Index) const;
  std::size_t GetContributionEmployerCount() const { return FEmployers.size(); }
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  /// @}

 private:
  std::vector<std::shared_ptr<TBeamContributionEmployer>> FEmployers;
};

}  // namespace oxSuperAPI
