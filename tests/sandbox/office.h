#pragma once

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "sandbox_process.h"

namespace sandbox_test {

inline constexpr const char* kAppClient = "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f601";
inline constexpr const char* kAdminClient = "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f611";
inline constexpr const char* kAppSecret = "sandbox-application-secret-0001";
inline constexpr const char* kAdminSecret = "sandbox-administrator-secret-01";

inline Reply AskToken(Client& client, const std::string& id, const std::string& secret) {
  client.token.clear();
  return client.Send("POST", "/auth/token",
                     "client_id=" + id + "&client_secret=" + secret + "&grant_type=client_credentials",
                     "application/x-www-form-urlencoded");
}

/// The token of a client; the client sends it from now on.
inline std::string SignIn(Client& client, const std::string& id, const std::string& secret) {
  client.token = AskToken(client, id, secret).Text("access_token");
  return client.token;
}

inline Reply Enrol(Client& client, const std::string& command, const std::string& uuid,
                   const std::string& pin = "4711") {
  return client.Send(
      "POST", "/clearing-house/channel-security/" + command + "/" + uuid,
      R"({"UUID":")" + uuid + R"(","CustomerNumber":"15500","CompanyName":"Acme","PIN":")" + pin + "\"}");
}

/// Activates a customer that is pre-registered, and signs in as it.
inline Reply BecomeCustomer(Client& client, const std::string& uuid = "KEY-15500") {
  SignIn(client, kAppClient, kAppSecret);
  Reply reply = Enrol(client, "activate", uuid);
  SignIn(client, reply.Text("clientId"), reply.Text("clientSecret"));
  return reply;
}

/// A batch as clients write it: one employer, a retail fund and a self-managed one.
json::value SampleBatch(const std::string& messageId = "{00000000-0000-0000-0000-000000000001}");

/// Replaces the value at a JSON pointer; removes the member when `text` is empty.
inline void Change(json::value& batch, const std::string& pointer, const std::string& text) {
  const std::size_t slash = pointer.rfind('/');
  json::value& parent = batch.at_pointer(pointer.substr(0, slash));
  const std::string last = pointer.substr(slash + 1);
  if (text.empty()) {
    parent.as_object().erase(last);
  } else if (parent.is_array()) {
    parent.as_array().at(std::stoul(last)) = json::parse(text);
  } else {
    parent.as_object()[last] = json::parse(text);
  }
}

/// The codes of the findings in an answer.
inline std::set<std::string> Codes(const Reply& reply, const char* severity) {
  std::set<std::string> codes;
  const json::value answer = reply.Json();
  for (const json::value& finding : answer.at("validations").as_array())
    if (finding.at("severity") == severity) codes.insert(json::value_to<std::string>(finding.at("errorCode")));
  return codes;
}

/// The process id of an accepted batch.
inline std::string ProcessId(const Reply& sent) {
  return json::value_to<std::string>(sent.Json().at("identifier").at("processId"));
}

/// Brings a batch into a status, the next one by default.
inline Reply Move(Client& client, const std::string& id, const std::string& status = {}) {
  return client.Control("POST", "batches/" + id, status.empty() ? "" : R"({"status":")" + status + "\"}");
}

inline Reply Post(Client& client, const std::string& command, const json::value& batch) {
  return client.Send("POST", "/clearing-house/" + command, json::serialize(batch));
}

/// A sandbox whose batches move only when told, with one activated customer.
class Office : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(BecomeCustomer(client).status, 200); }

  json::value Requests() { return client.Control("GET", "requests").Json(); }
  std::size_t Booked() { return client.Control("GET", "batches").Json().at("batches").as_array().size(); }

  Sandbox sandbox{{"--time-step", "0", "--pre-register-all"}};
  Client client{sandbox};
};

}  // namespace sandbox_test
