#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uHost.h"

/// What the session asks of the host in more than one place.
namespace oxSuperAPI {

/// Runs a select on a connection that may be absent; `Database` ("common", "payroll") names it in the error.
std::unique_ptr<TADOQuery> OpenQuery(TADOConnection* Connection, std::string_view Database,
                                     const TDBStatement& Statement);
void Execute(TADOConnection* Connection, std::string_view Database, const TDBStatement& Statement);

/// The name of the current environment as the credential table stores it.
std::string EncipheredEnvironment();

bool IsUKDomain(std::string_view Domain);
bool IsHostedDomain(std::string_view Domain);

/// AddToLog where a failing host log must not stop what is under way.
void TryAddToLog(const std::string& Text, TLogSeverity Severity) noexcept;

}  // namespace oxSuperAPI
