// How much memory a batch takes.
#include "batch_generator.h"
#include "groups.h"
#include "memory_meter.h"

namespace bench {

namespace {

const TGroup Group(
    "records", [] {}, [] {});

const auto Memory = Once("records/memory", [](benchmark::State& State) {
  constexpr std::size_t Members = 20'000;
  const TPlainBatch Plain = GenerateBatch(Members);
  for (auto _ : State) {
    const TMemoryMeter Meter;
    const auto Batch = ToRecords(Plain);
    State.counters["member"] = Meter.Held() / Members;
    State.counters["sizeof"] = sizeof(oxSuperAPI::TBeamMemberContribution);
  }
});

}  // namespace

}  // namespace bench
