#include "sandbox_process.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fstream>
#include <iterator>
#include <thread>
#include <vector>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/reference/private_file.h"
#include "tool.h"

extern char** environ;

namespace oxSuperAPI {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto StartTimeout = 15s;
constexpr auto StopTimeout = 10s;

fs::path Folder(const fs::path& Directory) {
  return Directory / "sandbox";
}
fs::path RecordFile(const fs::path& Directory) {
  return Folder(Directory) / "process.json";
}

/// Field 22 of /proc/PID/stat: clock ticks from the machine's start to the process's. "" when there is no such process.
std::string StartTimeOf(int Pid) {
  std::ifstream File("/proc/" + std::to_string(Pid) + "/stat");
  std::string Text((std::istreambuf_iterator<char>(File)), {});
  const std::size_t Name = Text.rfind(')');  // the name before it may hold anything
  if (Name == std::string::npos) return "";
  std::size_t At = Name;
  for (int Field = 2; Field < 22 && At != std::string::npos; ++Field) At = Text.find(' ', At + 1);
  const bool Zombie = Text.compare(Name + 2, 1, "Z") == 0;
  if (At == std::string::npos || Zombie) return "";
  return Text.substr(At + 1, Text.find(' ', At + 1) - At - 1);
}

std::string FindProgram(const std::string& Wanted) {
  if (!Wanted.empty()) return Wanted;
  std::error_code Ignored;
  const fs::path Beside = fs::read_symlink("/proc/self/exe", Ignored).parent_path() / "beam-sandbox";
  return fs::exists(Beside, Ignored) ? Beside.string() : "beam-sandbox";  // the latter through $PATH
}

std::string HostOf(std::string_view URL) {
  constexpr std::string_view Scheme = "https://";
  const std::string_view Host = URL.substr(Scheme.size(), URL.find_first_of(":/", Scheme.size()) - Scheme.size());
  return std::string(Host);
}

struct TFile {
  int Handle = -1;
  ~TFile() { Close(); }
  void Close() {
    if (Handle >= 0) ::close(Handle);
    Handle = -1;
  }
};

/// The first line that arrives within the time, or what there is of it when the writer ends.
std::string ReadLine(int Handle) {
  const auto End = std::chrono::steady_clock::now() + StartTimeout;
  std::string Line;
  while (Line.find('\n') == std::string::npos) {
    const auto Left = std::chrono::duration_cast<std::chrono::milliseconds>(End - std::chrono::steady_clock::now());
    pollfd Poll{Handle, POLLIN, 0};
    if (Left.count() <= 0 || ::poll(&Poll, 1, static_cast<int>(Left.count())) <= 0) break;
    char Buffer[512];
    const auto Count = ::read(Handle, Buffer, sizeof Buffer);
    if (Count <= 0) break;
    Line.append(Buffer, static_cast<std::size_t>(Count));
  }
  return Line;
}

int Spawn(std::vector<std::string> Arguments, int Output, const fs::path& ErrorFile) {
  std::vector<char*> Pointers;
  for (std::string& Argument : Arguments) Pointers.push_back(Argument.data());
  Pointers.push_back(nullptr);
  posix_spawn_file_actions_t Actions;
  posix_spawn_file_actions_init(&Actions);
  posix_spawn_file_actions_addopen(&Actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&Actions, Output, STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&Actions, STDERR_FILENO, ErrorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawnattr_t Attributes;
  posix_spawnattr_init(&Attributes);
  posix_spawnattr_setflags(&Attributes, POSIX_SPAWN_SETSID);  // an interrupt of the tool is not one of the sandbox
  pid_t Pid = 0;
  const int Problem = ::posix_spawnp(&Pid, Pointers[0], &Actions, &Attributes, Pointers.data(), environ);
  posix_spawn_file_actions_destroy(&Actions);
  posix_spawnattr_destroy(&Attributes);
  if (Problem != 0)
    throw TToolError(exitFailed, "Cannot start " + Arguments[0] + ": " + std::strerror(Problem) +
                                     " (build the target beam-sandbox, or name it with --program)");
  return Pid;
}

std::string Tail(const fs::path& File) {
  std::ifstream Stream(File);
  std::string Text((std::istreambuf_iterator<char>(Stream)), {});
  constexpr std::size_t MaxLength = 500;
  return Text.size() > MaxLength ? Text.substr(Text.size() - MaxLength) : Text;
}

void WriteRecord(const fs::path& Directory, const TSandboxProcess& Process) {
  TJSONObject Record;
  Record.Append("pid", TJSONValue(TJSONNumber{std::to_string(Process.Pid)}));
  Record.Append("port", TJSONValue(TJSONNumber{std::to_string(Process.Port)}));
  Record.Append("ca", TJSONValue(Process.CAFile));
  Record.Append("startTime", TJSONValue(Process.StartTime));
  ReplacePrivateFile(RecordFile(Directory).string(), "sandbox record", PrintJSON(Record, TJSONLayout::Compact) + "\n");
}

}  // namespace

std::optional<TSandboxProcess> FindSandbox(const fs::path& Directory, TJSONParser& Parser) {
  const std::string File = RecordFile(Directory).string();
  if (!PathExists(File)) return std::nullopt;
  constexpr std::size_t MaxBytes = 1u << 16;
  const auto Record = Parser.Parse(ReadPrivateFile(File, "sandbox record", MaxBytes));
  if (!Record) return std::nullopt;
  TSandboxProcess Process;
  Process.Pid = TBeamAPIHelper::SafeJsonInteger(*Record, "pid");
  Process.Port = static_cast<unsigned short>(TBeamAPIHelper::SafeJsonInteger(*Record, "port"));
  Process.CAFile = TBeamAPIHelper::SafeJsonValue(*Record, "ca");
  Process.StartTime = TBeamAPIHelper::SafeJsonValue(*Record, "startTime");
  const bool Ours = Process.Pid > 1 && !Process.StartTime.empty() && StartTimeOf(Process.Pid) == Process.StartTime;
  return Ours ? std::optional(Process) : std::nullopt;
}

TSandboxProcess StartSandbox(const TSandboxStart& Start, TJSONParser& Parser) {
  const fs::path Place = Folder(Start.Directory);
  if (fs::create_directories(Place)) fs::permissions(Place, fs::perms::owner_all);
  std::vector<std::string> Arguments{FindProgram(Start.Program),
                                     "--port",
                                     std::to_string(Start.Port),
                                     "--dir",
                                     Place.string(),
                                     "--state",
                                     (Place / "state.json").string(),
                                     "--time-step",
                                     std::to_string(Start.TimeStepSeconds),
                                     "--lifetime",
                                     std::to_string(Start.LifetimeSeconds)};
  for (const TBeamSuperEnvironment Environment : {bsenvIntgDev, bsenvAcptQa})
    Arguments.insert(Arguments.end(), {"--host", HostOf(BaseBeamURL[Environment])});

  int Ends[2];
  if (::pipe2(Ends, O_CLOEXEC) != 0) throw TToolError(exitFailed, std::string("No pipe: ") + std::strerror(errno));
  TFile Reader{Ends[0]}, Writer{Ends[1]};
  const fs::path ErrorFile = Place / "sandbox.log";
  TSandboxProcess Process;
  Process.Pid = Spawn(std::move(Arguments), Writer.Handle, ErrorFile);
  Writer.Close();
  Process.StartTime = StartTimeOf(Process.Pid);
  const auto Ready = Parser.Parse(ReadLine(Reader.Handle));
  if (!Ready || !TBeamAPIHelper::ValueAsBool(*Ready, "", "ready")) {
    ::kill(Process.Pid, SIGTERM);  // our own child, not waited for yet: the pid cannot be another's
    throw TToolError(exitFailed, "The sandbox did not get ready: " + Tail(ErrorFile));
  }
  Process.Port = static_cast<unsigned short>(TBeamAPIHelper::SafeJsonInteger(*Ready, "port"));
  Process.CAFile = TBeamAPIHelper::SafeJsonValue(*Ready, "ca");
  WriteRecord(Start.Directory, Process);
  return Process;
}

bool StopSandbox(const fs::path& Directory, TJSONParser& Parser) {
  const std::optional<TSandboxProcess> Process = FindSandbox(Directory, Parser);
  if (Process) {
    if (::kill(Process->Pid, SIGTERM) != 0 && errno != ESRCH)
      throw TToolError(exitFailed, std::string("Cannot stop the sandbox: ") + std::strerror(errno));
    const auto End = std::chrono::steady_clock::now() + StopTimeout;
    while (StartTimeOf(Process->Pid) == Process->StartTime) {
      if (std::chrono::steady_clock::now() > End)
        throw TToolError(exitFailed, "The sandbox (process " + std::to_string(Process->Pid) + ") does not end");
      std::this_thread::sleep_for(20ms);
    }
  }
  std::error_code Ignored;
  fs::remove(RecordFile(Directory), Ignored);
  return Process.has_value();
}

unsigned short FreePort() {
  const TFile Socket{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  sockaddr_in Address{};
  Address.sin_family = AF_INET;
  Address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t Length = sizeof Address;
  const auto Pointer = reinterpret_cast<sockaddr*>(&Address);
  if (::bind(Socket.Handle, Pointer, Length) != 0 || ::getsockname(Socket.Handle, Pointer, &Length) != 0)
    throw TToolError(exitFailed, std::string("No free port: ") + std::strerror(errno));
  return ntohs(Address.sin_port);
}

}  // namespace oxSuperAPI
