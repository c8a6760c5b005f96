#include "fund_register.h"

#include <cctype>
#include <string_view>
#include <vector>

namespace sandbox {
namespace {

constexpr std::string_view kHouses[] = {"Zindaro",    "Quellmoor",  "Tarvinook", "Brimbledale", "Ostrellan",
                                        "Fennimarsh", "Gollumbra",  "Hesperwyn", "Jindravale",  "Kellanooka",
                                        "Lorrimond",  "Mundarrick", "Nettlewyn"};
constexpr std::string_view kProducts[] = {"Accumulation Super",      "Balanced Super", "Growth Super",
                                          "Conservative Super",      "Indexed Super",  "Defined Benefit Plan",
                                          "Employer Division Super", "Personal Super"};

/// The ABN whose last nine digits are these: the two in front make the check right.
std::string AbnOf(const std::string& nineDigits) {
  constexpr int kWeights[] = {3, 5, 7, 9, 11, 13, 15, 17, 19};
  int sum = 0;
  for (std::size_t i = 0; i < 9; ++i) sum += (nineDigits[i] - '0') * kWeights[i];
  return std::to_string(10 + 89 - sum % 89) + nineDigits;
}

/// Both usual forms occur: the ABN and three digits, or "ZIN0102AU".
std::string UsiOf(std::string_view house, const std::string& abn, std::size_t number) {
  const std::string digits = std::to_string(1000 + number).substr(1);
  if (number % 2 == 0) return abn + digits;
  std::string usi;
  for (const char c : house.substr(0, 3)) usi += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return usi + "0" + digits + "AU";
}

std::vector<Fund> MakeRegister() {
  std::vector<Fund> funds;
  std::size_t houses = 0;
  for (const std::string_view house : kHouses) {
    const std::string abn = AbnOf(std::to_string(999000137 + 7919 * houses++));
    std::size_t products = 0;
    for (const std::string_view product : kProducts)
      funds.push_back({UsiOf(house, abn, ++products), abn, std::string(house) + " " + std::string(product)});
  }
  return funds;
}

}  // namespace

std::span<const Fund> FundRegister() {
  static const std::vector<Fund> funds = MakeRegister();
  return funds;
}

}  // namespace sandbox
