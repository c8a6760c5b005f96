#include "oxSuperAPI/reference/http_request.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {
namespace {

using namespace std::string_literals;

TEST(WireURL, EncodesWhatAURLMayNotHoldAndRefusesWhatCouldLeadTheRequestElsewhere) {
  const struct {
    const char *URL, *Wire;
  } Cases[] = {
      {"https://api.example", "https://api.example"},
      {"HTTPS://api.example:8443?count=5&x=[1]", "https://api.example:8443?count=5&x=%5B1%5D"},
      {"https://[::1]:443/a", "https://[::1]:443/a"},
      {"https://a/ \"<>^`{|}\\'", "https://a/%20%22%3C%3E%5E%60%7B%7C%7D%5C'"},
      {"https://a/Zo\xC3\xAB", "https://a/Zo%C3%AB"},
      {"https://a/100%/50%zz%2", "https://a/100%25/50%25zz%252"},
      {"https://a/%41%2f%C3", "https://a/%41%2f%C3"},
      {"https://a/b..c/.d/e./...?x=../y", "https://a/b..c/.d/e./...?x=../y"},
  };
  for (const auto& [URL, Wire] : Cases) EXPECT_EQ(EncodeURL(URL).Text, Wire);
  EXPECT_EQ(EncodeURL("https://api.example:8443/a?b").Host, "api.example:8443");
  // clang-format off
  for (const std::string URL :
       {"", "http://a/", "ftp://a/", "//a/", "https:///a", "https://user:pw@a/", "https://a\\@b/", "https://\xC3\xA4/",
        "https://a b/", "https://a/#x", "https://a/?x#y", "https://a/x\r\ny", "https://a/x\ty", "https://a/\x7F",
        "https://a/../b", "https://a/./b", "https://a/b/..", "https://a/b/.", "https://a/.%2E/b", "https://a/%2e",
        "https://a/b/%2e%2E?x", "https://a/b%2f..%2Fc", "https://a/b\\..\\c", "https://a/b%5c..", "https://a/..?x"})
    EXPECT_THROW(EncodeURL(URL), THTTPError) << URL;
  // clang-format on
  EXPECT_THROW(EncodeURL("https://a/x\0y"s), THTTPError);
}

TEST(RequestHeaders, AreLinesOfNameAndValue) {
  EXPECT_NO_THROW(CheckHeaders(TStringList({"authorization: Bearer ", "X-a:b", "x-empty:", "x: Zo\xC3\xAB"})));
  for (const std::string& Line : {""s, "name"s, ": value"s, "na me: x"s, "name : x"s, "a;b: x"s, "x: a\rb"s, "x: a\nb"s,
                                  "x: a\r\ny: b"s, "x: a\0b"s, "x: \x7F"s, "Content-Length: 5"s,
                                  "transfer-encoding: chunked"s, "HOST: else.example"s, "Expect: 100-continue"s}) {
    try {
      CheckHeaders(TStringList({"ok: 1", Line}));
      ADD_FAILURE() << Line;
    } catch (const THTTPError& Error) {
      EXPECT_EQ(Error.Fate(), TRequestFate::NotSent);
      EXPECT_TRUE(std::string(Error.what()).starts_with("Header line 2")) << Error.what();
    }
  }
}

TEST(RequestBody, IsJSONByItsFirstByte) {
  for (const auto& Lines : {TStringList({"{}"}), TStringList({"", " \r\n\t", " [1"})})
    EXPECT_TRUE(LooksLikeJSON(Lines));
  for (const auto& Lines : {TStringList(), TStringList({""}), TStringList({"a={}"}), TStringList({"\"x\""})})
    EXPECT_FALSE(LooksLikeJSON(Lines));
}

}  // namespace
}  // namespace oxSuperAPI::tests
