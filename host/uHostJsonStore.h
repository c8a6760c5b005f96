#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

#include "oxSuperAPI/host/uHostJsonContent.h"

namespace oxSuperAPI {

/// The memory of a tree that was built from one document: all but its root. Nothing in it is freed on its own, and
/// nothing is added once the tree is built.
class TJSONStore {
 public:
  TJSONStore() = default;
  TJSONStore(const TJSONStore&) = delete;
  TJSONStore& operator=(const TJSONStore&) = delete;
  ~TJSONStore();

  /// Aligned for everything that a tree holds.
  void* Allocate(std::size_t Size) {
    Size = (Size + alignof(TJSONContent) - 1) / alignof(TJSONContent) * alignof(TJSONContent);
    if (Size > FFree) AddChunk(Size);
    FFree -= Size;
    return std::exchange(FNext, FNext + Size);
  }
  /// A copy of `Text`, which must not be empty.
  std::string_view Copy(std::string_view Text) {
    return {static_cast<char*>(std::memcpy(Allocate(Text.size()), Text.data(), Text.size())), Text.size()};
  }

 private:
  struct alignas(TJSONContent) TChunk {
    TChunk* Previous;
  };
  void AddChunk(std::size_t Needed);

  TChunk* FChunk = nullptr;
  char* FNext = nullptr;
  std::size_t FFree = 0;
  std::size_t FTotal = 0;
};

}  // namespace oxSuperAPI
