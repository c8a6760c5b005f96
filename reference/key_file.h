#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// The 512-bit key of the cipher. Overwritten when it is destroyed or moved from; it cannot be copied by accident.
class OXSUPERAPI_EXPORT TCipherKey {
 public:
  /// In bytes: two AES-256 keys, one for the vector and one for the text. @{
  static constexpr std::size_t Size = 64;
  using TBytes = std::array<std::uint8_t, Size>;
  /// @}

  /// A key from the machine's source of randomness. Raises TBeamError when that fails.
  static TCipherKey Random();
  /// Takes the key over and overwrites `Bytes`.
  explicit TCipherKey(TBytes& Bytes);
  /// Moving overwrites the source, the end overwrites the key. @{
  TCipherKey(TCipherKey&& Other) noexcept;
  TCipherKey& operator=(TCipherKey&&) = delete;
  ~TCipherKey();
  /// @}

  /// Borrowed; every copy is the caller's to overwrite.
  const TBytes& Bytes() const { return FBytes; }

 private:
  TCipherKey() = default;
  TBytes FBytes{};
};

/// Writes a new random key to a new file that only the owner may read. Raises TBeamError when the file exists: a key
/// that is lost takes everything enciphered under it along.
OXSUPERAPI_EXPORT void CreateKeyFile(const std::string& Path);

/// Raises TBeamError, saying what to do, when the file is missing, is not exactly one key long, is a link, belongs to
/// another user or is open to others.
OXSUPERAPI_EXPORT TCipherKey ReadKeyFile(const std::string& Path);

}  // namespace oxSuperAPI
