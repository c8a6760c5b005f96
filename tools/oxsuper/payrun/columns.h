#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "oxSuperAPI/model/uBeamSuperObjects.h"
#include "payrun/cells.h"

/// The 133 columns of the pay-run file SAFF 1.0 and where each of them goes.
namespace oxSuperAPI {

/// Everything that one row says, before rows are put together to a batch.
struct TPayRunRow {
  std::size_t Line = 0;
  std::string LineId;
  TBeamParticipantDetail Participant;
  TBeamPaymentDetail Payment;
  TBeamEmployerDetail Employer;
  std::string Location;
  std::string FundABN;
  std::string FundUSI;
  std::string FundName;
  std::string FundServiceAddress;  ///< electronic service address, of a self-managed fund
  TBeamBankAccount FundAccount;    ///< likewise
  std::string FundEmployerNumber;
  std::shared_ptr<TBeamMemberContribution> Member = std::make_shared<TBeamMemberContribution>();

  // Columns that need a decision before they reach the member.
  double ServiceFraction = 0;  ///< of the contributions part; the registration part has its own
  std::string EmployeeLocation;
  std::array<TBeamDatedValue, 5> AnnualSalaries;

  // Columns that are only checked.
  std::map<std::size_t, std::string> Dates;  ///< as they are sent, by column
  std::optional<std::int64_t> PaymentCents;
  std::int64_t ContributionCents = 0;
  bool HasContributions = false;
  bool HasRegistration = false;
};

/// To whom a column belongs: rows that share the owner have to agree on it.
enum class TColumnOwner : std::uint8_t {
  File,          ///< not part of the batch
  Sender,        ///< the batch's participant
  Payer,         ///< the batch's payment
  Fund,          ///< the fund inside its employer
  Employer,      ///< the employer
  Member,        ///< the member alone
  Contribution,  ///< the member's contributions: the columns that make up the payment
  Registration   ///< the member's registration with the fund
};

enum class TRequired : std::uint8_t {
  Optional,
  EveryRow,        ///< an error where it is empty
  OncePerBatch,    ///< an error when no row of a batch has it
  ToPay,           ///< an error when no row of a batch has it and the batch has contributions
  PayPeriod,       ///< a warning when the row has contributions
  SelfManagedFund  ///< an error when the row's fund is self-managed
};

/// Where a cell's value goes: a text, a number, a telephone number (split into area code and number), or nowhere.
using TTextTarget = std::string& (*)(TPayRunRow&);
using TCompactTextTarget = TBeamText& (*)(TPayRunRow&);
using TNumberTarget = double& (*)(TPayRunRow&);
using TPhoneTarget = TBeamPhoneNumber& (*)(TPayRunRow&);
using TTarget = std::variant<std::monostate, TTextTarget, TCompactTextTarget, TNumberTarget, TPhoneTarget>;

struct TColumn {
  std::size_t Number;  ///< from 1
  const char* Header;  ///< name in the third row
  TForm Form;
  std::size_t MaxLength;  ///< in characters; 0 is any
  TRequired Required;
  TColumnOwner Owner;
  TTarget Target;
  const char* NotSent = nullptr;  ///< why the service's JSON has no place for it; null when it has
};

inline constexpr std::size_t ColumnCount = 133;
extern const std::array<TColumn, ColumnCount> Columns;

/// The columns that the reader asks for by name.
enum TColumnNumber : std::size_t {
  colLineId = 1,
  colSourceEntity = 2,
  colSenderABN = 6,
  colPayerABN = 13,
  colPaymentMethod = 22,
  colTransactionDate = 23,
  colPaymentAmount = 26,
  colFundABN = 18,
  colFundUSI = 19,
  colFundServiceAddress = 21,
  colFundBSB = 27,
  colFundAccountName = 29,
  colEmployerABN = 30,
  colLocation = 31,
  colCountry = 50,
  colEmploymentEndDate = 56,
  colEmploymentEndReason = 57,
  colPayPeriodEnd = 59,
  colServiceFraction = 94,
  colServiceFractionDate = 95,
  colEmployeeLocation = 99,
  colRegisteredServiceFraction = 100,
  colAnnualSalary1 = 109,
  colRegisteredEmployeeLocation = 131
};

/// Pairs of a start and an end that must not be in the wrong order.
struct TDatePair {
  std::size_t Start;
  std::size_t End;
};
extern const std::array<TDatePair, 14> DatePairs;

/// "A" of 1, "EC" of 133.
std::string ColumnLetters(std::size_t Number);

}  // namespace oxSuperAPI
