#include "shape.h"

#include <algorithm>

#include "identifiers.h"

namespace sandbox {
namespace {

using enum Kind;

/// One walk over a document.
struct Walk {
  Findings& findings;

  void Object(const json::object& value, std::span<const Member> members, std::string_view context, const Path& path) {
    for (const auto& pair : value) {
      const std::string_view key(pair.key().data(), pair.key().size());
      const auto member = std::ranges::find(members, key, &Member::key);
      const Path place = path / key;
      if (member != members.end()) {
        Value(pair.value(), *member, context, place);
      } else {
        findings.Add(Severity::warning, context, "MEMBER_UNKNOWN", "The service does not know this member", place);
      }
    }
  }

  void Value(const json::value& value, const Member& member, std::string_view context, const Path& path) {
    const auto error = [&](std::string_view code, std::string_view message) {
      findings.Add(Severity::error, context, code, message, path);
    };
    if (value.is_number()) return error("NUMBER_NOT_TEXT", "Numbers travel as text");
    switch (member.kind) {
      case text:
        if (!value.is_string()) error("TEXT_EXPECTED", "This member is a text");
        break;
      case date:
        if (!value.is_string() || !IsDate(View(value.get_string())))
          error("DATE_INVALID", "This member is a date that exists, written yyyy-mm-dd");
        break;
      case amount:
      case contribution:
        if (!value.is_string() || !Cents(View(value.get_string())))
          error("AMOUNT_INVALID", "This member is a text with exactly two decimals");
        break;
      case flag:
        if (!value.is_bool()) error("FLAG_EXPECTED", "This member is true or false");
        break;
      case object:
        if (!value.is_object()) return error("OBJECT_EXPECTED", "This member is an object");
        Object(value.get_object(), member.inside, context, path);
        break;
      case list:
        if (!value.is_array()) return error("LIST_EXPECTED", "This member is an array");
        List(value.get_array(), member, context, path);
        break;
    }
  }

  void List(const json::array& elements, const Member& member, std::string_view context, const Path& path) {
    for (std::size_t i = 0; i < elements.size(); ++i) {
      const Path place{path.up, path.key, i};
      if (elements[i].is_object()) {
        Object(elements[i].get_object(), member.inside, ContextOf(elements[i], member, context), place);
      } else {
        findings.Add(Severity::error, context, "OBJECT_EXPECTED", "Each element is an object", place);
      }
    }
  }

  /// Who a finding inside this element is about.
  static std::string_view ContextOf(const json::value& element, const Member& member, std::string_view outer) {
    const auto own = [&](std::string_view idKey, std::string_view kind) {
      const std::string_view id = TextAt(&element, idKey);
      return id.empty() ? kind : id;
    };
    if (member.key == "members") return own("memberTransactionContextId", "Member");
    if (member.key == "funds") return own("fundTransactionContextId", "Fund");
    if (member.key == "employers") return own("employerTransactionContextId", "Employer");
    return outer;
  }
};

}  // namespace

void CheckShape(const json::value& document, std::span<const Member> members, std::string_view context,
                Findings& findings) {
  const Path root;
  if (document.is_object()) {
    Walk{findings}.Object(document.get_object(), members, context, root);
  } else {
    findings.Add(Severity::error, context, "OBJECT_EXPECTED", "The document is a JSON object", root);
  }
}

}  // namespace sandbox
