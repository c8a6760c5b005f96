// How often the body of a large submission is in memory on its way from the records to the socket and the log row.
#include <optional>

#include "batch_generator.h"
#include "groups.h"
#include "memory_meter.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "whole_host.h"

namespace bench {

namespace {

struct TData {
  TWholeHost Host;
  std::unique_ptr<oxSuperAPI::TBeamContributionDetail> Batch = ToRecords(GenerateBatch(100'000));
  std::size_t TextSize = 0;

  void Post() {
    std::string Message, Error, Status;
    std::unique_ptr<oxSuperAPI::TBeamContributionResponse> Response;
    if (!oxSuperAPI::PostContribution("bench", Batch.get(), true, Response, Message, Error, Status))
      throw std::runtime_error("the submission failed: " + Message + " " + Error);
  }
  TData() {
    Post();
    const std::string Text = Batch->GetAsJsonString();
    TextSize = Text.size();
    NeedEqual(LastLogRow(*Host.Host)[4] == Text, "the body in the log row");
  }
};
std::optional<TData> Data;
const TGroup Group(
    "pipeline", [] { Data.emplace(); }, [] { Data.reset(); });

const auto Post = Once("pipeline/post", [](benchmark::State& State) {
                    for (auto _ : State) {
                      const TMemoryMeter Meter(Data->TextSize / 10 * 9);
                      const TSQLiteMeter SQLite;
                      Data->Post();
                      State.counters["text"] = static_cast<double>(Data->TextSize);
                      State.counters["buffers"] = static_cast<double>(Meter.LargeBlocks());
                      State.counters["peak"] = Meter.Peak();
                      State.counters["sqlite"] = SQLite.Peak();
                    }
                  }) -> Repetitions(2);

}  // namespace

}  // namespace bench
