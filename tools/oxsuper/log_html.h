#pragma once

#include <string>
#include <vector>

#include "call_log.h"

namespace oxSuperAPI {

/// One page that needs nothing else: no script, no font, no picture. Everything that comes from the log is escaped.
/// The head, with what the page leads to; then each row; then the end. @{
std::string LogPageHead(const std::vector<TLogHead>& Rows, const std::string& Masking);
std::string LogPageRow(const TLogRow& Row);
std::string LogPageEnd();
/// @}

}  // namespace oxSuperAPI
