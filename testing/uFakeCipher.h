#pragma once

#include <string>

#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// A cipher that anyone can read, so that a test sees at once what was enciphered and how often: "abc" becomes
/// "enc(abc)". A text of another form is refused. A scrambled secret has the form "scr(secret)".
class TFakeCipher : public THostCipher {
 public:
  /// Armed by a test; an armed operation raises instead of working.
  TFaults Faults{"DefEncrypt", "DefDecrypt", "DecodeDecrypt"};

  /// What the operations below give, without their faults: for filling tables and comparing. @{
  static std::string Encipher(const std::string& Text);
  static std::string Scramble(const std::string& Secret);
  /// @}

  std::string DefEncrypt(const std::string& Text) override;
  std::string DefDecrypt(const std::string& Text) override;
  std::string DecodeDecrypt(const std::string& Scrambled) override;
};

}  // namespace oxSuperAPI
