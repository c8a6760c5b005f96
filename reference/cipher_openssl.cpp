#include "oxSuperAPI/reference/cipher_openssl.h"

#include <openssl/crypto.h>
#include <openssl/err.h>
#include <openssl/evp.h>

#include <charconv>
#include <limits>

namespace oxSuperAPI {

namespace {

constexpr std::size_t TagSize = 16;

// Stored: texts enciphered with other values can no longer be read. They keep the two uses apart, so that a column's
// value cannot be passed off as a client secret.
constexpr std::string_view ColumnPurpose = "oxSuperAPI column 1";
constexpr std::string_view SecretPurpose = "oxSuperAPI client secret 1";

TByteSpan Bytes(std::string_view Text) {
  return {reinterpret_cast<const std::uint8_t*>(Text.data()), Text.size()};
}

struct TContextFree {
  void operator()(EVP_CIPHER_CTX* Context) const { EVP_CIPHER_CTX_free(Context); }
  void operator()(EVP_CIPHER* Cipher) const { EVP_CIPHER_free(Cipher); }
};
using TContext = std::unique_ptr<EVP_CIPHER_CTX, TContextFree>;

// Both leave OpenSSL's error queue empty: the TLS connections of this thread would take its entries for their own.
[[noreturn]] void FailInside() {
  ERR_clear_error();
  throw TBeamError("The cipher AES-SIV does not work on this machine: check the installation of OpenSSL");
}
[[noreturn]] void Refuse() {
  ERR_clear_error();
  throw TCipherError(
      "A text could not be deciphered: it was changed, or enciphered under another key or for another use");
}

int Length(TByteSpan Data) {
  if (Data.size() > std::numeric_limits<int>::max() - TagSize) throw TBeamError("A text is too long to be enciphered");
  return static_cast<int>(Data.size());
}

// A context for one operation, with key and associated text, and the tag when it is to be checked.
TContext Start(bool Seal, TByteSpan Key, TByteSpan Associated, const std::uint8_t* Tag) {
  const char* Name = Key.size() == 64   ? "AES-256-SIV"
                     : Key.size() == 48 ? "AES-192-SIV"
                     : Key.size() == 32 ? "AES-128-SIV"
                                        : nullptr;
  if (!Name) throw TBeamError("A key of the cipher has to be 32, 48 or 64 bytes long");
  const std::unique_ptr<EVP_CIPHER, TContextFree> Cipher(EVP_CIPHER_fetch(nullptr, Name, nullptr));
  TContext Context(EVP_CIPHER_CTX_new());
  if (!Cipher || !Context ||
      EVP_CipherInit_ex2(Context.get(), Cipher.get(), Key.data(), nullptr, Seal ? 1 : 0, nullptr) != 1)
    FailInside();
  if (Tag && EVP_CIPHER_CTX_ctrl(Context.get(), EVP_CTRL_AEAD_SET_TAG, TagSize, const_cast<std::uint8_t*>(Tag)) != 1)
    FailInside();
  // A null pointer would mean the end of the text, also when it goes with the length 0.
  const std::uint8_t Nothing = 0;
  const std::uint8_t* const Data = Associated.empty() ? &Nothing : Associated.data();
  int Ignored = 0;
  if (EVP_CipherUpdate(Context.get(), nullptr, &Ignored, Data, Length(Associated)) != 1) FailInside();
  return Context;
}

std::string Base64(TByteSpan Data) {
  std::string Text(4 * ((Data.size() + 2) / 3) + 1, '\0');  // the encoder ends its text with a NUL
  EVP_EncodeBlock(reinterpret_cast<unsigned char*>(Text.data()), Data.data(), Length(Data));
  Text.pop_back();
  return Text;
}

std::vector<std::uint8_t> FromBase64(const std::string& Text) {
  std::vector<std::uint8_t> Data(Text.size() / 4 * 3);
  const int Decoded =
      Text.empty() || Text.size() % 4 != 0
          ? -1
          : EVP_DecodeBlock(Data.data(), reinterpret_cast<const unsigned char*>(Text.data()), Length(Bytes(Text)));
  if (Decoded < 0 || static_cast<std::size_t>(Decoded) > Data.size()) Refuse();
  const std::size_t Padding = Text.ends_with("==") ? 2 : Text.ends_with("=") ? 1 : 0;
  Data.resize(static_cast<std::size_t>(Decoded) - Padding);
  // The decoder is lenient about blanks and unused bits; only the one text that the encoder gives is accepted.
  if (Base64(Data) != Text) Refuse();
  return Data;
}

std::string Numbers(TByteSpan Data) {
  std::string Text;
  for (const std::uint8_t Byte : Data) {
    if (!Text.empty()) Text += ' ';
    Text += std::to_string(Byte);
  }
  return Text;
}

std::vector<std::uint8_t> FromNumbers(std::string_view Text) {
  if (Text.ends_with(' ')) Text.remove_suffix(1);
  std::vector<std::uint8_t> Data;
  const char* const End = Text.data() + Text.size();
  for (const char* Next = Text.data(); Next < End; ++Next) {
    std::uint8_t Byte = 0;
    const auto [Stop, Error] = std::from_chars(Next, End, Byte);
    if (Error != std::errc{}) Refuse();
    Data.push_back(Byte);
    Next = Stop;
  }
  if (Numbers(Data) != Text) Refuse();
  return Data;
}

}  // namespace

std::vector<std::uint8_t> SealSIV(TByteSpan Key, TByteSpan Associated, TByteSpan Plain) {
  if (Plain.empty()) throw TBeamError("The cipher cannot seal an empty text");
  const TContext Context = Start(true, Key, Associated, nullptr);
  std::vector<std::uint8_t> Sealed(TagSize + Plain.size());
  int Written = 0;
  if (EVP_CipherUpdate(Context.get(), Sealed.data() + TagSize, &Written, Plain.data(), Length(Plain)) != 1 ||
      static_cast<std::size_t>(Written) != Plain.size() ||
      EVP_CipherFinal_ex(Context.get(), Sealed.data() + TagSize + Plain.size(), &Written) != 1 ||
      EVP_CIPHER_CTX_ctrl(Context.get(), EVP_CTRL_AEAD_GET_TAG, TagSize, Sealed.data()) != 1)
    FailInside();
  return Sealed;
}

std::string OpenSIV(TByteSpan Key, TByteSpan Associated, TByteSpan Sealed) {
  if (Sealed.size() <= TagSize) Refuse();
  const TByteSpan Body = Sealed.subspan(TagSize);
  const TContext Context = Start(false, Key, Associated, Sealed.data());
  std::string Plain(Body.size(), '\0');
  auto* const Out = reinterpret_cast<unsigned char*>(Plain.data());
  int Written = 0;
  // The mode deciphers first and checks afterwards, so what a refused text gave is overwritten.
  if (EVP_CipherUpdate(Context.get(), Out, &Written, Body.data(), Length(Body)) != 1 ||
      static_cast<std::size_t>(Written) != Plain.size() ||
      EVP_CipherFinal_ex(Context.get(), Out + Plain.size(), &Written) != 1) {
    OPENSSL_cleanse(Plain.data(), Plain.size());
    Refuse();
  }
  return Plain;
}

std::string TOpenSSLCipher::DefEncrypt(const std::string& Text) {
  return Text.empty() ? std::string() : Base64(SealSIV(FKey.Bytes(), Bytes(ColumnPurpose), Bytes(Text)));
}

std::string TOpenSSLCipher::DefDecrypt(const std::string& Text) {
  return Text.empty() ? std::string() : OpenSIV(FKey.Bytes(), Bytes(ColumnPurpose), FromBase64(Text));
}

std::string TOpenSSLCipher::Scramble(const std::string& Secret) {
  return Secret.empty() ? std::string() : Numbers(SealSIV(FKey.Bytes(), Bytes(SecretPurpose), Bytes(Secret)));
}

std::string TOpenSSLCipher::DecodeDecrypt(const std::string& Scrambled) {
  return Scrambled.empty() ? std::string() : OpenSIV(FKey.Bytes(), Bytes(SecretPurpose), FromNumbers(Scrambled));
}

}  // namespace oxSuperAPI
