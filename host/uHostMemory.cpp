#include "oxSuperAPI/host/uHostMemory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace oxSuperAPI {

namespace {

// A large page has 2 MB on most machines. Below some of them nothing is gained, and the room may be the heap's own.
constexpr std::size_t LargeText = std::size_t{8} << 20;

}  // namespace

void ReserveText(std::string& Text, std::size_t Size) {
  Text.reserve(Size);
  if (Size < LargeText) return;
#ifdef MADV_HUGEPAGE
  const auto Page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto Address = reinterpret_cast<std::uintptr_t>(Text.data());
  const std::uintptr_t Behind = Page - Address % Page;  // to the first whole page
  madvise(Text.data() + Behind, (Size - Behind) / Page * Page, MADV_HUGEPAGE);
#endif
}

}  // namespace oxSuperAPI
