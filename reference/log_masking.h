#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/reference/known_secrets.h"

namespace oxSuperAPI {

class TMaskContext;

/// How much of a call the reference host keeps out of its log; docs/log.md lists the keys. Each includes what stands
/// before it.
enum class TLogMasking : std::uint8_t {
  Off,     ///< nothing more than the library itself masks
  Tokens,  ///< what opens a door: tokens, client secrets, PINs, passwords, cookies
  Private  ///< what is about a person: tax file numbers, birth dates, bank accounts, names, addresses, e-mail, phones
};

/// "off", "tokens" or "private".
OXSUPERAPI_EXPORT std::string_view LogMaskingName(TLogMasking Masking);
/// The reverse; raises TBeamError for any other text.
OXSUPERAPI_EXPORT TLogMasking LogMaskingOf(std::string_view Name);

/// What stands in a masked text for what was there.
inline constexpr std::string_view HiddenMark = "(hidden)";

/// Masks the texts of one row of the call log.
///
/// A text that begins as JSON is read as JSON: the value of a key that the masking names becomes "(hidden)", whatever
/// it is; from where it stops being JSON nothing is shown. Any other text is searched for header lines, form fields,
/// query parameters, markup and words that look like tokens. JSON in a JSON string is masked within. What was hidden
/// once is hidden wherever it comes again: credentials in every later text that shares `Known`, personal data in the
/// later texts of the same row. JSON stays JSON, masked text stays as it is, and the time is linear in the length.
class OXSUPERAPI_EXPORT TLogMasker {
 public:
  /// `Known` may be null: then a credential is known to this row only.
  explicit TLogMasker(TLogMasking Masking, std::shared_ptr<TKnownSecrets> Known = nullptr);

  /// What was hidden so far goes along. @{
  TLogMasker(TLogMasker&&) noexcept;
  TLogMasker& operator=(TLogMasker&&) noexcept;
  /// @}
  ~TLogMasker();

  /// The text as the log may hold it; the very one, not a copy, when nothing in it has to be hidden.
  std::string Mask(std::string Text);

 private:
  std::unique_ptr<TMaskContext> FContext;
};

}  // namespace oxSuperAPI
