#pragma once

#include <memory>
#include <string>

#include "commands/commands.h"
#include "payrun/payrun.h"
#include "session.h"

namespace oxSuperAPI {

/// The options by which every batch command reads its file.
struct TBatchOptions {
  std::string File;
  bool Split = false;
  bool SplitLocation = false;
  std::string PaymentMethod;
};
void AddBatchOptions(CLI::App& Command, TBatchOptions& Options);

/// A file with one or more batches, read and checked.
struct TBatchFile {
  std::string Name;
  std::string Digest;  ///< of its bytes
  TPayRun Run;
};

/// Reads a pay-run file, or a batch in the service's JSON when the text begins with "{". Raises TToolError when there
/// is no such file.
TBatchFile ReadBatchFile(const TBatchOptions& Options, TSession& Session);

/// Findings and what is not sent: on standard error for people.
void NoteFindings(const TPayRun& Run);
/// Raises TToolError (refused here) when the file has errors.
void NeedCleanFile(const TBatchFile& File, const TToolOptions& Options);
/// The same for machines, into the document of a command.
void AddFindings(TJSONObject& Document, const TPayRun& Run);

/// Employers, funds and totals of a batch.
void PrintBatch(const TBeamContributionDetail& Detail, std::int64_t Cents);
TJSONObject BatchDocument(const TBeamContributionDetail& Detail, std::int64_t Cents);

}  // namespace oxSuperAPI
