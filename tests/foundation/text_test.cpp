#include "oxSuperAPI/foundation/uBeamText.h"

#include <gtest/gtest.h>

#include "oxSuperAPI/foundation/uBeamEnumerations.h"

namespace oxSuperAPI {
namespace {

constexpr std::string_view Smile = "\xF0\x9F\x98\x80";  // two UTF-16 units

TEST(Text, TrimsCodePointsUpToTheBlankAndChangesTheCaseOfAsciiOnly) {
  EXPECT_EQ(Trim(std::string_view("\0\x01\t\r\n a b \x1f ", 12)), "a b");
  EXPECT_EQ(Trim(" \t"), "");
  EXPECT_EQ(Trim("\xC2\xA0x"), "\xC2\xA0x") << "a no-break space is none";
  EXPECT_EQ(UpperCase("az\xC3\xA4@[`{"), "AZ\xC3\xA4@[`{");
  EXPECT_EQ(LowerCase("AZ\xC3\x84@[`{"), "az\xC3\x84@[`{");
  EXPECT_TRUE(SameText("TrUe", "true"));
  EXPECT_FALSE(SameText("true ", "true"));
  EXPECT_FALSE(SameText("\xC3\x84", "\xC3\xA4"));
}

TEST(Text, CharactersAreUtf16UnitsAndAPairIsNeverSplit) {
  const std::string Text = "a\xC3\xA4" + std::string(Smile) + "\xE2\x80\x93z";  // 1 + 1 + 2 + 1 + 1
  EXPECT_EQ(CharacterCount(Text), 6u);
  // clang-format off
  const std::tuple<std::size_t, std::size_t, std::string> Cases[] = {
      {1, 0, ""}, {1, 2, "a\xC3\xA4"}, {1, 3, "a\xC3\xA4"}, {1, 4, "a\xC3\xA4" + std::string(Smile)},
      {3, 2, std::string(Smile)}, {3, 1, ""}, {4, 1, ""}, {4, 2, "\xE2\x80\x93"}, {5, 1, "\xE2\x80\x93"},
      {6, 99, "z"}, {7, 1, ""}, {99, 1, ""}, {2, std::string::npos, Text.substr(1)}};
  // clang-format on
  for (const auto& [First, Count, Expected] : Cases)
    EXPECT_EQ(Characters(Text, First, Count), Expected) << First << ", " << Count;
  EXPECT_EQ(FirstCharacters("", 3), "");
}

TEST(Text, ABrokenByteIsOneCharacter) {
  const std::string_view Broken[] = {"\xFF",         "\xC3",         "\xE2\x80",         "\xC0\x80",
                                     "\xED\xA0\x80", "\xE0\x80\x80", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80"};
  for (const std::string_view Text : Broken) {
    EXPECT_EQ(CharacterCount(Text), Text.size());
    EXPECT_EQ(FirstCharacters(Text, 1), Text.substr(0, 1));
  }
  EXPECT_EQ(FirstCharacters("\xC3xyz", 2), "\xC3x");
}

TEST(Text, AGuidIsBracedAndUpperCase) {
  const TGUID Guid = {0xAB, 0xCD, 0xEF, 0, 1, 2, 3, 4, 5, 6, 0x70, 8, 9, 10, 11, 255};
  EXPECT_EQ(GUIDToString(Guid), "{ABCDEF00-0102-0304-0506-7008090A0BFF}");
}

TEST(Enumerations, UnevenTextsAreKept) {
  EXPECT_EQ(TBeamMethodString[bcmUpdate], "Patch");
  EXPECT_EQ(TBeamSuperTransErrorString[bsteNone], "");
  EXPECT_EQ(TBeamSuperPaymentMethodString[bspmOther], "Pass Through");
  EXPECT_EQ(TBeamSuperAPIPaymentMethodString[bspmOther], "PASS_THROUGH");
  EXPECT_EQ(TBeamSuperActionString[bsaUnknown], "Unknown");
  EXPECT_EQ(TBeamSuperActionString[bsaMarkedAsProcessed], "Marked as Processed");
  EXPECT_EQ(TTBeamSuperStatusString[bssNearlyExpired], "Nearly Expired");
  EXPECT_EQ(TTBeamSuperAvailable[bseSuspended], "Suspended");
  EXPECT_EQ(TPayrollProductStrings[BeamPayrollProduct], "Kestrel");
}

TEST(Enumerations, AddressesAreHttpsWithoutASlashAtTheEndAndTheUndecidedOneIsAPrompt) {
  EXPECT_EQ(BaseBeamURL[bsenvUnknown], "select an environment");
  EXPECT_EQ(BaseBeamSignUpUrl[bsenvUnknown], "select an environment");
  for (const TBeamSuperEnvironment Environment : {bsenvIntgDev, bsenvAcptQa, bsenvProdLive}) {
    const std::string_view Base = BaseBeamURL[Environment], SignUp = BaseBeamSignUpUrl[Environment];
    EXPECT_TRUE(Base.starts_with("https://") && !Base.ends_with('/')) << Base;
    EXPECT_TRUE(SignUp.starts_with("https://") && SignUp.ends_with("/#access_token=")) << SignUp;
  }
  EXPECT_THROW(BaseBeamURL[static_cast<TBeamSuperEnvironment>(4)], TBeamRangeError);
  EXPECT_THROW(TBeamMethodString[static_cast<TBeamCallMethod>(255)], TBeamRangeError);
}

}  // namespace
}  // namespace oxSuperAPI
