#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/reference/key_file.h"

namespace oxSuperAPI {

/// Text that was tampered with, was enciphered under another key or for another purpose, or is no enciphered text.
class OXSUPERAPI_EXPORT TCipherError : public TBeamError {
 public:
  using TBeamError::TBeamError;
};

/// The host cipher: AES-SIV (RFC 5297) with a 512-bit key. The same text always gives the same result, so enciphered
/// values can be looked up; a changed one is refused (docs/adr/0004-cipher.md).
class OXSUPERAPI_EXPORT TOpenSSLCipher final : public THostCipher {
 public:
  /// Takes the key over; it is overwritten with the cipher.
  explicit TOpenSSLCipher(TCipherKey Key) : FKey(std::move(Key)) {}

  /// Base64 of the sealed text. "" stays "" both ways: the mode cannot seal an empty text. @{
  std::string DefEncrypt(const std::string& Text) override;
  std::string DefDecrypt(const std::string& Text) override;
  /// @}

  /// A client secret as decimal numbers, one a sealed byte, separated by single blanks: a secret of usual length
  /// (29 to 34 bytes) gives 45 to 50 of them. Not interchangeable with what DefEncrypt gives.
  std::string Scramble(const std::string& Secret);
  /// The secret that `Scramble` was given; one blank at the end is tolerated.
  std::string DecodeDecrypt(const std::string& Scrambled) override;

 private:
  TCipherKey FKey;
};

/// Bytes of the caller's.
using TByteSpan = std::span<const std::uint8_t>;

/// AES-SIV with one associated text: the 16-byte synthetic vector, then the enciphered bytes. A key of 32, 48 or 64
/// bytes chooses AES-128, -192 or -256. Raises TBeamError for another key length and for an empty plain text.
OXSUPERAPI_EXPORT std::vector<std::uint8_t> SealSIV(TByteSpan Key, TByteSpan Associated, TByteSpan Plain);
/// The reverse. Raises TCipherError when `Sealed` is not exactly what `SealSIV` gave for this key and associated text.
OXSUPERAPI_EXPORT std::string OpenSIV(TByteSpan Key, TByteSpan Associated, TByteSpan Sealed);

}  // namespace oxSuperAPI
