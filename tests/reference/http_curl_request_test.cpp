#include <gtest/gtest.h>

#include "oxSuperAPI/reference/http_request.h"

namespace oxSuperAPI::tests {
namespace {

TEST(WireURL, EncodesWhatAURLMayNotHold) {
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
}

TEST(WireURL, RefusesWhatCouldLeadTheRequestElsewhere) {
  const std::string URLs[] = {"",
                              "http://a/",
                              "ftp://a/",
                              "//a/",
                              "https:///a",
                              "https://user:pw@a/",
                              "https://a\\@b/",
                              "https://\xC3\xA4/",
                              "https://a b/",
                              "https://a/#x",
                              "https://a/?x#y",
                              "https://a/x\r\ny",
                              "https://a/x\ty",
                              std::string("https://a/x\0y", 13),
                              "https://a/\x7F",
                              "https://a/../b",
                              "https://a/./b",
                              "https://a/b/..",
                              "https://a/b/.",
                              "https://a/.%2E/b",
                              "https://a/%2e",
                              "https://a/b/%2e%2E?x",
                              "https://a/b%2f..%2Fc",
                              "https://a/b\\..\\c",
                              "https://a/b%5c..",
                              "https://a/..?x"};
  for (const std::string& URL : URLs) EXPECT_THROW(EncodeURL(URL), THTTPError) << URL;
}

TEST(RequestHeaders, AreLinesOfNameAndValue) {
  EXPECT_NO_THROW(CheckHeaders(TStringList({"authorization: Bearer ", "X-a:b", "x-empty:", "x: Zo\xC3\xAB"})));
  const std::string Lines[] = {"",
                               "name",
                               ": value",
                               "na me: x",
                               "name : x",
                               "a;b: x",
                               "x: a\rb",
                               "x: a\nb",
                               "x: a\r\ny: b",
                               std::string("x: a\0b", 6),
                               "x: \x7F",
                               "Content-Length: 5",
                               "transfer-encoding: chunked",
                               "HOST: else.example",
                               "Expect: 100-continue"};
  for (const std::string& Line : Lines) {
    try {
      CheckHeaders(TStringList({"ok: 1", Line}));
      ADD_FAILURE() << Line;
    } catch (const THTTPError& Error) {
      EXPECT_EQ(Error.Fate(), TRequestFate::NotSent);
      EXPECT_EQ(std::string(Error.what()).find("Header line 2"), 0u) << Error.what();
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
