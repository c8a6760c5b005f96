#include "oxSuperAPI/foundation/uBeamCompactText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "oxSuperAPI/foundation/uBeamLazy.h"
#include "oxSuperAPI/host/uHostJsonEscaping.h"

namespace oxSuperAPI {
namespace {

// Around the lengths that stand in place and that are copied in one go; what needs an escape, and a NUL inside.
const std::string Samples[] = {"",
                               "1",
                               "1990-01-01",
                               "12345678901",
                               "123456789012",
                               "an address line of the usual length",
                               std::string(70'000, 'x'),
                               "1234567890123456",
                               "12345678901234567",
                               "\"",
                               "back\\slash",
                               "a tab and more\tthan sixteen",
                               std::string("a\0b", 3),
                               std::string("long and with\0NUL", 17)};

TEST(CompactText, HoldsAndComparesEveryLengthThroughAssignmentCopyMoveAndSelfAssignment) {
  for (const std::string& Sample : Samples)
    for (const std::string& Other : Samples) {
      TBeamText Text = Other;
      const TBeamText Kept = Text;
      Text = Sample;
      EXPECT_TRUE(Text == Sample && Sample == Text && Text == TBeamText(Sample));
      EXPECT_EQ(Text == Kept, Sample == Other);
      EXPECT_EQ(Text <=> Other, Sample <=> Other);
      EXPECT_EQ(Kept.view(), Other);
      EXPECT_TRUE(Text.size() == Sample.size() && Text.empty() == Sample.empty() &&
                  Text.c_str()[Sample.size()] == '\0');
      EXPECT_EQ(std::hash<TBeamText>()(Text), std::hash<std::string>()(Sample));
      EXPECT_EQ(Text.IsPlainJSON(), std::ranges::none_of(Sample, NeedsJSONEscape));
      std::vector<char> Copy(Sample.size() + TBeamText::CopySlack);
      EXPECT_EQ(std::string_view(Copy.data(), Text.CopyTo(Copy.data())), Sample);

      TBeamText Moved = std::move(Text);
      EXPECT_EQ(Moved, Sample);
      Text = Kept;
      std::swap(Text, Moved);
      EXPECT_TRUE(Text == Sample && Moved == Other);
      const TBeamText& Self = Text;
      Text = Self;
      EXPECT_EQ(Text, Sample);
      Text = Text.view().substr(Sample.size() / 2);  // from its own content
      EXPECT_EQ(Text, Sample.substr(Sample.size() / 2));
      Text.clear();
      EXPECT_TRUE(Text.empty() && Text == TBeamText());
    }
  static_assert(sizeof(TBeamText) == 12 && std::is_nothrow_move_constructible_v<TBeamText>);
}

TEST(CompactText, FindsWhatNeedsAnEscapeAtEveryPlace) {
  for (std::size_t Size = 1; Size <= 20; ++Size)
    for (std::size_t At = 0; At < Size; ++At)
      for (const char Odd : {'"', '\\', '\x1f', '\0', ' ', '\x7f', '\xff', '\xa2'}) {
        std::string Content(Size, 'x');
        Content[At] = Odd;
        TBeamText Text = "before";
        Text = Content;
        EXPECT_TRUE(Text == Content && Text.c_str()[Size] == '\0');
        EXPECT_EQ(Text.IsPlainJSON(), !NeedsJSONEscape(Odd)) << Size << ' ' << At;
      }
}

TEST(CompactText, ReadsLikeAStringWhereAHostExpectsOne) {
  TBeamText Text = "given";
  std::string Copied = Text, Assigned;
  Assigned = Text;
  Assigned += Text;
  const std::string_view View = Text;
  std::ostringstream Out;
  Out << Text;
  EXPECT_EQ(Copied + Assigned + std::string(View) + Out.str(), "givengivengivengivengiven");
  EXPECT_EQ("<" + Text + std::string(" ") + Text + ">" + (Text + "!") + (Text + Text), "<given given>given!givengiven");
  Text = {};
  EXPECT_EQ(Text, "");
  std::vector<TBeamText> Sorted = {"b", "an entry that is too long to stand in place", "", "a"};
  std::ranges::sort(Sorted);
  EXPECT_EQ(Sorted, (std::vector<TBeamText>{"", "a", "an entry that is too long to stand in place", "b"}));
  static_assert(!std::is_constructible_v<TBeamText, std::nullptr_t> && !std::is_constructible_v<TBeamText, int>);
}

TEST(Lazy, IsAbsentUntilItIsChangedAndCopiedDeeply) {
  TBeamLazy<std::pair<TBeamText, int>> Lazy;
  const auto& Reading = Lazy;
  EXPECT_TRUE(Reading->first == "" && Reading->second == 0 && (*Reading).second == 0);
  EXPECT_FALSE(Lazy.IsPresent());
  Lazy->second = 7;
  EXPECT_TRUE(Lazy.IsPresent());
  auto Copy = Lazy;
  Copy->second = 8;
  EXPECT_EQ(Reading->second, 7);
  Lazy = Copy;
  Lazy = *&Lazy;
  EXPECT_EQ(Reading->second, 8);
  Copy = std::move(Lazy);
  EXPECT_TRUE(Copy->second == 8 && !Lazy.IsPresent());
  Copy = {};
  EXPECT_FALSE(Copy.IsPresent());
}

}  // namespace
}  // namespace oxSuperAPI
