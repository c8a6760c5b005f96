#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "oxSuperAPI/reference/known_secrets.h"
#include "oxSuperAPI/reference/log_masking.h"
#include "oxSuperAPI/reference/log_secrecy.h"

namespace oxSuperAPI {

/// What the readers of JSON and of other text share while they mask the texts of one row.
class TMaskContext {
 public:
  TMaskContext(TLogMasking Masking, std::shared_ptr<TKnownSecrets> Known)
      : FMasking(Masking), FKnown(Known ? std::move(Known) : std::make_shared<TKnownSecrets>()) {}

  TLogMasking Masking() const { return FMasking; }
  const TKnownSecrets& Known() const { return *FKnown; }
  bool HidesPersonal() const { return FMasking == TLogMasking::Private; }
  bool Hides(TSecrecy Secrecy) const {
    return Secrecy >= (HidesPersonal() ? TSecrecy::Personal : TSecrecy::Secret) && FMasking != TLogMasking::Off;
  }

  /// A value was hidden because of its key: it is to be known again.
  void Remember(TSecrecy Secrecy, std::string_view Value);
  /// Was this word hidden before?
  bool IsKnown(std::string_view Word) const;

 private:
  static constexpr int MostLearned = 64;  ///< of one row: an answer full of tokens must not drive the others out
  TLogMasking FMasking;
  std::shared_ptr<TKnownSecrets> FKnown;
  std::unordered_set<std::uint64_t> FPersonal;
  int FLearned = 0;
};

/// The length from which a word can be a token for what it is: where it is a whole text, such as a value of JSON, and
/// in a sentence. @{
inline constexpr std::size_t TokenAlone = 32;
inline constexpr std::size_t TokenAmongWords = 24;
/// @}

/// JSON in a JSON string in a JSON string ...: deeper ones are hidden as a whole.
inline constexpr int DeepestText = 8;

/// The masked text, or none when nothing in it has to be hidden. @{
std::optional<std::string> MaskAnyText(std::string_view Text, TMaskContext& Context, int Depth = 0);
std::optional<std::string> MaskJSONText(std::string_view Text, TMaskContext& Context, int Depth);
std::optional<std::string> MaskPlainText(std::string_view Text, TMaskContext& Context, int Depth);
/// @}

}  // namespace oxSuperAPI
