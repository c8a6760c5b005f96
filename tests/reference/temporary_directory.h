#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI::tests {

/// A directory of the test's own, removed with everything in it.
class TTemporaryDirectory {
 public:
  TTemporaryDirectory() {
    if (!mkdtemp(FPath.data())) throw std::runtime_error("no temporary directory");
  }
  TTemporaryDirectory(const TTemporaryDirectory&) = delete;
  ~TTemporaryDirectory() { std::filesystem::remove_all(FPath); }

  std::string operator/(const std::string& Name) const { return FPath + "/" + Name; }
  std::string Write(const std::string& Name, const std::string& Content, mode_t Mode = 0600) const {
    const std::string File = *this / Name;
    std::ofstream(File, std::ios::binary) << Content;
    chmod(File.c_str(), Mode);
    return File;
  }

 private:
  std::string FPath = (std::filesystem::temp_directory_path() / "oxsuper-test-XXXXXX").string();
};

inline std::string ReadFile(const std::string& Name) {
  std::ostringstream Content;
  Content << std::ifstream(Name, std::ios::binary).rdbuf();
  return Content.str();
}

inline mode_t ModeOf(const std::string& Name) {
  struct stat Status {};
  return lstat(Name.c_str(), &Status) == 0 ? Status.st_mode & 07777 : 0;
}

/// What `Action` raises, "" when it raises nothing; an exception that is no TBeamError fails the test.
std::string ErrorOf(auto Run) try {
  Run();
  return {};
} catch (const TBeamError& Error) {
  return Error.what();
}

inline bool Holds(const std::string& Text, const std::string& Piece) {
  return Text.find(Piece) != std::string::npos;
}

}  // namespace oxSuperAPI::tests

/// Expects that `action` raises a TBeamError whose text holds `piece`.
#define EXPECT_ERROR(action, piece) \
  EXPECT_PRED2(::oxSuperAPI::tests::Holds, ::oxSuperAPI::tests::ErrorOf([&] { action; }), std::string(piece))
