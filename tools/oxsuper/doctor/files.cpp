#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <filesystem>
#include <set>

#include "doctor/finding.h"
#include "oxSuperAPI/reference/db_open.h"
#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t Mebibyte = 1u << 20, LeastFree = 100 * Mebibyte, EnoughFree = 1024 * Mebibyte;

struct TOwnFile {
  std::string Subject;
  fs::path File;
  bool Required;
};

std::vector<TOwnFile> OwnFiles(const TPatient& Patient) {
  const TFilesConfig& Files = Patient.Config.files;
  const fs::path Directory = fs::path(Patient.ConfigFile).parent_path();
  std::vector<TOwnFile> Result{{"configuration file", Patient.ConfigFile, true},
                               {"key file", Files.key, true},
                               {"secrets file", Files.secrets, false},
                               {"record of submissions", Directory / "submissions.jsonl", false},
                               {"host log", Files.log, false}};
  for (const auto& [Subject, Address] :
       {std::pair{"common database", Files.common_database}, std::pair{"payroll database", Files.payroll_database}})
    if (const auto File = SQLiteFile(Address)) Result.push_back({Subject, *File, true});
  if (!Patient.Config.identity.customer_pin_file.empty())
    Result.push_back({"PIN file", Patient.Config.identity.customer_pin_file, true});
  return Result;
}

void CheckRights(const TOwnFile& Own, TFindings& Findings) try {
  if (!PathExists(Own.File.string())) {
    if (Own.Required)
      Findings.Problem(Own.Subject, Own.File.string() + " does not exist", "Run \"oxsuper init\", or restore it");
    return;
  }
  CheckPrivateFile(Own.File.string(), Own.Subject);
  Findings.OK(Own.Subject, Own.File.string() + " is yours alone");
} catch (const std::exception& Error) {
  Findings.Problem(Own.Subject, Error);
}

void CheckFolder(const fs::path& Folder, TFindings& Findings) {
  const std::string Subject = "folder " + Folder.string();
  struct stat Status {};
  struct statvfs Disk {};
  if (stat(Folder.c_str(), &Status) != 0 || statvfs(Folder.c_str(), &Disk) != 0)
    return Findings.Problem(Subject, "it cannot be examined", "Make it, or correct the configuration");
  if ((Status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
    Findings.Warning(Subject, "others may exchange the files in it", "Run \"chmod go-w " + Folder.string() + "\"");
  if (access(Folder.c_str(), W_OK) != 0)
    Findings.Problem(Subject, "nothing can be written in it", "Run as its owner, or correct its rights");
  const std::uint64_t Free = std::uint64_t{Disk.f_bavail} * Disk.f_frsize;
  const std::string Room = std::to_string(Free / Mebibyte) + " MiB are free on its disk";
  constexpr const char* Advice = "Make room: a call that cannot be logged fails";
  if (Free < LeastFree)
    Findings.Problem(Subject, Room, Advice);
  else if (Free < EnoughFree)
    Findings.Warning(Subject, Room, Advice);
  else
    Findings.OK(Subject, Room);
}

}  // namespace

void CheckFiles(const TPatient& Patient, TFindings& Findings) {
  std::set<fs::path> Folders;
  for (const TOwnFile& Own : OwnFiles(Patient)) {
    CheckRights(Own, Findings);
    Folders.insert(Own.File.parent_path());
  }
  for (const fs::path& Folder : Folders) CheckFolder(Folder, Findings);
}

}  // namespace oxSuperAPI
