#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "oxSuperAPI/model/uBeamSuperObjects.h"
#include "payrun/findings.h"

namespace oxSuperAPI {

/// How the second part of an employer's identity, its LOCATION ID, is used: the data standard has no place for it.
enum class TLocationUse : std::uint8_t {
  NotSent,
  Context,  ///< sent as the employer's transaction context id
  Split     ///< likewise, and each location is an employer of its own in the batch
};

/// What the pay-run file has no column for, and choices that the file format leaves open.
struct TPayRunOptions {
  bool SplitByPayment = false;  ///< one batch for each payer and payment method
  TLocationUse Location = TLocationUse::NotSent;
  std::string PaymentMethod;  ///< the service's name; takes the place of the file's when not empty
  std::string ClientParticipantNumber;
  std::string Version;
  std::string BusinessNumberType = "ABN";  ///< the service's names for the two kinds of business numbers
  std::string PayerNumberType = "WPN";
  std::string LandlineType;
  std::string MobileType;
  std::vector<std::string> DefaultFunds;       ///< USI, or ABN, of the employer's default funds
  std::map<std::string, std::string> Genders;  ///< from sex codes to the service's words; others are sent as they stand
  bool UpperCaseCountry = false;
};

/// A batch, and the rows it was made of.
struct TPayRunBatch {
  std::unique_ptr<TBeamContributionDetail> Detail;
  std::vector<std::size_t> Lines;  ///< of the file, in file order
  std::int64_t Cents = 0;          ///< all contributions
};

/// A pay-run file as it was understood. With errors among the findings the batches are incomplete: for display only.
struct TPayRun {
  std::string FileId;
  bool NegativesSupported = false;
  std::vector<TPayRunBatch> Batches;
  std::vector<TFinding> Findings;
  std::vector<TNotSent> NotSent;
};

/// Reads a pay-run file in SAFF 1.0. Whatever is wrong inside the file is a finding; only a text that is no CSV at all
/// raises TBeamError.
TPayRun ReadPayRun(std::string Text, const TPayRunOptions& Options = {});

}  // namespace oxSuperAPI
