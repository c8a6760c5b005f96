// Runs the benchmarks group by group and prints what they measured beside its goal. Exit status: 0 every goal met, 1
// one missed, 2 wrong use.
#include <benchmark/benchmark.h>
#include <sched.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <regex>
#include <stdexcept>
#include <string_view>

#include "goals.h"
#include "groups.h"
#include "memory_meter.h"

namespace bench {

std::vector<TGroup>& Groups() {
  static std::vector<TGroup> All;
  return All;
}

TGroup::TGroup(std::string GroupName, void (*PrepareData)(), void (*ReleaseData)())
    : Name(std::move(GroupName)), Prepare(PrepareData), Release(ReleaseData) {
  Groups().push_back(*this);
}

void NeedEqual(bool Equal, const char* What) {
  if (!Equal) throw std::runtime_error(std::string("Results differ: ") + What);
}

void TouchMachineMemory() {
  constexpr std::size_t Size = std::size_t{1} << 30;
  void* const Memory = mmap(nullptr, Size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (Memory == MAP_FAILED) return;
  madvise(Memory, Size, MADV_HUGEPAGE);
  std::memset(Memory, 1, Size);
  munmap(Memory, Size);
}

namespace {

struct TOptions {
  std::regex Filter{""};
  std::string JsonFile;
};

int Usage() {
  std::fprintf(stderr, "usage: run [--filter REGEX] [--json FILE]\n  --filter  only groups that match: ");
  for (const TGroup& Group : Groups()) std::fprintf(stderr, "%s ", Group.Name.c_str());
  std::fprintf(stderr, "\n  --json    also write the table to FILE, for machines\n");
  return 2;
}

/// Everything is measured on the core on which the process happens to be now.
void StayOnOneCore() {
  cpu_set_t Cores;
  CPU_ZERO(&Cores);
  CPU_SET(static_cast<std::size_t>(std::max(sched_getcpu(), 0)), &Cores);
  if (sched_setaffinity(0, sizeof Cores, &Cores) != 0) std::fprintf(stderr, "cannot stay on one core\n");
}

void PrintCircumstances() {
  double Load[3] = {};
  if (getloadavg(Load, 3) != 3) return;
  std::printf("load of the machine %.2f (1 min) %.2f (5 min); medians of interleaved repetitions on one core\n\n",
              Load[0], Load[1]);
}

void RunGroup(const TGroup& Group, TResults& Results) {
  std::fprintf(stderr, "%s ...\n", Group.Name.c_str());
  try {
    Group.Prepare();
    benchmark::RunSpecifiedBenchmarks(&Results, "^" + Group.Name + "/");
  } catch (const std::exception& Error) {
    std::fprintf(stderr, "%s: %s\n", Group.Name.c_str(), Error.what());
  }
  Group.Release();
}

int Run(const TOptions& Options) {
  KeepSQLiteApart();
  StayOnOneCore();
  TResults Results;
  std::vector<TVerdict> Verdicts;
  bool AllMet = true;
  for (const TGroup& Group : Groups())
    if (std::regex_search(Group.Name, Options.Filter)) RunGroup(Group, Results);
  for (const TGoal& Goal : Goals) {
    if (!std::regex_search(Goal.Group, Options.Filter)) continue;
    Verdicts.push_back(Judge(Goal, Results));
    AllMet = AllMet && Verdicts.back().Met;
  }
  PrintCircumstances();
  PrintTable(Verdicts);
  if (!Options.JsonFile.empty()) {
    std::ofstream File(Options.JsonFile);
    File << AsJson(Verdicts);
    if (!File.flush()) {
      std::fprintf(stderr, "%s cannot be written\n", Options.JsonFile.c_str());
      return 2;
    }
  }
  return AllMet && !Verdicts.empty() ? 0 : 1;
}

}  // namespace

}  // namespace bench

int main(int Count, char** Arguments) {
  bench::TOptions Options;
  for (int At = 1; At < Count; At += 2) {
    const std::string_view Name = Arguments[At];
    if (At + 1 == Count || (Name != "--filter" && Name != "--json")) return bench::Usage();
    if (Name == "--json") Options.JsonFile = Arguments[At + 1];
    if (Name == "--filter") try {
        Options.Filter.assign(Arguments[At + 1]);
      } catch (const std::regex_error&) {
        return bench::Usage();
      }
  }
  std::string Given[] = {Arguments[0], "--benchmark_repetitions=7", "--benchmark_enable_random_interleaving=true",
                         "--benchmark_min_time=0.05"};
  std::vector<char*> Pointers;
  for (std::string& One : Given) Pointers.push_back(One.data());
  int GivenCount = static_cast<int>(Pointers.size());
  benchmark::Initialize(&GivenCount, Pointers.data());
  return bench::Run(Options);
}
