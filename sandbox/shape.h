#pragma once

#include <span>

#include "findings.h"

namespace sandbox {

/// What a member of a document holds. An amount is a text with two decimals, a contribution an amount that is paid.
enum class Kind { text, date, amount, contribution, flag, object, list };

/// One line of the table of a document.
struct Member {
  std::string_view key;
  Kind kind = Kind::text;
  std::span<const Member> inside = {};  ///< of an object, or of each element of a list
};

/// Checks the form of a document against its table. Unknown members are warnings. `context` names the whole document.
void CheckShape(const json::value& document, std::span<const Member> members, std::string_view context,
                Findings& findings);

}  // namespace sandbox
