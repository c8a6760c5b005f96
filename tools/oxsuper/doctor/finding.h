#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/reference/config_toml.h"

namespace oxSuperAPI {

enum class TGrade : std::uint8_t { OK, Warning, Problem };

/// What a check found out. Holds no secret and nobody's data.
struct TDoctorFinding {
  TGrade Grade = TGrade::OK;
  std::string Subject;  ///< "proxy"
  std::string What;
  std::string Advice;  ///< what to do; "" for OK
};

class TFindings {
 public:
  void OK(std::string Subject, std::string What) { Add(TGrade::OK, std::move(Subject), std::move(What), ""); }
  void Warning(std::string Subject, std::string What, std::string Advice) {
    Add(TGrade::Warning, std::move(Subject), std::move(What), std::move(Advice));
  }
  void Problem(std::string Subject, std::string What, std::string Advice) {
    Add(TGrade::Problem, std::move(Subject), std::move(What), std::move(Advice));
  }
  /// The text of an error, which names what is wrong.
  void Problem(std::string Subject, const std::exception& Error) {
    Problem(std::move(Subject), Error.what(), "Correct what it names, then run this again");
  }

  const std::vector<TDoctorFinding>& All() const { return FFindings; }
  void Append(const TFindings& Others) {
    FFindings.insert(FFindings.end(), Others.FFindings.begin(), Others.FFindings.end());
  }

 private:
  void Add(TGrade Grade, std::string Subject, std::string What, std::string Advice) {
    FFindings.push_back({Grade, std::move(Subject), std::move(What), std::move(Advice)});
  }
  std::vector<TDoctorFinding> FFindings;
};

/// What every check works on. Each check opens for itself what it needs, so that one that hangs holds up no other.
struct TPatient {
  std::string ConfigFile;
  TReferenceConfig Config;
  TBeamSuperEnvironment Environment = bsenvUnknown;
};

// The checks. None changes anything here or at the service; each may raise, which counts as a problem of its own.

/// Contradictions and omissions within the configuration.
void CheckConfiguration(const TPatient& Patient, TFindings& Findings);
/// Rights of the files and their folders, and the room on their disks.
void CheckFiles(const TPatient& Patient, TFindings& Findings);
/// The cipher's key, and whether it opens the stored secrets.
void CheckSecrets(const TPatient& Patient, TFindings& Findings);
/// Both databases: can they be opened, do they have their tables, may we write.
void CheckDatabases(const TPatient& Patient, TFindings& Findings);
/// Whether the customer is activated, and until when.
void CheckCredentials(const TPatient& Patient, TFindings& Findings);
/// The client certificate, when there is one.
void CheckClientCertificate(const TPatient& Patient, TFindings& Findings);
/// Proxy, reachability, certificates and clock, by one health check without any credentials.
void CheckService(const TPatient& Patient, TFindings& Findings);

}  // namespace oxSuperAPI
