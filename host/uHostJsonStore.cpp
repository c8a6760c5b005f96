#include "oxSuperAPI/host/uHostJsonStore.h"

#include <algorithm>
#include <new>

namespace oxSuperAPI {

TJSONStore::~TJSONStore() {
  while (FChunk) ::operator delete(std::exchange(FChunk, FChunk->Previous));
}

// Small documents take little, large ones few chunks, of which the last one wastes little.
void TJSONStore::AddChunk(std::size_t Needed) {
  constexpr std::size_t Smallest = 1024, Largest = std::size_t{1} << 20;
  const std::size_t Size = std::max(Needed, std::clamp(FTotal / 4, Smallest, Largest) - sizeof(TChunk));
  FChunk = new (::operator new(sizeof(TChunk) + Size)) TChunk{FChunk};
  FNext = reinterpret_cast<char*>(FChunk + 1);
  FFree = Size;
  FTotal += Size;
}

}  // namespace oxSuperAPI
