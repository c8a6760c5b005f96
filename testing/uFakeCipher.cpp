#include "oxSuperAPI/testing/uFakeCipher.h"

#include <string_view>

namespace oxSuperAPI {

namespace {

std::string Wrap(std::string_view Prefix, const std::string& Text) {
  return Text.empty() ? Text : std::string(Prefix) + Text + ")";
}

std::string Unwrap(std::string_view Prefix, const std::string& Text) {
  if (Text.empty()) return Text;
  if (!Text.starts_with(Prefix) || !Text.ends_with(')') || Text.size() < Prefix.size() + 2)
    throw TBeamError("The fake cipher was given a text that is not of its making");
  return Text.substr(Prefix.size(), Text.size() - Prefix.size() - 1);
}

}  // namespace

std::string TFakeCipher::Encipher(const std::string& Text) {
  return Wrap("enc(", Text);
}
std::string TFakeCipher::Scramble(const std::string& Secret) {
  return Wrap("scr(", Secret);
}

std::string TFakeCipher::DefEncrypt(const std::string& Text) {
  Faults.Check("DefEncrypt");
  return Encipher(Text);
}

std::string TFakeCipher::DefDecrypt(const std::string& Text) {
  Faults.Check("DefDecrypt");
  return Unwrap("enc(", Text);
}

std::string TFakeCipher::DecodeDecrypt(const std::string& Scrambled) {
  Faults.Check("DecodeDecrypt");
  return Unwrap("scr(", Scrambled);
}

}  // namespace oxSuperAPI
