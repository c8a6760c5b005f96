#pragma once

#include <memory>
#include <string_view>

#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// A small strict JSON reader, complete enough to serve as a host's own where speed does not matter. A text that is not
/// UTF-8 throughout is refused; a byte order mark in front is skipped.
class TFakeJSONParser : public TJSONParser {
 public:
  /// Armed by a test; an armed operation raises instead of working.
  TFaults Faults{"Parse"};

  std::unique_ptr<TJSONValue> Parse(std::string_view Text) override;
};

}  // namespace oxSuperAPI
