#pragma once

#include <span>
#include <string>

namespace sandbox {

/// A fund product that members can be in. All names are invented.
struct Fund {
  std::string usi;
  std::string abn;  ///< of the fund house, which offers several products
  std::string name;
};

/// The register of funds, the same at every start.
std::span<const Fund> FundRegister();

}  // namespace sandbox
