#include "oxSuperAPI/foundation/uBeamJSONTextWriter.h"

#include <algorithm>
#include <cstring>

#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/host/uHostJsonEscaping.h"

namespace oxSuperAPI {

namespace {

// Blanks of this many are copied in one go, wanted or not: the room behind them is written next.
constexpr std::size_t ManyBlanks = 32;
constexpr char Blanks[ManyBlanks + 1] = "                                ";

char* WriteBlanks(char* Out, std::size_t Count) {
  std::memcpy(Out, Blanks, ManyBlanks);
  if (Count > ManyBlanks) std::memset(Out + ManyBlanks, ' ', Count - ManyBlanks);
  return Out + Count;
}

// As std::memcpy, without a call.
[[gnu::always_inline]] inline char* CopyText(char* Out, std::string_view Text) {
  CopyPlainJSON(Out, Text);
  return Out + Text.size();
}

}  // namespace

// At most half a block.
inline char* TJSONTextWriter::Room(std::size_t Size) {
  if (Size > BlockSize - FUsed) Flush();
  return FBlock.data() + FUsed;
}

inline void TJSONTextWriter::End(const char* Out) {
  FUsed = static_cast<std::size_t>(Out - FBlock.data());
}

// Comma, line break and blanks. The result has `Behind` bytes of room.
inline char* TJSONTextWriter::StartItem(std::size_t Behind) {
  const bool Comma = FNest->StartItem();
  const std::size_t Indent = 2 * FNest->Depth();
  char* Out = Room(2 + Indent + ManyBlanks + Behind);
  *Out = ',';
  Out += Comma;
  *Out++ = '\n';
  return WriteBlanks(Out, Indent);
}

// The same, and the name with its colon.
inline char* TJSONTextWriter::StartMember(TJSONName Name, std::size_t Behind) {
  char* Out = nullptr;
  if (IsLong(Name.Text())) {
    End(StartItem(0));
    PutString(Name.Text());
    Out = Room(2 + Behind);
  } else {
    Out = StartItem(MaxEscapedByte * Name.Text().size() + 4 + Behind);
    *Out++ = '"';
    Out = Name.IsPlain() ? CopyText(Out, Name.Text()) : WriteEscapedJSON(Out, Name.Text());
    *Out++ = '"';
  }
  *Out++ = ':';
  *Out++ = ' ';
  return Out;
}

TJSONTextWriter::TNest::TNest(TJSONTextWriter& Writer, const TJSONName* Name, const char* Brackets)
    : FWriter(Writer), FOuter(Writer.FNest), FName(Name), FBrackets(Brackets), FDepth(FOuter ? FOuter->FDepth + 1 : 1) {
  if (FDepth > MaxJSONDepth) throw TBeamError("The JSON value is nested too deeply to be written");
  Writer.FNest = this;
}

[[gnu::noinline]] void TJSONTextWriter::TNest::Open() {
  FIsOpen = true;
  FWriter.FNest = FOuter;
  char* Out = !FOuter ? FWriter.Room(1) : FName ? FWriter.StartMember(*FName, 1) : FWriter.StartItem(1);
  *Out++ = FBrackets[0];
  FWriter.End(Out);
  FWriter.FNest = this;
}

void TJSONTextWriter::TNest::Close() {
  const std::size_t Indent = 2 * (FDepth - 1);
  char* Out = FWriter.Room(Indent + ManyBlanks + 2);
  if (FIsFilled) {
    *Out++ = '\n';
    Out = WriteBlanks(Out, Indent);
  }
  *Out++ = FBrackets[1];
  FWriter.End(Out);
}

[[gnu::flatten]] void TJSONTextWriter::AppendString(TJSONName Name, std::string_view Text) {
  if (IsLong(Text)) {
    End(StartMember(Name, 0));
    return PutString(Text);
  }
  char* Out = StartMember(Name, MaxEscapedByte * Text.size() + 2);
  *Out++ = '"';
  Out = WriteEscapedJSON(Out, Text);
  *Out++ = '"';
  End(Out);
}

void TJSONTextWriter::AppendBoolean(TJSONName Name, bool Value) {
  const std::string_view Text = Value ? "true" : "false";
  End(std::ranges::copy(Text, StartMember(Name, Text.size())).out);
}

[[gnu::noinline]] void TJSONTextWriter::PutString(std::string_view Text) {
  End(std::ranges::copy(std::string_view("\""), Room(1)).out);
  for (; !Text.empty(); Text.remove_prefix(std::min(LongText, Text.size())))
    End(WriteEscapedJSON(Room(MaxEscapedByte * LongText), Text.substr(0, LongText)));
  End(std::ranges::copy(std::string_view("\""), Room(1)).out);
}

[[gnu::noinline]] void TJSONTextWriter::Flush() {
  FOut.append(FBlock.data(), FUsed);
  FUsed = 0;
}

}  // namespace oxSuperAPI
