#pragma once

#include <cstdint>
#include <limits>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "loopback.h"

namespace oxSuperAPI::tests {

// Pieces of an answer, to be joined with "+".

/// A result set. Columns as "cName nvarchar(20)"; the types are int, nvarchar(n), nvarchar(max) and datetime2(3).
std::string TDSRows(const std::vector<std::string>& Columns,
                    const std::vector<std::vector<std::optional<std::string>>>& Rows);
/// The end of a statement that changed rows.
std::string TDSCount(std::uint64_t Rows);
/// The end of a statement that failed.
std::string TDSError(std::uint32_t Number, std::uint8_t Class, std::string_view Text);

/// What goes wrong with a statement.
enum class TTDSFault : std::uint8_t {
  None,
  EndsBeforeAnswer,  ///< with the connection; the statement may have run
  EndsInAnswer,      ///< half of it is sent
  EndsAfterAnswer,   ///< an idle connection that the server gives up
  NeverAnswers,      ///< until the client cancels, which is confirmed
};

/// How a statement is answered whose text contains `Contains`.
struct TTDSStep {
  std::string Contains;
  std::string Answer = TDSCount(1);
  TTDSFault Fault = TTDSFault::None;
  int Times = std::numeric_limits<int>::max();
};

/// A statement as it came; "login" for a login.
struct TTDSStatement {
  int Connection;  ///< counted from 1
  std::string SQL;
  /// "nvarchar(3)=abc", "nvarchar(max)=...", "int(4)=-1", "datetime2(7)=2024-02-29 23:59:59.9990000", "...=NULL"
  std::vector<std::string> Parameters;
};

/// A server on loopback that speaks just enough TDS 7.4 for a driver to log in and run statements. It understands none:
/// the first step that fits is the answer, else the number that a "select" asks for, else "one row changed". The
/// password "wrong" is refused.
class TTDSServer {
 public:
  explicit TTDSServer(std::vector<TTDSStep> Steps);

  /// For the FreeTDS driver.
  std::string ConnectionString() const;
  std::vector<TTDSStatement> Statements(std::string_view Containing) const;
  std::atomic<int> Connections = 0;

 private:
  void Serve(int Socket, int Connection);
  TTDSStep TakeStep(const TTDSStatement& Statement);

  mutable std::mutex FMutex;
  std::vector<TTDSStep> FSteps;
  std::vector<TTDSStatement> FStatements;
  TLoopback FLoopback;
};

}  // namespace oxSuperAPI::tests
