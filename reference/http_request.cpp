#include "oxSuperAPI/reference/http_request.h"

#include <algorithm>

namespace oxSuperAPI {

namespace {

constexpr std::string_view Scheme = "https://";

[[noreturn]] void Refuse(const std::string& Text) {
  throw THTTPError(Text + ". Nothing was sent", TRequestFate::NotSent);
}

char Lower(char Byte) {
  return Byte >= 'A' && Byte <= 'Z' ? static_cast<char>(Byte + ('a' - 'A')) : Byte;
}

std::string Lower(std::string_view Text) {
  std::string Result(Text);
  std::transform(Result.begin(), Result.end(), Result.begin(), [](char Byte) { return Lower(Byte); });
  return Result;
}

bool IsControl(char Byte) {
  return static_cast<unsigned char>(Byte) < 0x20 || Byte == 0x7F;
}
bool HoldsControl(std::string_view Text) {
  return std::any_of(Text.begin(), Text.end(), IsControl);
}

bool IsAlphanumeric(char Byte) {
  return (Lower(Byte) >= 'a' && Lower(Byte) <= 'z') || (Byte >= '0' && Byte <= '9');
}
bool IsOneOf(char Byte, std::string_view Marks) {
  return Byte != '\0' && Marks.find(Byte) != std::string_view::npos;
}
bool IsHostByte(char Byte) {
  return IsAlphanumeric(Byte) || IsOneOf(Byte, ".-_:[]");
}
bool IsPathByte(char Byte) {
  return IsAlphanumeric(Byte) || IsOneOf(Byte, "-._~:/?@!$&'()*+,;=");
}
bool IsTokenByte(char Byte) {
  return IsAlphanumeric(Byte) || IsOneOf(Byte, "!#$%&'*+-.^_`|~");
}

bool IsEscape(std::string_view Text) {
  const auto IsHex = [](char Byte) { return IsAlphanumeric(Byte) && Lower(Byte) <= 'f'; };
  return Text.size() >= 3 && Text[0] == '%' && IsHex(Text[1]) && IsHex(Text[2]);
}

// A server may decode before it resolves, so escaped dots and slashes count like plain ones.
bool HasDotSegment(std::string_view Path) {
  std::string Segment;
  const auto IsDots = [&] { return Segment == "." || Segment == ".."; };
  for (std::size_t Index = 0; Index < Path.size(); ++Index) {
    char Byte = Path[Index];
    if (IsEscape(Path.substr(Index))) {
      const std::string Code = Lower(Path.substr(Index + 1, 2));
      Byte = Code == "2e" ? '.' : Code == "2f" || Code == "5c" ? '/' : '%';
      Index += 2;
    }
    if (Byte == '/' || Byte == '\\') {
      if (IsDots()) return true;
      Segment.clear();
    } else {
      Segment += Byte;
    }
  }
  return IsDots();
}

void AppendEncoded(std::string& Out, std::string_view Text) {
  static constexpr char Hex[] = "0123456789ABCDEF";
  for (std::size_t Index = 0; Index < Text.size(); ++Index) {
    if (IsPathByte(Text[Index]) || IsEscape(Text.substr(Index))) {
      Out += Text[Index];
    } else {
      const auto Byte = static_cast<unsigned char>(Text[Index]);
      Out += {'%', Hex[Byte >> 4], Hex[Byte & 15]};
    }
  }
}

}  // namespace

TWireURL EncodeURL(std::string_view URL) {
  if (HoldsControl(URL)) Refuse("The URL holds a control character");
  if (Lower(URL.substr(0, Scheme.size())) != Scheme) Refuse("The URL does not begin with https://");
  if (URL.find('#') != std::string_view::npos) Refuse("The URL holds a \"#\"");
  const std::string_view Rest = URL.substr(Scheme.size());
  const std::string_view Host = Rest.substr(0, Rest.find_first_of("/?"));
  if (Host.empty() || !std::all_of(Host.begin(), Host.end(), IsHostByte)) Refuse("The URL has no valid host name");
  const std::string_view Target = Rest.substr(Host.size());
  if (HasDotSegment(Target.substr(0, Target.find('?')))) Refuse("The path of the URL holds a \".\" or \"..\" segment");

  TWireURL Result{std::string(Scheme), std::string(Host)};
  Result.Text += Host;
  AppendEncoded(Result.Text, Target);
  return Result;
}

std::string HeaderName(std::string_view Line) {
  return Lower(Line.substr(0, Line.find(':')));
}

void CheckHeaders(const TStringList& Headers) {
  static constexpr std::string_view Transport[] = {"connection", "content-length",    "expect", "host",
                                                   "trailer",    "transfer-encoding", "upgrade"};
  std::size_t Number = 0;
  for (const std::string& Line : Headers) {
    const std::string Where = "Header line " + std::to_string(++Number);
    if (HoldsControl(Line)) Refuse(Where + " holds a control character");
    const std::string Name = HeaderName(Line);
    if (Name.empty() || Name.size() == Line.size() || !std::all_of(Name.begin(), Name.end(), IsTokenByte))
      Refuse(Where + " is not of the form \"name: value\"");
    if (std::find(std::begin(Transport), std::end(Transport), Name) != std::end(Transport))
      Refuse(Where + " (" + Name + ") belongs to the transport, which writes it itself");
  }
}

bool LooksLikeJSON(const TStringList& Body) {
  for (const std::string& Line : Body) {
    const std::size_t First = Line.find_first_not_of(" \t\r\n");
    if (First != std::string::npos) return Line[First] == '{' || Line[First] == '[';
  }
  return false;
}

}  // namespace oxSuperAPI
