#include "oxSuperAPI/reference/private_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace oxSuperAPI {

namespace {

class TDescriptor {
 public:
  explicit TDescriptor(int Value) : FValue(Value) {}
  TDescriptor(const TDescriptor&) = delete;
  TDescriptor& operator=(const TDescriptor&) = delete;
  ~TDescriptor() {
    if (FValue >= 0) close(FValue);
  }
  int Get() const { return FValue; }

 private:
  int FValue;
};

[[noreturn]] void Fail(std::string_view What, const std::string& Path, std::string_view Doing) {
  throw TBeamError(fmt::format("Cannot {} the {} {}: {}", Doing, What, Path, std::generic_category().message(errno)));
}

// The checks are made on the open file, so that it cannot be exchanged between check and use.
struct stat CheckOpened(int Descriptor, const std::string& Path, std::string_view What) {
  struct stat Status {};
  if (fstat(Descriptor, &Status) != 0) Fail(What, Path, "examine");
  if (!S_ISREG(Status.st_mode)) throw TBeamError(fmt::format("The {} {} is not a regular file", What, Path));
  if (Status.st_uid != geteuid())
    throw TBeamError(
        fmt::format("The {} {} belongs to another user (id {}): run as that user, or make a file of your own", What,
                    Path, Status.st_uid));
  if ((Status.st_mode & 077) != 0)
    throw TBeamError(
        fmt::format("The {0} {1} is open to other users (mode {2:04o}): run \"chmod 600 {1}\", and renew what it holds "
                    "if others may "
                    "have seen it",
                    What, Path, Status.st_mode & 07777));
  return Status;
}

int OpenForReading(const std::string& Path, std::string_view What) {
  // O_NONBLOCK: a pipe of that name must not block.
  const int Descriptor = open(Path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (Descriptor < 0 && errno == ELOOP)
    throw TBeamError(fmt::format("The {} {} is a symbolic link: name the file itself", What, Path));
  if (Descriptor < 0) Fail(What, Path, "open");
  return Descriptor;
}

void WriteAll(int Descriptor, std::string_view Content, const std::string& Path, std::string_view What) {
  while (!Content.empty()) {
    const ssize_t Written = write(Descriptor, Content.data(), Content.size());
    if (Written < 0 && errno == EINTR) continue;
    if (Written < 0) Fail(What, Path, "write");
    Content.remove_prefix(static_cast<std::size_t>(Written));
  }
  // A narrower umask takes rights away, none can add to 0600; the mode is set so that the owner always has both.
  if (fchmod(Descriptor, 0600) != 0 || fsync(Descriptor) != 0) Fail(What, Path, "write");
}

}  // namespace

std::string ReadPrivateFile(const std::string& Path, std::string_view What, std::size_t MaxBytes) {
  const TDescriptor File(OpenForReading(Path, What));
  const struct stat Status = CheckOpened(File.Get(), Path, What);
  if (static_cast<std::size_t>(Status.st_size) > MaxBytes)
    throw TBeamError(fmt::format("The {} {} is longer than {} bytes", What, Path, MaxBytes));
  // Filled to its final size at once: growing would leave pieces of a secret behind in freed memory.
  std::string Content(static_cast<std::size_t>(Status.st_size), '\0');
  std::size_t Read = 0;
  while (Read < Content.size()) {
    const ssize_t Count = read(File.Get(), Content.data() + Read, Content.size() - Read);
    if (Count < 0 && errno == EINTR) continue;
    if (Count < 0) Fail(What, Path, "read");
    if (Count == 0) break;
    Read += static_cast<std::size_t>(Count);
  }
  Content.resize(Read);
  return Content;
}

void CheckPrivateFile(const std::string& Path, std::string_view What) {
  const TDescriptor File(OpenForReading(Path, What));
  CheckOpened(File.Get(), Path, What);
}

void CreatePrivateFile(const std::string& Path, std::string_view What, std::string_view Content) {
  const TDescriptor File(open(Path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
  if (File.Get() < 0) Fail(What, Path, "create");
  try {
    WriteAll(File.Get(), Content, Path, What);
  } catch (...) {
    unlink(Path.c_str());
    throw;
  }
}

void ReplacePrivateFile(const std::string& Path, std::string_view What, std::string_view Content) {
  if (PathExists(Path)) CheckPrivateFile(Path, What);
  const std::string Fresh = fmt::format("{}.new-{}", Path, getpid());
  CreatePrivateFile(Fresh, What, Content);
  if (std::rename(Fresh.c_str(), Path.c_str()) != 0) {
    const int Error = errno;
    unlink(Fresh.c_str());
    errno = Error;
    Fail(What, Path, "replace");
  }
}

bool PathExists(const std::string& Path) {
  std::error_code Ignored;
  return std::filesystem::symlink_status(Path, Ignored).type() != std::filesystem::file_type::not_found;
}

}  // namespace oxSuperAPI
