#include "batch_generator.h"

#include <cstdint>
#include <iterator>
#include <string_view>

namespace bench {

namespace {

constexpr std::size_t Funds = 40;

/// A fixed sequence that is the same on every machine (splitmix64).
class TDice {
 public:
  explicit TDice(std::uint64_t Seed) : FState(Seed) {}

  std::uint64_t Below(std::uint64_t Limit) {
    FState += 0x9E3779B97F4A7C15;
    std::uint64_t Mixed = FState;
    Mixed = (Mixed ^ (Mixed >> 30)) * 0xBF58476D1CE4E5B9;
    Mixed = (Mixed ^ (Mixed >> 27)) * 0x94D049BB133111EB;
    return (Mixed ^ (Mixed >> 31)) % Limit;
  }
  bool OneIn(std::uint64_t Count) { return Below(Count) == 0; }
  template <class List>
  std::string One(const List& Choices) {
    return std::string(Choices[Below(std::size(Choices))]);
  }
  std::string Digits(std::size_t Count) {
    std::string Result;
    while (Result.size() < Count) Result += static_cast<char>('0' + Below(10));
    return Result;
  }
  /// Dollars between `From` and `To`, to the cent.
  double Amount(std::uint64_t From, std::uint64_t To) {
    return static_cast<double>(From * 100 + Below((To - From) * 100)) / 100;
  }
  std::string Date(unsigned FromYear, unsigned ToYear) {
    const auto Two = [](std::uint64_t Number) { return (Number < 10 ? "0" : "") + std::to_string(Number); };
    return std::to_string(FromYear + Below(ToYear - FromYear + 1)) + "-" + Two(1 + Below(12)) + "-" +
           Two(1 + Below(28));
  }

 private:
  std::uint64_t FState;
};

constexpr std::string_view FamilyNames[] = {
    "Ashdown", "Brandreth", "Corwell", "Dunmere", "Eastlake",     "Farrow",  "Galbrook", "Hollis", "Inverly",
    "Jarrold", "Kestwick",  "Lorimer", "Merton",  "N\xC3\xB8rby", "O'Darra", "Penhale",  "Quill",  "Rowntree-Vale"};
constexpr std::string_view GivenNames[] = {"Adele", "Bram",  "Cora",  "Dario", "Elif",       "Fern",
                                           "Gus",   "Hanna", "Imran", "Joss",  "Katrin",     "Leo",
                                           "Mina",  "Niall", "Orla",  "Pavel", "Zo\xC3\xAB", "Tam"};
constexpr std::string_view Streets[] = {"Banksia Street", "Creek Road",      "Harbour Esplanade",
                                        "Mill Lane",      "Old Quarry Road", "Station Avenue"};
constexpr std::string_view Suburbs[] = {"Arden Flat", "Bellmere",   "Cobble Creek",
                                        "Dry Plains", "Eagle Rise", "Fernhill"};
constexpr std::string_view States[] = {"ACT", "NSW", "NT", "QLD", "SA", "TAS", "VIC", "WA"};
constexpr std::string_view Titles[] = {"Dr", "Miss", "Mr", "Mrs", "Ms", "Mx"};
constexpr std::string_view Occupations[] = {"Registered nurse", "Bus driver",      "Storeperson (night shift)",
                                            "Electrician",      "Payroll officer", "Early childhood teacher",
                                            "Fitter and turner"};

TPlainMember GenerateMember(std::size_t Number) {
  TDice Dice(Number);
  TPlainMember M;
  M.familyName = Dice.One(FamilyNames);
  M.givenName = Dice.One(GivenNames);
  M.otherGivenName = Dice.OneIn(3) ? Dice.One(GivenNames) : "";
  M.title = Dice.One(Titles);
  M.addressType = "RES";
  M.countryCode = "AU";
  M.line1 = std::to_string(1 + Dice.Below(250)) + " " + Dice.One(Streets);
  M.line2 = Dice.OneIn(10) ? "Unit " + Dice.Digits(2) + " \"The Mews\"" : "";
  M.postCode = Dice.Digits(4);
  M.state = Dice.One(States);
  M.suburb = Dice.One(Suburbs);
  M.annualSalaryContributionsEndDate = "2025-06-30";
  M.annualSalaryContributionsStartDate = "2024-07-01";
  M.annualSalaryForContributions = Dice.Amount(40'000, 180'000);
  M.annualSalaryForBenefits = M.annualSalaryForContributions;
  M.annualSalaryForInsurance = M.annualSalaryForContributions;
  M.atWork = Dice.OneIn(20) ? "false" : "true";
  M.awardOrProductivityAmount = Dice.Amount(1, 90);
  M.childContributionsAmount = Dice.Amount(1, 30);
  M.dob = Dice.Date(1955, 2006);
  M.email = "member" + std::to_string(Number) + "@" + (Dice.OneIn(2) ? "mail" : "post") + ".example";
  M.employerProvidedTaxFileNumber = Dice.Digits(9);
  M.employmentStartDate = Dice.Date(1995, 2024);
  M.fundRegistrationDate = M.employmentStartDate;
  M.gender = Dice.OneIn(2) ? "1" : "2";
  M.insuranceOptOut = Dice.OneIn(5) ? "true" : "false";
  M.memberNumber = Dice.Digits(10);
  M.memberTransactionContextId = "ctx-" + Dice.Digits(12) + "-" + Dice.Digits(12);
  M.occupationDescription = Dice.One(Occupations);
  M.otherThirdPartyContributionsAmount = Dice.Amount(1, 100);
  M.payPeriodEndDate = "2025-03-14";
  M.payPeriodStartDate = "2025-03-01";
  M.payrollNumber = "P" + std::to_string(100'000 + Number);
  M.personalContributionsAmount = Dice.Amount(5, 400);
  M.phoneNumbers.push_back({"04", Dice.Digits(8), "MOBILE"});
  if (Dice.OneIn(4)) M.phoneNumbers.push_back({"0" + Dice.Digits(1), Dice.Digits(8), "LANDLINE"});
  M.salarySacrificedAmount = Dice.Amount(10, 900);
  M.spouseContributionsAmount = Dice.Amount(1, 200);
  M.superContributionCommenceDate = M.employmentStartDate;
  M.superGuaranteeAmount = Dice.Amount(150, 900);
  M.voluntaryAmount = Dice.Amount(1, 300);
  M.weeklyHoursWorked = Dice.Amount(8, 40);
  return M;
}

}  // namespace

TPlainBatch GenerateBatch(std::size_t Members) {
  TPlainBatch Batch;
  Batch.employerTransactionContextId = "pay-run-2025-03-14";
  Batch.clientParticipantNumber = "100200";
  Batch.paymentType = "DIRECT_DEBIT";
  Batch.messageId = "{6F9619FF-8B86-4011-B42D-00CF4FC964FF}";
  Batch.time = "2025-03-15T01:02:03Z";
  Batch.version = "1.0";
  for (std::size_t Number = 0; Number < Funds; ++Number) {
    TDice Dice(~Number);
    TPlainFund& Fund = Batch.funds.emplace_back();
    Fund.fundEmployerNumber = "E" + Dice.Digits(7);
    Fund.abn = Dice.Digits(11);
    Fund.usi = Fund.abn + Dice.Digits(3);
    Fund.isDefaultFund = Number == 0;
    Fund.members.reserve(Members / Funds + 1);
  }
  for (std::size_t Number = 0; Number < Members; ++Number)
    Batch.funds[Number % Funds].members.push_back(GenerateMember(Number));
  return Batch;
}

std::unique_ptr<oxSuperAPI::TBeamContributionDetail> ToRecords(const TPlainBatch& Plain) {
  using namespace oxSuperAPI;
  auto Batch = std::make_unique<TBeamContributionDetail>();
  auto Employer = std::make_shared<TBeamContributionEmployer>();
  Employer->employerTransactionContextId = Plain.employerTransactionContextId;
  for (const TPlainFund& PlainFund : Plain.funds) {
    auto Fund = std::make_shared<TBeamContributionFund>();
    Fund->fundEmployerNumber = PlainFund.fundEmployerNumber;
    Fund->ABN = PlainFund.abn;
    Fund->USI = PlainFund.usi;
    Fund->isDefaultFund = PlainFund.isDefaultFund;
    for (const TPlainMember& P : PlainFund.members) {
      auto M = std::make_shared<TBeamMemberContribution>();
      M->address.addressType = P.addressType;
      M->address.countryCode = P.countryCode;
      M->address.line1 = P.line1;
      M->address.line2 = P.line2;
      M->address.postCode = P.postCode;
      M->address.state = P.state;
      M->address.suburb = P.suburb;
      M->annualSalaryContributionsEndDate = P.annualSalaryContributionsEndDate;
      M->annualSalaryContributionsStartDate = P.annualSalaryContributionsStartDate;
      M->annualSalaryForBenefits = P.annualSalaryForBenefits;
      M->annualSalaryForContributions = P.annualSalaryForContributions;
      M->annualSalaryForInsurance = P.annualSalaryForInsurance;
      M->atWork = P.atWork;
      M->awardOrProductivityAmount = P.awardOrProductivityAmount;
      M->childContributionsAmount = P.childContributionsAmount;
      M->dob = P.dob;
      M->email = P.email;
      M->employerProvidedTaxFileNumber = P.employerProvidedTaxFileNumber;
      M->employmentStartDate = P.employmentStartDate;
      M->fundRegistrationDate = P.fundRegistrationDate;
      M->gender = P.gender;
      M->insuranceOptOut = P.insuranceOptOut;
      M->memberNumber = P.memberNumber;
      M->memberTransactionContextId = P.memberTransactionContextId;
      M->name.familyName = P.familyName;
      M->name.givenName = P.givenName;
      M->name.otherGivenName = P.otherGivenName;
      M->name.title = P.title;
      M->occupationDescription = P.occupationDescription;
      M->otherThirdPartyContributionsAmount = P.otherThirdPartyContributionsAmount;
      M->payPeriodEndDate = P.payPeriodEndDate;
      M->payPeriodStartDate = P.payPeriodStartDate;
      M->payrollNumber = P.payrollNumber;
      M->personalContributionsAmount = P.personalContributionsAmount;
      for (std::size_t Index = 0; Index < P.phoneNumbers.size(); ++Index) {
        M->phoneNumbers[Index].areaCode = P.phoneNumbers[Index].areaCode;
        M->phoneNumbers[Index].number = P.phoneNumbers[Index].number;
        M->phoneNumbers[Index].phoneNumberType = P.phoneNumbers[Index].phoneNumberType;
      }
      M->salarySacrificedAmount = P.salarySacrificedAmount;
      M->spouseContributionsAmount = P.spouseContributionsAmount;
      M->superContributionCommenceDate = P.superContributionCommenceDate;
      M->superGuaranteeAmount = P.superGuaranteeAmount;
      M->voluntaryAmount = P.voluntaryAmount;
      M->weeklyHoursWorked = P.weeklyHoursWorked;
      Fund->AddMemberContribution(std::move(M));
    }
    Employer->AddContributionFund(std::move(Fund));
  }
  Batch->AddContributionEmployer(std::move(Employer));
  Batch->participant.clientParticipantNumber = Plain.clientParticipantNumber;
  Batch->payment.paymentType = Plain.paymentType;
  Batch->identifier.messageId = Plain.messageId;
  Batch->identifier.time = Plain.time;
  Batch->version = Plain.version;
  return Batch;
}

}  // namespace bench
