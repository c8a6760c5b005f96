#include "oxSuperAPI/reference/system_linux.h"

#include <fcntl.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace oxSuperAPI {

namespace {

utsname Machine() {
  utsname Names{};
  if (uname(&Names) != 0) throw TBeamError("The machine does not tell its name");
  return Names;
}

}  // namespace

bool TLinuxSystem::ProcessIdToSessionId(std::uint32_t ProcessId, std::uint32_t& SessionId) const {
  SessionId = 0;
  if (ProcessId != GetCurrentProcessId()) return false;
  const int Terminal = open("/dev/tty", O_RDONLY | O_NOCTTY | O_CLOEXEC);
  if (Terminal < 0) return true;
  close(Terminal);
  const pid_t Session = getsid(0);
  if (Session > 0 && isatty(STDIN_FILENO)) SessionId = static_cast<std::uint32_t>(Session);
  return true;
}

std::string MachineName() {
  const std::string Name = Machine().nodename;
  return Name.substr(0, Name.find('.'));
}

std::string MachineDomain() {
  const std::string Name = Machine().nodename;
  const std::size_t Stop = Name.find('.');
  if (Stop != std::string::npos) return Name.substr(Stop + 1);
  char Domain[256] = "";
  if (getdomainname(Domain, sizeof Domain - 1) != 0) return {};
  return std::string(Domain) == "(none)" ? std::string() : std::string(Domain);
}

}  // namespace oxSuperAPI
