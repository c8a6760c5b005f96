#include "oxSuperAPI/calls/uBeamHealthCheck.h"

namespace oxSuperAPI {

TBeamHealthCheck::TBeamHealthCheck() {
  SetBeamCallMethod(bcmGet);
  SetURLChannel("/clearing-house/healthcheck/ping");
}

}  // namespace oxSuperAPI
