#pragma once

#include <memory>

#include "oxSuperAPI/host/uHostDatabase.h"
#include "oxSuperAPI/reference/log_masking.h"

namespace oxSuperAPI {

/// A connection of whatever kind, with a second stage of masking before it: the texts of a row of the call log
/// (`_iptblBeamSuperLog`) pass through a TLogMasker on their way to the table. Everything else passes as it is.
class OXSUPERAPI_EXPORT TGuardedLogConnection final : public TADOConnection {
 public:
  /// The connection is borrowed. `Known` may be null.
  TGuardedLogConnection(TADOConnection& Connection, TLogMasking Masking, std::shared_ptr<TKnownSecrets> Known)
      : FConnection(Connection), FMasking(Masking), FKnown(std::move(Known)) {}

  std::unique_ptr<TADOQuery> Open(const TDBStatement& Statement) override;
  /// A statement that names the call log has its text parameters masked.
  void Execute(const TDBStatement& Statement) override;

 private:
  TADOConnection& FConnection;
  TLogMasking FMasking;
  std::shared_ptr<TKnownSecrets> FKnown;
};

}  // namespace oxSuperAPI
