// A batch of 100,000 members to the text that is sent.
#include <cstring>
#include <optional>

#include "groups.h"
#include "memory_meter.h"
#include "peers.h"

namespace bench {

namespace {

// A batch whose text is small enough for the heap to hand out the same memory again: the work without the first touch.
struct TSmallData {
  TPlainBatch Plain = GenerateBatch(1'000);
  std::unique_ptr<oxSuperAPI::TBeamContributionDetail> Batch = ToRecords(Plain);
};
struct TData {
  TSmallData Small;
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

// Into memory as fresh as the text's.
const auto MemcpyFresh = Once("writing/memcpy_fresh", [](benchmark::State& State) {
  Loop(State, [] {
    std::string Copy;
    Copy.reserve(Data->Text.size());
    Copy.append(Data->Text);
    return Copy;
  });
});

constexpr int SmallRounds = 50;

const auto Small = Once("writing/small", [](benchmark::State& State) {
                     Loop(State, [] { return Data->Small.Batch->GetAsJsonString(); });
                   }) -> Iterations(SmallRounds);
const auto SmallRapidJson = Once("writing/small_rapidjson", [](benchmark::State& State) {
                              Loop(State, [] { return WriteWithRapidJson(Data->Small.Plain); });
                            }) -> Iterations(SmallRounds);

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
