#pragma once

#include <memory>
#include <string_view>

#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

/// The JSON reader on RapidJSON. Keeps no state, so one object serves any number of threads. UTF-8 only.
class OXSUPERAPI_EXPORT TJSONRapidJson final : public TJSONParser {
 public:
  std::unique_ptr<TJSONValue> Parse(std::string_view Text) override;
};

}  // namespace oxSuperAPI
