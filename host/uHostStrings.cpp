#include "oxSuperAPI/host/uHostStrings.h"

#include "oxSuperAPI/host/uHostMemory.h"

namespace oxSuperAPI {

void TStringList::SetText(std::string Text) {
  FLines.clear();
  if (!Text.empty()) FLines.push_back(std::move(Text));
}

const std::string& TStringList::operator[](std::size_t Index) const {
  if (Index >= FLines.size()) throw TBeamRangeError("String list index " + std::to_string(Index) + " is out of range");
  return FLines[Index];
}

std::string_view TStringList::Text(std::string& Joined) const {
  if (FLines.size() == 1) return FLines.front();
  return Joined = Text();
}

std::string TStringList::Text() const {
  std::size_t Size = 0;
  for (const std::string& Line : FLines) Size += Line.size() + 2;
  std::string Result;
  ReserveText(Result, Size);
  for (const std::string& Line : FLines) {
    if (&Line != &FLines.front()) Result += "\r\n";
    Result += Line;
  }
  return Result;
}

}  // namespace oxSuperAPI
