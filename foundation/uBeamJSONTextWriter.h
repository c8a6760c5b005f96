#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "oxSuperAPI/foundation/uBeamCompactText.h"
#include "oxSuperAPI/foundation/uBeamJSONAddOperations.h"
#include "oxSuperAPI/foundation/uBeamNumbers.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/host/uHostMemory.h"

namespace oxSuperAPI {

/// Counts the bytes of the text that TJSONTextWriter writes.
class OXSUPERAPI_EXPORT TJSONTextCounter : public TJSONAddOperations<TJSONTextCounter> {
 public:
  /// What was counted so far.
  std::size_t Size() const { return FSize; }

  /// As the operations of TJSONTextWriter. @{
  void AppendString(TJSONName Name, std::string_view Text) { StartMember(Name, EscapedJSONSize(Text) + 2); }
  [[gnu::always_inline]] void AppendString(TJSONName Name, const TBeamText& Text) {
    StartMember(Name, (Text.IsPlainJSON() ? Text.size() : EscapedJSONSize(Text)) + 2);
  }
  void AppendAmount(TJSONName Name, double Value) { StartMember(Name, FloatSize(Value) + 2); }
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
  [[gnu::always_inline]] void StartMember(TJSONName Name, std::size_t Value) {
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
  [[gnu::always_inline]] void AppendString(TJSONName Name, const TBeamText& Text) {
    if (!FNest->IsOpen()) FNest->Open();
    if (!Text.IsPlainJSON() || !IsShort(Name, Text.size())) return AppendString(Name, Text.view());
    EndString(Text.CopyTo(StartString(Name)));
  }
  [[gnu::always_inline]] void AppendAmount(TJSONName Name, double Value) {
    if (!FNest->IsOpen()) FNest->Open();
    if (!IsShort(Name, std::tuple_size_v<TBeamFloatText>)) return AppendLongAmount(Name, Value);
    EndString(WriteFloat(StartString(Name), Value));
  }
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
    TNest(TJSONTextWriter& Writer, const TJSONName* Name, const char* Brackets)
        : FWriter(Writer),
          FOuter(Writer.FNest),
          FName(Name),
          FBrackets(Brackets),
          FDepth(FOuter ? FOuter->FDepth + 1 : 1) {
      if (FDepth > MaxJSONDepth) throw TBeamError("The JSON value is nested too deeply to be written");
      Writer.Enter(this);
    }
    ~TNest() { FWriter.Enter(FOuter); }  // also when filling it raises
    TNest(const TNest&) = delete;
    TNest& operator=(const TNest&) = delete;

    void Open();
    void Close();
    bool IsOpen() const { return FIsOpen; }
    std::size_t Depth() const { return FDepth; }

    // Before each member or element of an open one; true when it needs a comma.
    bool StartItem() { return std::exchange(FIsFilled, true); }

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

  void Enter(TNest* Nest) {
    FNest = Nest;
    FIndent = Nest ? 2 * Nest->Depth() : 0;
  }
  template <class FillNested>
  void Add(const TJSONName* Name, TAddNested When, const char* Brackets, FillNested& Fill) {
    TNest Nest(*this, Name, Brackets);
    if (When == TAddNested::Always) Nest.Open();
    Fill(*this);
    if (Nest.IsOpen()) Nest.Close();
  }

  // The short way of writing a member that needs no look at its bytes: everything of it is copied in blocks of known
  // size, wanted or not, as the room behind it is written next.
  [[gnu::always_inline]] bool IsShort(TJSONName Name, std::size_t ValueSize) const {
    return Name.IsPlain() && FIndent + Name.Text().size() + ValueSize + Slack <= BlockSize - FUsed;
  }
  [[gnu::always_inline]] char* StartString(TJSONName Name) {
    char* Out = CopySeparator(FBlock.data() + FUsed, FIndent, FNest->StartItem());
    *Out++ = '"';
    std::memcpy(Out, Name.Text().data(), Name.Text().size());
    Out += Name.Text().size();
    std::memcpy(Out, "\": \"", 4);
    return Out + 4;
  }
  [[gnu::always_inline]] void EndString(char* Out) {
    *Out++ = '"';
    End(Out);
  }
  // Comma, line break and blanks. Overwrites SeparatorSize + Indent bytes.
  [[gnu::always_inline]] static char* CopySeparator(char* Out, std::size_t Indent, bool WithComma) {
    const std::size_t Left = WithComma ? 0 : 1;
    std::memcpy(Out, Separator + Left, SeparatorSize);
    if (Indent >= SeparatorSize - 2) [[unlikely]]
      std::memset(Out + SeparatorSize, ' ', Indent);
    return Out + 2 - Left + Indent;
  }
  void AppendLongAmount(TJSONName Name, double Value);

  char* StartItem(std::size_t Behind);
  char* StartMember(TJSONName Name, std::size_t Behind);
  void PutString(std::string_view Text);
  char* Room(std::size_t Size);
  void End(const char* Out) { FUsed = static_cast<std::size_t>(Out - FBlock.data()); }
  void Flush();

  static constexpr std::size_t SeparatorSize = 32;
  static constexpr char Separator[SeparatorSize + 2] = ",\n                               ";
  static constexpr std::size_t BlockSize = 16 * 1024;
  static constexpr std::size_t Slack = SeparatorSize + 6 + TBeamText::CopySlack;
  static constexpr std::size_t LongText = BlockSize / 64;
  static bool IsLong(std::string_view Text) { return Text.size() > LongText; }

  std::string& FOut;
  std::size_t FUsed = 0;    // bytes of the block
  TNest* FNest = nullptr;   // the innermost
  std::size_t FIndent = 0;  // of its items
  std::array<char, BlockSize> FBlock;
};

/// The text of the object (Brackets "{}") or array ("[]") that `Describe` writes to the sink it is given: first to a
/// counter, so that the text takes exactly the room it needs and never grows by copying itself, then to a writer.
template <class Description>
std::string JSONText(const char* Brackets, Description Describe) {
  TJSONTextCounter Counter;
  Counter.Root(Describe);
  std::string Result;
  ReserveText(Result, Counter.Size());
  TJSONTextWriter Writer(Result);
  Writer.Add(nullptr, TAddNested::Always, Brackets, Describe);
  Writer.Flush();
  return Result;
}

}  // namespace oxSuperAPI
