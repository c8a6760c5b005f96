#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostDates.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/model/uBeamDDAuthority.h"
#include "oxSuperAPI/model/uBeamEmployer.h"
#include "oxSuperAPI/model/uBeamParticipantFields.h"

namespace oxSuperAPI {

/// The participant: the payroll customer that is registered with the service, its direct-debit authorities and its
/// employers. Children are shared: the host may keep one longer than the participant.
///
/// Writer and reader are not mirror images: docs/wire.md lists what is lost on the way back, and why.
class OXSUPERAPI_EXPORT TBeamParticipantDetails : public TBeamAddressFields,
                                                  public TBeamBusinessIdentifierFields,
                                                  public TBeamContactFields {
 public:
  /// The host's own, never in JSON. (`DirectCredtaccountName` is spelt so.) @{
  std::string LastMessage;
  std::string PayrollCompanyID;
  std::string Code;
  std::string PaymentMethod;
  std::string DirectCreditBSB;
  std::string DirectCredtaccountName;
  std::string DirectCreditaccountNumber;
  /// @}

  /// On the wire. `RedirectURL` is where the sign-up portal sends people back to. @{
  std::string OrganisationName;
  std::string PayrollName;
  std::string RedirectURL;
  std::string UserAcceptingTermsAndConditions;
  std::string TermsAndConditionsAcceptanceDate;  ///< ISO 8601
  /// @}

  /// The host's own number of the participant.
  const std::string& ClientParticipantNumber() const { return FClientParticipantNumber; }
  /// The first number stays: ignored once there is one. Loading overwrites it all the same.
  void SetClientParticipantNumber(std::string Value);

  /// Null is ignored. @{
  void AddDDAuthority(std::shared_ptr<TBeamDDAuthority> Authority);
  void AddEmployer(std::shared_ptr<TBeamEmployer> Employer);
  /// @}

  /// Null for an index out of range. @{
  std::shared_ptr<TBeamDDAuthority> GetDDAuthority(std::ptrdiff_t Index) const;
  std::shared_ptr<TBeamEmployer> GetEmployer(std::ptrdiff_t Index) const;
  std::size_t GetDDAuthorityCount() const { return FDDAuthorities.size(); }
  std::size_t GetEmployerCount() const { return FEmployers.size(); }
  /// @}

  /// Whether the terms were accepted at or after `pChangedDate` (UTC) by the participant, by the authority in force
  /// (the last without an end date, if there is one) and by the first employer, if there is one. False when a date of
  /// theirs is missing or is no ISO 8601 date, and for a `pChangedDate` before day 5, which is no real date.
  bool IsUserAcceptanceUpToDate(TDateTime pChangedDate) const;

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  /// Overwrites the texts and appends children. Raises TBeamError when "contact" or an element of a list is of the
  /// wrong kind; what was read before stays.
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  /// @}

 private:
  void Load(const TJSONObject& Source);
  const TBeamDDAuthority* AuthorityInForce() const;

  std::vector<std::shared_ptr<TBeamDDAuthority>> FDDAuthorities;
  std::vector<std::shared_ptr<TBeamEmployer>> FEmployers;
  std::string FClientParticipantNumber;
};

}  // namespace oxSuperAPI
