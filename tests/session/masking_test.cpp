#include "oxSuperAPI/session/uBeamMasking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <vector>

namespace oxSuperAPI {
namespace {

TEST(HideString, StarsWhatFollowsTheKey) {
  const std::tuple<const char*, const char*, const char*> Cases[] = {
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
  for (const auto& [Text, Key, Expected] : Cases) EXPECT_EQ(HideString(Text, Key), Expected) << Text;
}

TEST(HideCredentials, MasksFiveKeysAndNoTokens) {
  const std::pair<const char*, const char*> Cases[] = {
      {"client_id=a&client_secret=bc&grant_type=client_credentials",
       "client_id**&client_secret***&grant_type=client_credentials"},
      {R"({"client_id": "abc", "CLIENTSECRET":"d","UUID":"e-1","ClientID":"f"})",
       R"({"client_id": "***", "CLIENTSECRET":"*","UUID":"***","ClientID":"*"})"},
      {R"({"access_token":"Bearer abc","PIN":"1"})", R"({"access_token":"Bearer abc","PIN":"1"})"},
      // A key inside the value of another one is starred before its turn comes.
      {"clientid=uuid 7", "clientid***** *"},
      {"uuid=clientid=7", "uuid***********"},
  };
  for (const auto& [Text, Expected] : Cases) EXPECT_EQ(HideCredentials(Text), Expected) << Text;
}

/// A text as characters: UTF-16 code units, and 0x10000 and more for a byte that is not part of valid UTF-8. Knows only
/// the characters that the generator below makes.
std::vector<std::uint32_t> Units(std::string_view Rest) {
  static const std::pair<std::string_view, std::vector<std::uint32_t>> Known[] = {
      {"\xC3\xA9", {0xE9}}, {"\xE2\x82\xAC", {0x20AC}}, {"\xF0\x9F\x98\x80", {0xD83D, 0xDE00}}};
  std::vector<std::uint32_t> Result;
  while (!Rest.empty()) {
    const auto Character = std::ranges::find_if(Known, [&](const auto& Each) { return Rest.starts_with(Each.first); });
    if (Character != std::end(Known)) {
      Result.insert(Result.end(), Character->second.begin(), Character->second.end());
    } else {
      const auto Byte = static_cast<unsigned char>(Rest[0]);
      Result.push_back(Byte < 0x80 ? Byte : 0x10000u + Byte);
    }
    Rest.remove_prefix(Character != std::end(Known) ? Character->first.size() : 1);
  }
  return Result;
}

/// The rule word for word, one character at a time.
std::vector<std::uint32_t> HideLiterally(std::vector<std::uint32_t> Result, std::string_view Key) {
  const auto IsOneOf = [](std::uint32_t Unit, std::string_view Set) {
    return Unit < 0x80 && Set.find(static_cast<char>(Unit)) != std::string_view::npos;
  };
  const auto Lower = [](std::uint32_t Unit) { return Unit >= 'A' && Unit <= 'Z' ? Unit + 32 : Unit; };
  std::size_t Position = 0;
  for (bool Changed = true; Changed;) {
    Changed = false;
    const auto Found =
        std::search(Result.begin() + static_cast<std::ptrdiff_t>(Position), Result.end(), Key.begin(), Key.end(),
                    [&](std::uint32_t Unit, char Wanted) { return Lower(Unit) == static_cast<unsigned char>(Wanted); });
    if (Found == Result.end()) break;
    Position = static_cast<std::size_t>(Found - Result.begin()) + Key.size();
    for (; Position < Result.size() && !IsOneOf(Result[Position], "&;,{}"); ++Position) {
      if (!IsOneOf(Result[Position], " \":")) Result[Position] = '*';
      Changed = true;
    }
  }
  return Result;
}

// Millions of texts when MASKING_TEXTS says so: one scan has to give what five passes give, however keys hide keys.
TEST(HideCredentials, EqualsTheRuleWordForWord) {
  std::vector<std::string> Pieces = {"clientid", "client_id", "clientsecret", "client_secret",    "uuid", "UuID",
                                     "ClientId", "client",    "_id",          "secret",           "cl",   "u",
                                     "id",       "\xC3\xA9",  "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xFF", "\xC3"};
  for (const char Mark : std::string_view(",{}&; \":7x*")) Pieces.emplace_back(1, Mark);
  Pieces.push_back("a longer piece without any key, of more than one block of bytes ................");
  const char* const Wanted = std::getenv("MASKING_TEXTS");
  std::mt19937 Random(7);
  for (long Count = Wanted ? std::atol(Wanted) : 50'000; Count > 0; --Count) {
    std::string Text;
    for (auto Left = Random() % 24; Left > 0; --Left) Text += Pieces[Random() % std::size(Pieces)];
    std::vector<std::uint32_t> Expected = Units(Text);
    ASSERT_EQ(Units(HideString(Text, "uuid")), HideLiterally(Expected, "uuid")) << Text;
    for (const char* const Key : {"clientid", "client_id", "clientsecret", "client_secret", "uuid"})
      Expected = HideLiterally(Expected, Key);
    ASSERT_EQ(Units(HideCredentials(Text)), Expected) << Text;
  }
}

}  // namespace
}  // namespace oxSuperAPI
