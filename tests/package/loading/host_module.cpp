// What a payroll application's plug-in does with the library, from its loading to its end.
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"
#include "oxSuperAPI/testing/uFakeHost.h"

using namespace oxSuperAPI;

extern "C" __attribute__((visibility("default"))) bool RunHost() {
  TFakeHost Host;
  Host.AddActivatedCustomer();
  Host.FakeHTTP.AnswerURL("/auth/token", 200, R"({"access_token":"abc","expires_in":"3599"})");
  Host.FakeHTTP.AnswerURL("/healthcheck/ping", {.Fault = TFault::NonStandard()});
  std::string Message, Error, Status;
  bool Caught = false;
  try {
    GetHealthCheck("module", Message, Error, Status);
  } catch (const TBeamError&) {  // across the library's boundary
    Caught = true;
  }
  TBeamSuperGlobal::Finalize();
  return Caught && Host.LogTable().Rows.size() == 2;
}
