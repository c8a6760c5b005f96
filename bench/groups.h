#pragma once

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// Benchmarks that share data: those whose names begin with the group's name and "/". They run interleaved; the data is
/// made before them and freed after them.
struct TGroup {
  /// Enters the group into `Groups()`. `Prepare` checks that the peers' results equal ours, and raises if not.
  TGroup(std::string GroupName, void (*PrepareData)(), void (*ReleaseData)());

  std::string Name;
  void (*Prepare)();
  void (*Release)();
};
std::vector<TGroup>& Groups();

/// Raises std::runtime_error, naming `What`, when two results that should be equal are not.
void NeedEqual(bool Equal, const char* What);

/// Touches a gigabyte and gives it back. A virtual machine's host may take back what the machine left unused for
/// seconds, and the next touch of it then costs many times what the machine's own work does, whoever's turn it is.
void TouchMachineMemory();

/// The loop of a benchmark whose result is large: freeing it is not part of the work. Nor is what glibc puts off when
/// small blocks are freed, which the next block of such a size has it do, nor fetching memory from a machine's host.
template <class TWork>
void Loop(benchmark::State& State, TWork Work) {
  TouchMachineMemory();
  for (auto _ : State) {
    auto Result = Work();
    benchmark::DoNotOptimize(Result);
    State.PauseTiming();
    { [[maybe_unused]] const auto Gone = std::move(Result); }
    void* Large = std::malloc(100'000);
    benchmark::DoNotOptimize(Large);
    std::free(Large);
    State.ResumeTiming();
  }
}

/// Registers a benchmark whose one iteration takes long enough to be measured alone.
template <class TBody>
benchmark::internal::Benchmark* Once(const std::string& Name, TBody Body) {
  return benchmark::RegisterBenchmark(Name.c_str(), Body)->Iterations(1);
}

}  // namespace bench
