// A host's first program, on the fake host: one ping, seen in the log.
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
  const bool Reached = GetHealthCheck("consumer", Message, Error, Status);
  std::cout << Reached << ' ' << Status << ' ' << Message << ' ' << Host.LogTable().Rows.size() << '\n';
  TBeamSuperGlobal::Finalize();
  return Reached && Status == "UP" && Message == "pong" ? 0 : 1;
}
