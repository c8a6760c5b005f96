#pragma once

#include <fmt/format.h>
#include <toml++/toml.h>

#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

// For the adapters that read TOML; not for hosts.

/// Parses a private file. Raises TBeamError with file and line when it is not TOML.
toml::table ReadTOMLFile(const std::string& FileName, std::string_view What);

/// Raises TBeamError "file:line: text". `Text` must not hold a value of the file: it may be a secret.
template <class Node>
[[noreturn]] void FailAt(const std::string& FileName, const Node& Where, std::string_view Text) {
  throw TBeamError(fmt::format("{}:{}: {}", FileName, Where.source().begin.line, Text));
}

/// What a value is, in words: "a string".
std::string_view KindOf(const toml::node& Node);

/// A text as TOML writes it.
std::string QuotedTOML(std::string_view Text);

}  // namespace oxSuperAPI
