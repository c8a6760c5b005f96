#pragma once

#include <string>
#include <string_view>

#include "json.h"

namespace sandbox {

/// A place in a document: a chain of steps on the stack, turned into text only when something is found there.
struct Path {
  const Path* up = nullptr;
  std::string_view key;
  std::size_t index = kNoIndex;

  static constexpr std::size_t kNoIndex = static_cast<std::size_t>(-1);

  Path operator/(std::string_view member) const { return {this, member}; }

  /// "contributionDetail.employers[0].funds[2]"
  std::string Text() const;
};

enum class Severity { warning, error };

/// What the service objects to. Values of the document are never part of a message: it may be a tax file number.
class Findings {
 public:
  /// `context` says whom it is about: a transaction context id of the sender, or "Member", "Fund" ...
  void Add(Severity severity, std::string_view context, std::string_view errorCode, std::string_view message,
           const Path& path);

  std::size_t Errors() const { return errors_; }

  /// The "validations" of an answer. At most 500 of each severity are listed.
  json::array TakeList() { return std::move(list_); }

 private:
  json::array list_;
  std::size_t errors_ = 0;
  std::size_t warnings_ = 0;
};

}  // namespace sandbox
