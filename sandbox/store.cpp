#include "store.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "state_format.h"

namespace sandbox {
namespace {

/// The old contents or the new ones, never a mixture: also when the process dies in between.
void WriteWhole(const std::string& file, const std::string& text) {
  const std::string fresh = file + ".new";
  ::unlink(fresh.c_str());
  const int descriptor = ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  bool done = descriptor >= 0;
  for (std::size_t written = 0; done && written < text.size();) {
    const ssize_t count = ::write(descriptor, text.data() + written, text.size() - written);
    if (count < 0 && errno == EINTR) continue;
    done = count > 0;
    if (done) written += static_cast<std::size_t>(count);
  }
  done = done && ::fsync(descriptor) == 0;
  const int error = errno;
  if (descriptor >= 0) ::close(descriptor);
  if (!done) throw std::system_error(error, std::generic_category(), "Cannot write the state file " + fresh);
  if (std::rename(fresh.c_str(), file.c_str()) != 0)
    throw std::system_error(errno, std::generic_category(), "Cannot replace the state file " + file);
}

}  // namespace

Store::Store(std::string file) : file_(std::move(file)) {
  if (file_.empty()) return;
  std::ifstream stream(file_);
  if (!stream) return;  // not there yet; the first change makes it
  try {
    state_ = StateFrom(std::string(std::istreambuf_iterator<char>(stream), {}));
  } catch (const std::exception& error) {
    throw std::runtime_error("The state file " + file_ + " is not one of this program (" + error.what() +
                             "); move it away or name another file");
  }
}

void Store::Change(const std::function<bool(State&)>& change) {
  const std::lock_guard lock(mutex_);
  if (file_.empty()) {
    change(state_);
    return;
  }
  State next = state_;
  if (!change(next)) return;
  WriteWhole(file_, TextFrom(next));
  state_ = std::move(next);
}

void Store::Read(const std::function<void(const State&)>& read) const {
  const std::lock_guard lock(mutex_);
  read(state_);
}

}  // namespace sandbox
