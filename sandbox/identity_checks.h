#pragma once

#include "findings.h"

namespace sandbox {

/// Adds findings about one part of a document.
struct Part {
  Findings& findings;
  std::string_view context;
  const Path& path;

  void Error(std::string_view code, std::string_view message, const Path& place) const {
    findings.Add(Severity::error, context, code, message, place);
  }
  void Error(std::string_view code, std::string_view message) const { Error(code, message, path); }
  void Warning(std::string_view code, std::string_view message, const Path& place) const {
    findings.Add(Severity::warning, context, code, message, place);
  }
};

/// The business identifier of `owner`, where it has one: {"businessIdentifierType","value"}; the key of the type
/// differs for the payer of a batch.
void CheckIdentifier(const Part& part, const json::value* owner, std::string_view typeKey);

/// A bank account that money can go to.
void CheckAccount(const Part& part, const json::value* account, const Path& path);

}  // namespace sandbox
