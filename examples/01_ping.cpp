// 01: is the service there, and does it accept the customer? On the fake host, which answers in place of the service.
#include <iostream>

#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"
#include "oxSuperAPI/testing/uFakeHost.h"

int main() {
  using namespace oxSuperAPI;
  TFakeHost Host;
  Host.AddActivatedCustomer();
  Host.FakeHTTP.AnswerURL("/auth/token", 200, R"({"access_token":"abc","expires_in":"3599"})");
  Host.FakeHTTP.AnswerURL("/healthcheck/ping", 200, R"({"status":"UP","message":"pong"})");

  std::string Message, Error, Status;
  const bool Reached = GetHealthCheck("example 01", Message, Error, Status);
  std::cout << (Reached ? "reached: " : "not reached: ") << Status << ", " << Message << '\n';

  TBeamSuperGlobal::Finalize();
  return Reached ? 0 : 1;
}
