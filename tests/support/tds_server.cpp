#include "tds_server.h"

#include <iconv.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace oxSuperAPI::tests {

namespace {

enum TPacket : std::uint8_t { Batch = 1, RPC = 3, Answer, Attention = 6, Login = 16, Prelogin = 18 };
enum TToken : std::uint8_t {
  Metadata = 0x81,
  Error = 0xAA,
  LoginAck = 0xAD,
  Row = 0xD1,
  EnvChange = 0xE3,
  Done = 0xFD
};
enum TType : std::uint8_t { IntN = 0x26, DateTime2 = 0x2A, NText = 0x63, NVarChar = 0xE7 };
enum TDone : std::uint8_t { Final = 0, More = 1, Failed = 2, Counted = 0x10, Cancelled = 0x20 };

constexpr std::string_view Collation("\x09\x04\xD0\x00\x34", 5);
constexpr std::chrono::sys_days DayOne = std::chrono::year(1) / 1 / 1;
constexpr std::uint64_t NoText = ~std::uint64_t{0};

struct TEnd {};  // of a connection

// The lowest bytes of a number, the very lowest first.
std::string Bytes(std::uint64_t Number, int Size) {
  std::string Result;
  for (; Size > 0; --Size, Number >>= 8) Result += static_cast<char>(Number & 0xFF);
  return Result;
}
std::uint64_t Number(std::string_view Text) {
  std::uint64_t Result = 0;
  for (auto Byte = Text.rbegin(); Byte != Text.rend(); ++Byte) Result = Result << 8 | static_cast<std::uint8_t>(*Byte);
  return Result;
}

std::string Convert(const char* To, const char* From, std::string_view Text) {
  std::string In(Text), Result(Text.size() * 2, '\0');
  char *Source = In.data(), *Target = Result.data();
  std::size_t Left = In.size(), Room = Result.size();
  const iconv_t Converter = iconv_open(To, From);
  const std::size_t Count = iconv(Converter, &Source, &Left, &Target, &Room);
  iconv_close(Converter);
  if (Count == static_cast<std::size_t>(-1)) return "(not " + std::string(From) + ")";
  Result.resize(Result.size() - Room);
  return Result;
}
std::string ToUTF8(std::string_view Text) {
  return Convert("UTF-8", "UTF-16LE", Text);
}
// After its number of characters.
std::string Counted16(std::string_view Text, int Size = 1) {
  const std::string Wide = Convert("UTF-16LE", "UTF-8", Text);
  return Bytes(Wide.size() / 2, Size) + Wide;
}

std::string WithSize(TToken Token, const std::string& Body) {
  return Bytes(Token, 1) + Bytes(Body.size(), 2) + Body;
}
std::string DoneToken(unsigned Status, std::uint64_t Rows = 0) {
  return Bytes(Done, 1) + Bytes(Status, 2) + Bytes(0, 2) + Bytes(Rows, 8);
}

// Milliseconds on the way out, units of 100 ns on the way in: what the column has, and what the driver binds.
std::string DateTimeBytes(const std::string& Text) {
  int Year = 0;
  unsigned Month = 0, Day = 0, Hour = 0, Minute = 0, Second = 0, Part = 0;
  std::sscanf(Text.c_str(), "%d-%u-%u %u:%u:%u.%u", &Year, &Month, &Day, &Hour, &Minute, &Second, &Part);
  const std::chrono::sys_days Date = std::chrono::year(Year) / std::chrono::month(Month) / std::chrono::day(Day);
  return Bytes(((Hour * 60 + Minute) * 60 + Second) * 1000 + Part, 4) +
         Bytes(static_cast<std::uint64_t>((Date - DayOne).count()), 3);
}
std::string DateTimeText(std::string_view Raw) {
  const auto Ticks = static_cast<unsigned long long>(Number(Raw.substr(0, 5))), Seconds = Ticks / 10'000'000;
  const std::chrono::year_month_day Date = DayOne + std::chrono::days(Number(Raw.substr(5)));
  char Text[64];
  std::snprintf(Text, sizeof Text, "%04d-%02u-%02u %02llu:%02llu:%02llu.%07llu", int(Date.year()),
                unsigned(Date.month()), unsigned(Date.day()), Seconds / 3600, Seconds / 60 % 60, Seconds % 60,
                Ticks % 10'000'000);
  return Text;
}

std::string TypeInfo(const std::string& Type) {
  if (Type == "int") return Bytes(IntN, 1) + Bytes(4, 1);
  if (Type == "datetime2(3)") return Bytes(DateTime2, 1) + Bytes(3, 1);
  const std::uint64_t Size = Type == "nvarchar(max)" ? 0xFFFF : 2 * std::stoul(Type.substr(Type.find('(') + 1));
  return Bytes(NVarChar, 1) + Bytes(Size, 2).append(Collation);
}
std::string Value(const std::string& Type, const std::optional<std::string>& Text) {
  if (!Text) return Type == "nvarchar(max)" ? Bytes(NoText, 8) : Type[0] == 'n' ? Bytes(NoText, 2) : Bytes(0, 1);
  if (Type == "int") return Bytes(4, 1) + Bytes(static_cast<std::uint64_t>(std::stoll(*Text)), 4);
  if (Type == "datetime2(3)") return Bytes(7, 1) + DateTimeBytes(*Text);
  const std::string Wide = Convert("UTF-16LE", "UTF-8", *Text);
  if (Type != "nvarchar(max)") return Bytes(Wide.size(), 2) + Wide;
  return Bytes(Wide.size(), 8) + (Wide.empty() ? "" : Bytes(Wide.size(), 4) + Wide) + Bytes(0, 4);
}

// Reads what a driver sent. What it does not know ends the connection.
class TReader {
 public:
  explicit TReader(std::string_view Text) : FRest(Text) {}
  bool AtEnd() const { return FRest.empty(); }
  std::string_view Take(std::size_t Size) {
    if (Size > FRest.size()) throw TEnd();
    const std::string_view Result = FRest.substr(0, Size);
    FRest.remove_prefix(Size);
    return Result;
  }
  std::size_t Int(std::size_t Size) { return Number(Take(Size)); }

  // As "type=value".
  std::string Parameter() {
    Take(Int(1) * 2 + 1);  // name and flags
    const std::size_t Type = Int(1), Width = Int(Type == NText ? 4 : Type == NVarChar ? 2 : 1);
    if (Type == NVarChar || Type == NText) {
      Take(Collation.size());
      if (Type == NVarChar && Width == 0xFFFF) return "nvarchar(max)=" + LongText();
      const std::size_t Size = Int(Type == NText ? 4 : 2);
      return "nvarchar(" + std::to_string(Width / 2) + ")=" + (Size == 0xFFFF ? "NULL" : ToUTF8(Take(Size)));
    }
    const std::string_view Raw = Take(Int(1));
    const std::string Size = "(" + std::to_string(Width) + ")=";
    if (Type == DateTime2) return "datetime2" + Size + (Raw.empty() ? "NULL" : DateTimeText(Raw));
    if (Type != IntN) throw TEnd();
    const std::uint64_t Sign = Raw.empty() || !(Raw.back() & 0x80) ? 0 : NoText << (8 * Raw.size() - 1);
    return "int" + Size + (Raw.empty() ? "NULL" : std::to_string(static_cast<std::int64_t>(Number(Raw) | Sign)));
  }

 private:
  std::string LongText() {
    if (Int(8) == NoText) return "NULL";
    std::string Wide;
    for (std::size_t Size = Int(4); Size > 0; Size = Int(4)) Wide += Take(Size);
    return ToUTF8(Wide);
  }

  std::string_view FRest;
};

// One client.
struct TClient {
  const std::atomic<bool>& IsStopping;
  const int Socket;

  std::string Receive(std::size_t Size) const {
    std::string Result(Size, '\0');
    for (std::size_t Have = 0; Have < Size;) {
      // Waits in small portions, so that the server can be stopped.
      for (pollfd Wait{Socket, POLLIN, 0}; poll(&Wait, 1, 2) == 0;)
        if (IsStopping) throw TEnd();
      const ssize_t Count = recv(Socket, Result.data() + Have, Size - Have, 0);
      if (Count <= 0) throw TEnd();
      Have += static_cast<std::size_t>(Count);
    }
    return Result;
  }
  // A message and its kind.
  std::pair<int, std::string> Receive() const {
    for (std::string Message;;) {
      const std::string Header = Receive(8);
      Message += Receive(std::max<std::size_t>(Number(std::string{Header[3], Header[2]}), 8) - 8);
      if (Header[1] & 1) return {Header[0], Message};
    }
  }
  void Send(const std::string& Message, bool IsCut = false) const {
    constexpr std::size_t Most = 4088;
    std::string Packets;
    for (std::size_t From = 0; From < Message.size(); From += Most) {
      const std::string Part = Message.substr(From, Most);
      Packets += Bytes(Answer, 1) + Bytes(From + Most >= Message.size(), 1) + Bytes((Part.size() + 8) >> 8, 1) +
                 Bytes(Part.size() + 8, 1) + Bytes(0, 4) + Part;
    }
    if (IsCut) Packets.resize(Packets.size() / 2);
    for (std::size_t Sent = 0; Sent < Packets.size();) {
      const ssize_t Count = send(Socket, Packets.data() + Sent, Packets.size() - Sent, MSG_NOSIGNAL);
      if (Count <= 0) throw TEnd();
      Sent += static_cast<std::size_t>(Count);
    }
  }

  // True when `Step` lets the client in.
  bool LogIn(const TTDSStep& Step) const {
    if (Receive().first != Prelogin) return false;
    // Two options, each with the place and size of its value: version 13, no encryption.
    Send(std::string("\0\0\x0B\0\6\1\0\x11\0\1\xFF\x0D\0\0\0\0\0\2", 18));
    if (Receive().first != Login) return false;
    const bool IsRefused = !Step.Contains.empty();
    Send(IsRefused ? Step.Answer + DoneToken(Failed)
                   : WithSize(EnvChange, Bytes(0x0507, 2) + std::string(Collation) + Bytes(0, 1)) +
                         WithSize(LoginAck, Bytes(0x0400007401, 5) + Counted16("Microsoft SQL Server") + Bytes(13, 4)) +
                         DoneToken(Final));
    return !IsRefused;
  }
};

}  // namespace

std::string TDSRows(const std::vector<std::string>& Columns,
                    const std::vector<std::vector<std::optional<std::string>>>& Rows) {
  std::string Result = Bytes(Metadata, 1) + Bytes(Columns.size(), 2);
  const auto TypeOf = [](const std::string& Column) { return Column.substr(Column.find(' ') + 1); };
  for (const std::string& Column : Columns)
    Result += Bytes(0, 4) + Bytes(1, 2) + TypeInfo(TypeOf(Column)) + Counted16(Column.substr(0, Column.find(' ')));
  for (const auto& Values : Rows) {
    Result += Bytes(Row, 1);
    for (std::size_t Index = 0; Index < Columns.size(); ++Index) Result += Value(TypeOf(Columns[Index]), Values[Index]);
  }
  return Result + DoneToken(More | Counted, Rows.size());
}

std::string TDSCount(std::uint64_t Rows) {
  return DoneToken(More | Counted, Rows);
}

std::string TDSError(std::uint32_t Number, std::uint8_t Class, std::string_view Text) {
  return WithSize(Error, Bytes(Number, 4) + Bytes(1, 1) + Bytes(Class, 1) + Counted16(Text, 2) + Bytes(0, 6)) +
         DoneToken(More | Failed);
}

TTDSServer::TTDSServer(std::vector<TTDSStep> Steps) : FSteps(std::move(Steps)) {
  FLoopback.Start([this](int Socket) {
    try {
      Serve(Socket, ++Connections);
    } catch (const TEnd&) {
    }
  });
}

std::string TTDSServer::ConnectionString() const {
  return "DRIVER=FreeTDS;SERVER=127.0.0.1;PORT=" + std::to_string(FLoopback.Port()) +
         ";UID=someone;PWD=s3cret;DATABASE=payroll;TDS_Version=7.4;ClientCharset=UTF-8";
}

std::vector<TTDSStatement> TTDSServer::Statements(std::string_view Containing) const {
  const std::scoped_lock Lock(FMutex);
  std::vector<TTDSStatement> Result;
  for (const TTDSStatement& Statement : FStatements)
    if (Statement.SQL.find(Containing) != std::string::npos) Result.push_back(Statement);
  return Result;
}

TTDSStep TTDSServer::TakeStep(const TTDSStatement& Statement) {
  const std::scoped_lock Lock(FMutex);
  FStatements.push_back(Statement);
  for (TTDSStep& Step : FSteps)
    if (Step.Times > 0 && Statement.SQL.find(Step.Contains) != std::string::npos) return --Step.Times, Step;
  if (!Statement.SQL.starts_with("select ")) return {};
  return {{}, TDSRows({"Number int"}, {{Statement.SQL.substr(7)}})};
}

void TTDSServer::Serve(int Socket, int Connection) {
  const TClient Client{FLoopback.IsStopping(), Socket};
  if (!Client.LogIn(TakeStep({Connection, "login", {}}))) return;
  for (;;) {
    const auto [Kind, Message] = Client.Receive();
    if (Kind == Attention) {
      Client.Send(DoneToken(Cancelled));
      continue;
    }
    TReader Request(Message);
    const std::size_t Headers = Request.Int(4);
    Request.Take(Headers - 4);
    TTDSStatement Statement{Connection, {}, {}};
    std::string Handle;
    if (Kind == Batch) {
      Statement.SQL = ToUTF8(Message.substr(Headers));
    } else if (Kind == RPC && Request.Int(2) == 0xFFFF) {
      const std::size_t Procedure = Request.Int(2);
      Request.Take(2);
      std::vector<std::string>& Values = Statement.Parameters;
      while (!Request.AtEnd()) Values.push_back(Request.Parameter());
      if (Procedure == 15) {  // sp_unprepare
        Client.Send(DoneToken(Final));
        continue;
      }
      if (Procedure != 13 || Values.size() < 3) throw TEnd();
      // sp_prepexec: handle, types, statement, values
      Statement.SQL = Values[2].substr(Values[2].find('=') + 1);
      Values.erase(Values.begin(), Values.begin() + 3);
      Handle = std::string("\xAC\0\0\0\1\0\0\0\0\0\0\x26\4\4\1\0\0\0", 18);
    } else {
      throw TEnd();
    }

    const TTDSStep Step = TakeStep(Statement);
    if (Step.Fault == TTDSFault::EndsBeforeAnswer) throw TEnd();
    if (Step.Fault == TTDSFault::NeverAnswers) continue;
    Client.Send(Step.Answer + Handle + DoneToken(Final), Step.Fault == TTDSFault::EndsInAnswer);
    if (Step.Fault != TTDSFault::None) throw TEnd();
  }
}

}  // namespace oxSuperAPI::tests
