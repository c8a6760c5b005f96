#include "crypto.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <array>
#include <memory>
#include <stdexcept>

namespace sandbox {
namespace {

std::string RandomBytes(std::size_t count) {
  std::string bytes(count, '\0');
  if (RAND_bytes(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<int>(count)) != 1)
    throw std::runtime_error("The system gave no random bytes");
  return bytes;
}

std::string RandomFrom(std::string_view alphabet, std::size_t length) {
  std::string text = RandomBytes(length);
  for (char& c : text) c = alphabet[static_cast<unsigned char>(c) % alphabet.size()];
  return text;
}

std::string Hex(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text;
}

class Sha256 {
 public:
  Sha256() { Check(EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr)); }

  void Add(std::string_view text) { Check(EVP_DigestUpdate(context_.get(), text.data(), text.size())); }

  std::string Result() {
    std::array<unsigned char, EVP_MAX_MD_SIZE> bytes;
    unsigned size = 0;
    Check(EVP_DigestFinal_ex(context_.get(), bytes.data(), &size));
    return Hex({reinterpret_cast<const char*>(bytes.data()), size});
  }

 private:
  static void Check(int result) {
    if (result != 1) throw std::runtime_error("SHA-256 failed");
  }
  std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context_{EVP_MD_CTX_new(), &EVP_MD_CTX_free};
};

}  // namespace

std::string RandomText(std::size_t length) {
  return RandomFrom("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789", length);
}

std::string RandomDigits(std::size_t length) {
  return RandomFrom("123456789", 1) + RandomFrom("0123456789", length - 1);
}

std::string RandomGuid() {
  std::string bytes = RandomBytes(16);
  bytes[6] = static_cast<char>((bytes[6] & 0x0F) | 0x40);  // version 4
  bytes[8] = static_cast<char>((bytes[8] & 0x3F) | 0x80);  // variant 1
  const std::string hex = Hex(bytes);
  return hex.substr(0, 8) + "-" + hex.substr(8, 4) + "-" + hex.substr(12, 4) + "-" + hex.substr(16, 4) + "-" +
         hex.substr(20);
}

std::string Digest(std::string_view text) {
  Sha256 sha;
  sha.Add(text);
  return sha.Result();
}

std::string Digest(const json::value& document) {
  Sha256 sha;
  json::serializer serializer;
  serializer.reset(&document);
  std::array<char, 65536> piece;
  while (!serializer.done()) {
    const json::string_view text = serializer.read(piece.data(), piece.size());
    sha.Add({text.data(), text.size()});
  }
  return sha.Result();
}

std::string FromBase64(std::string_view text) {
  std::string bytes(text.size() / 4 * 3 + 3, '\0');
  const int size = EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                                   reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
  if (size < 0) throw std::invalid_argument("not a base64 text");
  std::size_t padding = 0;
  while (padding < 2 && padding < text.size() && text[text.size() - 1 - padding] == '=') ++padding;
  bytes.resize(static_cast<std::size_t>(size) - padding);
  return bytes;
}

}  // namespace sandbox
