#include "oxSuperAPI/reference/key_file.h"

#include <fmt/format.h>
#include <openssl/crypto.h>
#include <openssl/rand.h>

#include <algorithm>
#include <string_view>

#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {

namespace {
constexpr std::string_view What = "key file";
}

TCipherKey TCipherKey::Random() {
  TCipherKey Key;
  if (RAND_priv_bytes(Key.FBytes.data(), Size) != 1)
    throw TBeamError("The machine's source of randomness failed: no key was made");
  return Key;
}

TCipherKey::TCipherKey(TBytes& Bytes) : FBytes(Bytes) {
  OPENSSL_cleanse(Bytes.data(), Bytes.size());
}

TCipherKey::TCipherKey(TCipherKey&& Other) noexcept : TCipherKey(Other.FBytes) {}

TCipherKey::~TCipherKey() {
  OPENSSL_cleanse(FBytes.data(), FBytes.size());
}

void CreateKeyFile(const std::string& Path) {
  const TCipherKey Key = TCipherKey::Random();
  CreatePrivateFile(Path, What, {reinterpret_cast<const char*>(Key.Bytes().data()), TCipherKey::Size});
}

TCipherKey ReadKeyFile(const std::string& Path) {
  std::string Content = ReadPrivateFile(Path, What, 4096);
  TCipherKey::TBytes Bytes{};
  const bool RightLength = Content.size() == Bytes.size();
  if (RightLength) std::copy(Content.begin(), Content.end(), Bytes.begin());
  OPENSSL_cleanse(Content.data(), Content.size());
  if (!RightLength)
    throw TBeamError(fmt::format("The key file {} holds {} bytes instead of {}: restore it from its backup", Path,
                                 Content.size(), Bytes.size()));
  return TCipherKey(Bytes);
}

}  // namespace oxSuperAPI
