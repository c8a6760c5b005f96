#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/model/uBeamDefaultFunds.h"
#include "oxSuperAPI/model/uBeamParticipantFields.h"

namespace oxSuperAPI {

/// One employer of the participant. Funds are shared: the host may keep one longer than the employer.
class OXSUPERAPI_EXPORT TBeamEmployer : public TBeamBusinessIdentifierFields, public TBeamContactFields {
 public:
  /// Texts of the service, passed through. @{
  std::string PayrollCompanyID;  ///< the host's; never in JSON
  std::int32_t EmployerId = 0;   ///< the service's id
  std::string OrganisationName;
  std::string TermsAndConditionsAcceptanceDate;  ///< ISO 8601
  std::string UserAcceptingTermsAndConditions;
  /// @}

  /// The host's own number of the employer.
  const std::string& ClientEmployerNumber() const { return FClientEmployerNumber; }
  /// The first number stays: ignored once there is one.
  void SetClientEmployerNumber(std::string Value);

  /// Null is ignored.
  void AddDefaultFund(std::shared_ptr<TBeamDefaultFund> Fund);
  /// Null for an index out of range. @{
  std::shared_ptr<TBeamDefaultFund> GetDefaultFund(std::ptrdiff_t Index) const;
  std::size_t GetFundCount() const { return FDefaultFunds.size(); }
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  /// Overwrites the texts, keeps a number that is there, appends funds. Raises TBeamTypeError at a fund that is neither
  /// an object nor null; what was read before stays.
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  /// As a participant's employer, which has the phone and the title of the participant's contact.
  void ReadInParticipant(const TBeamRecordReader& Json, const TBeamRecordReader& ParticipantContact);
  /// @}

 private:
  void ReadDefaultFunds(const TBeamRecordReader& Json);
  void ReadOrganisation(const TBeamRecordReader& Json);
  std::vector<std::shared_ptr<TBeamDefaultFund>> FDefaultFunds;
  std::string FClientEmployerNumber;
};

}  // namespace oxSuperAPI
