#include "oxSuperAPI/foundation/uBeamJSONTextWriter.h"

#include <algorithm>
#include <cstring>

#include "oxSuperAPI/host/uHostJsonEscaping.h"

namespace oxSuperAPI {

namespace {

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

// Comma, line break and blanks. The result has `Behind` bytes of room.
inline char* TJSONTextWriter::StartItem(std::size_t Behind) {
  if (!FNest->IsOpen()) FNest->Open();
  return CopySeparator(Room(SeparatorSize + FIndent + Behind), FIndent, FNest->StartItem());
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

[[gnu::noinline]] void TJSONTextWriter::TNest::Open() {
  FIsOpen = true;
  FWriter.Enter(FOuter);
  char* Out = !FOuter ? FWriter.Room(1) : FName ? FWriter.StartMember(*FName, 1) : FWriter.StartItem(1);
  *Out++ = FBrackets[0];
  FWriter.End(Out);
  FWriter.Enter(this);
}

void TJSONTextWriter::TNest::Close() {
  const std::size_t Indent = 2 * (FDepth - 1);
  char* Out = FWriter.Room(Indent + 2);
  if (FIsFilled) {
    *Out++ = '\n';
    Out = std::fill_n(Out, Indent, ' ');
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

[[gnu::noinline]] void TJSONTextWriter::AppendLongAmount(TJSONName Name, double Value) {
  TBeamFloatText Text;
  AppendString(Name, {Text.data(), WriteFloat(Text.data(), Value)});
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
