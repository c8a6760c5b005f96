#include "memory_meter.h"

#include <malloc.h>
#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>

// The C library's own functions behind the names that this file takes over.
extern "C" {
void* __libc_malloc(std::size_t Size);
void* __libc_calloc(std::size_t Count, std::size_t Size);
void* __libc_realloc(void* Block, std::size_t Size);
void* __libc_memalign(std::size_t Alignment, std::size_t Size);
void __libc_free(void* Block);
}

namespace {

std::atomic<bool> Counting = false;
std::atomic<std::int64_t> Now = 0, Most = 0;
std::atomic<std::size_t> Large = 0, LargeFrom = 0;

void Count(void* Block, bool IsNew) {
  if (!Counting.load(std::memory_order_relaxed) || !Block) return;
  const auto Size = static_cast<std::int64_t>(malloc_usable_size(Block));
  Now += IsNew ? Size : -Size;
  Most = std::max<std::int64_t>(Most, Now);
  if (IsNew && static_cast<std::size_t>(Size) >= LargeFrom) ++Large;
}

void* New(void* Block) {
  Count(Block, true);
  return Block;
}

}  // namespace

extern "C" {
void* malloc(std::size_t Size) {
  return New(__libc_malloc(Size));
}
void* calloc(std::size_t Elements, std::size_t Size) {
  return New(__libc_calloc(Elements, Size));
}
void* realloc(void* Block, std::size_t Size) {
  Count(Block, false);
  void* const Result = __libc_realloc(Block, Size);
  Count(Result || Size == 0 ? Result : Block, true);
  return Result;
}
void* memalign(std::size_t Alignment, std::size_t Size) {
  return New(__libc_memalign(Alignment, Size));
}
void* aligned_alloc(std::size_t Alignment, std::size_t Size) {
  return memalign(Alignment, Size);
}
int posix_memalign(void** Block, std::size_t Alignment, std::size_t Size) {
  void* const Result = memalign(Alignment, Size);
  if (!Result) return ENOMEM;
  *Block = Result;
  return 0;
}
void free(void* Block) {
  Count(Block, false);
  __libc_free(Block);
}
}

namespace bench {

TMemoryMeter::TMemoryMeter(std::size_t LargeBlock) {
  Now = Most = 0;
  Large = 0;
  LargeFrom = LargeBlock;
  Counting = true;
}
TMemoryMeter::~TMemoryMeter() {
  Counting = false;
}
double TMemoryMeter::Held() const {
  return static_cast<double>(Now);
}
double TMemoryMeter::Peak() const {
  return static_cast<double>(Most);
}
std::size_t TMemoryMeter::LargeBlocks() const {
  return Large;
}

void KeepSQLiteApart() {
  static sqlite3_mem_methods Methods = {
      [](int Size) { return __libc_malloc(static_cast<std::size_t>(Size)); },
      [](void* Block) { __libc_free(Block); },
      [](void* Block, int Size) { return __libc_realloc(Block, static_cast<std::size_t>(Size)); },
      [](void* Block) { return static_cast<int>(malloc_usable_size(Block)); },
      [](int Size) { return (Size + 7) / 8 * 8; },
      [](void*) { return SQLITE_OK; },
      [](void*) {},
      nullptr,
  };
  sqlite3_config(SQLITE_CONFIG_MALLOC, &Methods);
}

TSQLiteMeter::TSQLiteMeter() : FStart(static_cast<double>(sqlite3_memory_used())) {
  sqlite3_memory_highwater(true);
}
double TSQLiteMeter::Peak() const {
  return static_cast<double>(sqlite3_memory_highwater(false)) - FStart;
}

}  // namespace bench
