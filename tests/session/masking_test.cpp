#include "oxSuperAPI/session/uBeamMasking.h"

#include <gtest/gtest.h>

namespace oxSuperAPI {
namespace {

TEST(HideString, StarsWhatFollowsTheKey) {
  const struct {
    const char *Text, *Key, *Expected;
  } Cases[] = {
      {"", "uuid", ""},
      {R"({"CLIENTId": "a bc","y":"z"})", "clientid", R"({"CLIENTId": "* **","y":"z"})"},
      {R"("clientSecret":"a,b")", "clientsecret", R"("clientSecret":"*,b")"},
      {"uuid=1{uuid=2}uuid=3", "uuid", "uuid**{uuid**}uuid**"},
      {"a bad uuid 12-34, see uuids", "uuid", "a bad uuid *****, see uuid*"},
      {"uuiduuid=1", "uuid", "uuid******"},
      // Nothing before the next delimiter, or the end: the search ends, and what comes later stays visible.
      {"uuid,uuid=1", "uuid", "uuid,uuid=1"},
      {"uuid=1&uuid&uuid=2", "uuid", "uuid**&uuid&uuid=2"},
      // Quotes, colons and blanks that are passed over count as something.
      {R"({"uuid":"","uuid":"1"})", "uuid", R"({"uuid":"","uuid":"*"})"},
      // One star a UTF-16 unit: two for an emoji. A stray byte is one character.
      {"uuid:\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80,", "uuid", "uuid:****,"},
      {"\xC4\xB0uuid=\xFF,", "uuid", "\xC4\xB0uuid**,"},
  };
  for (const auto& Case : Cases) EXPECT_EQ(HideString(Case.Text, Case.Key), Case.Expected) << Case.Text;
}

TEST(HideCredentials, MasksFiveKeysAndNoTokens) {
  const struct {
    const char *Text, *Expected;
  } Cases[] = {
      {"client_id=a&client_secret=bc&grant_type=client_credentials",
       "client_id**&client_secret***&grant_type=client_credentials"},
      {R"({"client_id": "abc", "CLIENTSECRET":"d","UUID":"e-1","ClientID":"f"})",
       R"({"client_id": "***", "CLIENTSECRET":"*","UUID":"***","ClientID":"*"})"},
      {R"({"access_token":"Bearer abc","PIN":"1"})", R"({"access_token":"Bearer abc","PIN":"1"})"},
      // A key inside the value of another one is starred before its turn comes.
      {"clientid=uuid 7", "clientid***** *"},
      {"uuid=clientid=7", "uuid***********"},
  };
  for (const auto& Case : Cases) EXPECT_EQ(HideCredentials(Case.Text), Case.Expected) << Case.Text;
}

}  // namespace
}  // namespace oxSuperAPI
