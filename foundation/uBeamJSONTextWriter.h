#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "oxSuperAPI/foundation/uBeamJSONAddOperations.h"

namespace oxSuperAPI {

/// Counts the bytes of the text that TJSONTextWriter writes.
class OXSUPERAPI_EXPORT TJSONTextCounter : public TJSONAddOperations<TJSONTextCounter> {
 public:
  /// What was counted so far.
  std::size_t Size() const { return FSize; }

  /// As the operations of TJSONTextWriter. @{
  void AppendString(TJSONName Name, std::string_view Text) { StartMember(Name, EscapedJSONSize(Text) + 2); }
  void AppendBoolean(TJSONName Name, bool Value) { StartMember(Name, Value ? 4 : 5); }

  template <class FillRoot>
  void Root(FillRoot Fill) {
    Nest(TAddNested::Always, Fill);
  }
  template <class FillObject>
  void Object(TJSONName Name, TAddNested When, FillObject Fill) {
    if (Nest(When, Fill)) StartMember(Name, 0);
  }
  template <class FillArray>
  void Array(TJSONName Name, TAddNested When, FillArray Fill) {
    if (Nest(When, Fill)) StartMember(Name, 0);
  }
  template <class FillObject>
  void Element(TAddNested When, FillObject Fill) {
    if (Nest(When, Fill)) StartItem(0);
  }
  /// @}

 private:
  template <class FillNested>
  bool Nest(TAddNested When, FillNested& Fill) {
    const std::size_t OuterItems = std::exchange(FItems, 0);
    ++FDepth;
    Fill(*this);
    --FDepth;
    const std::size_t Items = std::exchange(FItems, OuterItems);
    if (Items == 0 && When != TAddNested::Always) return false;
    FSize += Items == 0 ? 2 : 2 + (Items - 1) + 1 + 2 * FDepth;  // brackets, commas, and the last line
    return true;
  }
  void StartMember(TJSONName Name, std::size_t Value) {
    StartItem(4 + (Name.IsPlain() ? Name.Text().size() : EscapedJSONSize(Name.Text())) + Value);
  }
  void StartItem(std::size_t Content) {
    ++FItems;
    FSize += 1 + 2 * FDepth + Content;
  }

  std::size_t FSize = 0;
  std::size_t FDepth = 0;
  std::size_t FItems = 0;  // of the object or array under way
};

/// Writes the pretty text of what TJSONObjectHelper would build, with no tree in between: it equals
/// `PrintJSON(..., TJSONLayout::Pretty)` of that tree, depth limit included. The bytes are put together in a block that
/// stays in the processor's cache and appended a block at a time, so that each page of a large text is touched once.
class OXSUPERAPI_EXPORT TJSONTextWriter : public TJSONAddOperations<TJSONTextWriter> {
 public:
  TJSONTextWriter(const TJSONTextWriter&) = delete;
  TJSONTextWriter& operator=(const TJSONTextWriter&) = delete;

  /// Append without a look at the value: what the add operations end in. @{
  void AppendString(TJSONName Name, std::string_view Text);
  void AppendBoolean(TJSONName Name, bool Value);
  /// @}

  /// As the operations of TJSONObjectHelper and TJSONArrayHelper. @{
  template <class FillObject>
  void Object(TJSONName Name, TAddNested When, FillObject Fill) {
    Add(&Name, When, "{}", Fill);
  }
  template <class FillArray>
  void Array(TJSONName Name, TAddNested When, FillArray Fill) {
    Add(&Name, When, "[]", Fill);
  }
  template <class FillObject>
  void Element(TAddNested When, FillObject Fill) {
    Add(nullptr, When, "{}", Fill);
  }
  /// @}

 private:
  // An object or array under way. It is opened once it has something to hold, so nothing is ever taken back.
  class TNest {
   public:
    // Without an outer one it is the root, without a name an element.
    TNest(TJSONTextWriter& Writer, const TJSONName* Name, const char* Brackets);
    ~TNest() { FWriter.FNest = FOuter; }  // also when filling it raises
    TNest(const TNest&) = delete;
    TNest& operator=(const TNest&) = delete;

    void Open();
    void Close();
    bool IsOpen() const { return FIsOpen; }
    std::size_t Depth() const { return FDepth; }

    // Before each member or element; true when it needs a comma.
    bool StartItem() {
      if (!FIsOpen) Open();
      return std::exchange(FIsFilled, true);
    }

   private:
    TJSONTextWriter& FWriter;
    TNest* const FOuter;
    const TJSONName* const FName;
    const char* const FBrackets;
    const std::size_t FDepth;
    bool FIsOpen = false;
    bool FIsFilled = false;
  };

  template <class Description>
  friend std::string JSONText(const char* Brackets, Description Describe);

  explicit TJSONTextWriter(std::string& Out) : FOut(Out) {}

  template <class FillNested>
  void Add(const TJSONName* Name, TAddNested When, const char* Brackets, FillNested& Fill) {
    TNest Nest(*this, Name, Brackets);
    if (When == TAddNested::Always) Nest.Open();
    Fill(*this);
    if (Nest.IsOpen()) Nest.Close();
  }

  char* StartItem(std::size_t Behind);
  char* StartMember(TJSONName Name, std::size_t Behind);
  void PutString(std::string_view Text);
  char* Room(std::size_t Size);
  void End(const char* Out);
  void Flush();

  static constexpr std::size_t BlockSize = 16 * 1024;
  static constexpr std::size_t LongText = BlockSize / 64;
  static bool IsLong(std::string_view Text) { return Text.size() > LongText; }

  std::string& FOut;
  std::size_t FUsed = 0;   // bytes of the block
  TNest* FNest = nullptr;  // the innermost
  std::array<char, BlockSize> FBlock;
};

/// The text of the object (Brackets "{}") or array ("[]") that `Describe` writes to the sink it is given: first to a
/// counter, so that the text takes exactly the room it needs and never grows by copying itself, then to a writer.
template <class Description>
std::string JSONText(const char* Brackets, Description Describe) {
  TJSONTextCounter Counter;
  Counter.Root(Describe);
  std::string Result;
  Result.reserve(Counter.Size());
  TJSONTextWriter Writer(Result);
  Writer.Add(nullptr, TAddNested::Always, Brackets, Describe);
  Writer.Flush();
  return Result;
}

}  // namespace oxSuperAPI
