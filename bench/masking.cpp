// Masking a log text, in place, beside a copy of the same size.
#include <cstring>
#include <optional>
#include <string>

#include "batch_generator.h"
#include "groups.h"
#include "oxSuperAPI/session/uBeamMasking.h"

namespace bench {

namespace {

constexpr std::size_t MB = 1'000'000;

/// A batch's text, repeated to the size. With `Every`, a credential stands behind so many bytes.
std::string LogText(std::size_t Size, std::size_t Every = 0) {
  static const std::string Batch = ToRecords(GenerateBatch(1'000))->GetAsJsonString();
  constexpr std::string_view Credential = R"({"clientSecret": "0f8fad5b-d9cb-469f-a165-70867728950e"},)";
  std::string Text;
  Text.reserve(Size);
  for (std::size_t From = 0; Text.size() < Size; From += Every) {
    if (Every == 0)
      Text.append(Batch, 0, Size - Text.size());
    else
      Text.append(Batch, From % (Batch.size() - Every), Every - Credential.size()).append(Credential);
  }
  return Text;
}

/// The texts that are masked are the same in every round: each is made anew, untimed, from its pattern.
void Hide(benchmark::State& State, const std::string& Pattern) {
  std::string Text = Pattern;
  for (auto _ : State) {
    State.PauseTiming();
    Text = Pattern;
    State.ResumeTiming();
    Text = oxSuperAPI::HideCredentials(std::move(Text));
    benchmark::DoNotOptimize(Text);
  }
}

struct TData {
  std::string Nothing = LogText(50 * MB);
  std::string Matches = LogText(50 * MB, 500);
  std::string Copy = Nothing;

  TData() {
    NeedEqual(oxSuperAPI::HideCredentials(Nothing) == Nothing, "masking without a match");
    const std::string Masked = oxSuperAPI::HideCredentials(Matches);
    NeedEqual(Masked.find("0f8fad5b") == std::string::npos && Masked.size() == Matches.size(), "masking");
  }
};
std::optional<TData> Data;
const TGroup Group(
    "masking", [] { Data.emplace(); }, [] { Data.reset(); });

const auto Nothing = Once("masking/nothing", [](benchmark::State& State) { Hide(State, Data->Nothing); });
const auto Matches = Once("masking/matches", [](benchmark::State& State) { Hide(State, Data->Matches); });
const auto Doubling = Once("masking/doubling", [](benchmark::State& State) {
                        Hide(State, LogText(static_cast<std::size_t>(State.range(0)) * MB, 500));
                      }) -> RangeMultiplier(2) -> Range(16, 128);

const auto Memcpy = Once("masking/memcpy", [](benchmark::State& State) {
  for (auto _ : State) {
    std::memcpy(Data->Copy.data(), Data->Nothing.data(), Data->Nothing.size());
    benchmark::ClobberMemory();
  }
});

}  // namespace

}  // namespace bench
