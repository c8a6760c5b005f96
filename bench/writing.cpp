// A batch of 100,000 members to the text that is sent.
#include <cstring>
#include <optional>

#include "groups.h"
#include "memory_meter.h"
#include "peers.h"

namespace bench {

namespace {

struct TData {
  TPlainBatch Plain = GenerateBatch(100'000);
  std::unique_ptr<oxSuperAPI::TBeamContributionDetail> Batch = ToRecords(Plain);
  std::string Text = Batch->GetAsJsonString();
  std::string Copy = Text;

  TData() {
    const rapidjson::StringBuffer Peer = WriteWithRapidJson(Plain);
    NeedEqual(Text == std::string_view(Peer.GetString(), Peer.GetSize()), "RapidJSON's text of the batch");
  }
};
std::optional<TData> Data;
const TGroup Group(
    "writing", [] { Data.emplace(); }, [] { Data.reset(); });

const auto Ours =
    Once("writing/ours", [](benchmark::State& State) { Loop(State, [] { return Data->Batch->GetAsJsonString(); }); });
const auto RapidJson = Once(
    "writing/rapidjson", [](benchmark::State& State) { Loop(State, [] { return WriteWithRapidJson(Data->Plain); }); });

const auto Memcpy = Once("writing/memcpy", [](benchmark::State& State) {
  for (auto _ : State) {
    std::memcpy(Data->Copy.data(), Data->Text.data(), Data->Text.size());
    benchmark::ClobberMemory();
  }
});

const auto Memory = Once("writing/memory", [](benchmark::State& State) {
  for (auto _ : State) {
    const TMemoryMeter Meter;
    const std::string Text = Data->Batch->GetAsJsonString();
    const auto Size = static_cast<double>(Text.size());
    State.counters["text"] = Size;
    State.counters["beyond"] = Meter.Peak() - Size;
  }
});

}  // namespace

}  // namespace bench
