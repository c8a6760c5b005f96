#include "findings.h"

namespace sandbox {

std::string Path::Text() const {
  std::string text = up != nullptr ? up->Text() : std::string();
  if (!text.empty() && !key.empty()) text += '.';
  text += key;
  if (index != kNoIndex) text += "[" + std::to_string(index) + "]";
  return text;
}

void Findings::Add(Severity severity, std::string_view context, std::string_view errorCode, std::string_view message,
                   const Path& path) {
  constexpr std::size_t kListed = 500;
  const bool error = severity == Severity::error;
  if ((error ? errors_ : warnings_)++ >= kListed) return;
  list_.push_back({{"context", context},
                   {"errorCode", errorCode},
                   {"message", message},
                   {"severity", error ? "Error" : "Warning"},
                   {"path", path.Text()}});
}

}  // namespace sandbox
