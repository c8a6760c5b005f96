#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/model/uBeamParticipantFields.h"
#include "oxSuperAPI/model/uBeamSharedRecords.h"

namespace oxSuperAPI {

/// An employer that a direct-debit authority covers, by the host's number.
class OXSUPERAPI_EXPORT TBeamEmployerNumber {
 public:
  /// The host's own key of the employer, not the service's `EmployerId`. @{
  std::string ClientEmployerNumber;
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
  /// @}
};

/// A direct-debit authority of the participant. Dates are texts in wire form; the one in force has no end date.
/// Employer numbers are shared: the host may keep one longer than the authority.
class OXSUPERAPI_EXPORT TBeamDDAuthority : public TBeamBankAccount,
                                           public TBeamAddressFields,
                                           public TBeamBusinessIdentifierFields {
 public:
  /// The id is the service's; texts are passed through. @{
  std::int32_t DirectDebitAuthorityId = 0;
  std::string EndDate;
  std::string OrganisationName;
  std::string StartDate;
  std::string TermsAndConditionsAcceptanceDate;
  std::string UserAcceptingTermsAndConditions;
  /// @}

  /// Null is ignored.
  void AddEmployerNumber(std::shared_ptr<TBeamEmployerNumber> Number);
  /// Null for an index out of range. @{
  std::shared_ptr<TBeamEmployerNumber> GetEmployerNumber(std::ptrdiff_t Index) const;
  std::size_t GetEmployerNumberCount() const { return FEmployerNumbers.size(); }
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  /// Overwrites everything but the employer numbers, which only a participant's document brings.
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  /// As a participant's authority: with the employer numbers and without the id.
  void ReadInParticipant(const TBeamRecordReader& Json);
  /// @}

 private:
  void ReadTexts(const TBeamRecordReader& Json);
  std::vector<std::shared_ptr<TBeamEmployerNumber>> FEmployerNumbers;
};

}  // namespace oxSuperAPI
