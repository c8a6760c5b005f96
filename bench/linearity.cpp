// Does a member cost the same in a batch of any size?
#include <map>

#include "batch_generator.h"
#include "groups.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/reference/reference_host.h"

namespace bench {

namespace {

constexpr long Sizes[] = {1'000, 5'000, 25'000, 100'000, 200'000};
constexpr long Members = 200'000;

struct TBatch {
  std::unique_ptr<oxSuperAPI::TBeamContributionDetail> Records;
  std::string Text;
};
std::map<long, TBatch> Data;
std::unique_ptr<oxSuperAPI::TReferenceHost> Host;

const TGroup Group(
    "linearity",
    [] {
      Host = std::make_unique<oxSuperAPI::TReferenceHost>(oxSuperAPI::TReferenceConfig{});
      oxSuperAPI::RegisterHost(Host.get());
      for (const long Size : Sizes) {
        TBatch& Batch = Data[Size];
        Batch.Records = ToRecords(GenerateBatch(static_cast<std::size_t>(Size)));
        Batch.Text = Batch.Records->GetAsJsonString();
      }
    },
    [] {
      Data.clear();
      oxSuperAPI::RegisterHost(nullptr);
      Host.reset();
    });

// Every round handles as many members, so that the small batches are measured as long as the large one.
template <class TWork>
void Add(const std::string& Name, TWork Work) {
  for (const long Size : Sizes)
    benchmark::RegisterBenchmark((Name + std::to_string(Size)).c_str(),
                                 [Work, Size](benchmark::State& State) {
                                   const TBatch& Batch = Data[Size];
                                   Loop(State, [&] { return Work(Batch); });
                                 })
        ->Iterations(std::max(1L, Members / 4 / Size))
        ->Repetitions(9);
}

const bool Added = [] {
  Add("linearity/write/", [](const TBatch& Batch) { return Batch.Records->GetAsJsonString(); });
  Add("linearity/read/", [](const TBatch& Batch) {
    auto Result = std::make_unique<oxSuperAPI::TBeamContributionDetail>();
    Result->LoadFromJsonObject(*oxSuperAPI::ParseJSON(Batch.Text));
    return Result;
  });
  return true;
}();

}  // namespace

}  // namespace bench
