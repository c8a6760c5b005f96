#pragma once

#include "oxSuperAPI/calls/uBeamAPICall.h"

namespace oxSuperAPI {

/// Is the service there, and does it accept the customer's token?
class OXSUPERAPI_EXPORT TBeamHealthCheck : public TBeamAPICall {
 public:
  TBeamHealthCheck();
  void SetRequestHeaders() override { AddAuthorization(FToken); }
  std::string ClassName() const override { return "TBeamHealthCheck"; }
};

}  // namespace oxSuperAPI
