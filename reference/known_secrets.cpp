#include "oxSuperAPI/reference/known_secrets.h"

#include <algorithm>
#include <cstring>

#include "oxSuperAPI/reference/log_mask_cuts.h"

namespace oxSuperAPI {

namespace {

constexpr std::size_t Kept = 256;
constexpr std::size_t BeginningSize = 8;
constexpr std::size_t LeastOfCut = 32;
constexpr std::size_t MostCompared = 512;

// The first 8 characters; of a shorter text all, and its length.
std::uint64_t Beginning(std::string_view Text) {
  std::uint64_t Value = 0;
  std::memcpy(&Value, Text.data(), std::min(Text.size(), BeginningSize));
  return Text.size() < BeginningSize ? Value << 8 | Text.size() : Value;
}
// 12 bits of a beginning: 6 choose the word of the filter, 6 the bit.
std::uint64_t Digest(std::uint64_t Value) {
  return (Value * 0x9E3779B97F4A7C15u) >> 52;
}
bool IsDigit(char Each) {
  return Each >= '0' && Each <= '9';
}

}  // namespace

void TKnownSecrets::Learn(std::string_view Secret) {
  const bool Ordinary = Secret.size() < 4 || (Secret.size() < 16 && std::ranges::none_of(Secret, IsDigit));
  if (Ordinary || std::ranges::find(FSecrets, Secret) != FSecrets.end()) return;
  FSecrets.emplace_back(Secret);
  if (FSecrets.size() > Kept) FSecrets.pop_front();
  FShort.clear();
  FByBeginning.clear();
  std::ranges::fill(FFilter, 0u);
  for (const std::string& Each : FSecrets) {
    const std::uint64_t Value = Beginning(Each);
    if (Each.size() < BeginningSize) {
      FShort.insert(Value);
      continue;
    }
    FByBeginning.emplace(Value, Each);
    FFilter[Digest(Value) >> 6] |= std::uint64_t{1} << (Digest(Value) & 63);
  }
}

std::vector<TKnownSecrets::TPlace> TKnownSecrets::Find(std::string_view Text) const {
  std::vector<TPlace> Places;
  if (FByBeginning.empty()) return Places;
  for (std::size_t At = 0; At + BeginningSize <= Text.size();) {
    std::uint64_t Value;
    std::memcpy(&Value, Text.data() + At, BeginningSize);
    std::size_t End = At;
    if ((FFilter[Digest(Value) >> 6] >> (Digest(Value) & 63)) & 1) {
      const std::string_view Rest = Text.substr(At);
      const auto [First, Last] = FByBeginning.equal_range(Value);
      for (auto Each = First; Each != Last; ++Each) {
        const std::string_view Secret = std::string_view(Each->second).substr(0, MostCompared);
        const auto Differs = std::ranges::mismatch(Rest, Secret).in1;
        const std::size_t Size = static_cast<std::size_t>(Differs - Rest.begin());
        // Signed tokens begin alike, so a part of one counts only where the text ends it, be it with three dots.
        std::string_view Behind = Rest.substr(Size, 4);
        Behind.remove_prefix(std::min(Behind.find_first_not_of('.'), Behind.size()));
        if (Size == Secret.size() || (Size >= LeastOfCut && EndOfWord(Behind, 0) == 0)) End = std::max(End, At + Size);
      }
      if (End > At) End = EndOfWord(Text, End);
    }
    if (End == At) {
      ++At;
      continue;
    }
    Places.push_back({At, End});
    At = End;
  }
  return Places;
}

bool TKnownSecrets::IsKnown(std::string_view Word) const {
  return !FShort.empty() && Word.size() < BeginningSize && FShort.contains(Beginning(Word));
}

std::string TKnownSecrets::Hide(std::string_view Text) const {
  TMaskCuts Cuts;
  for (const TPlace& Place : Find(Text)) Cuts.Hide(Place.Begin, Place.End);
  for (std::size_t At = 0; !FSecrets.empty() && At < Text.size();) {
    const std::size_t End = EndOfWord(Text, At);
    if (IsKnown(Text.substr(At, End - At))) Cuts.Hide(At, End);
    At = std::max(End, At + 1);
  }
  return Cuts.Apply(Text);
}

}  // namespace oxSuperAPI
