#pragma once

#include <cstdint>
#include <string>

#include "oxSuperAPI/host/uHostSystem.h"

namespace oxSuperAPI {

/// The machine's clock, zone and identifiers; on Linux a person is at the keyboard only when there is a terminal.
class OXSUPERAPI_EXPORT TLinuxSystem final : public THostSystem {
 public:
  /// Session 0, a service, unless the process has a controlling terminal and its standard input is a terminal: then
  /// the id of its session. So cron jobs, units, pipes and remote commands without a terminal show no editors.
  /// False for any process but this one.
  bool ProcessIdToSessionId(std::uint32_t ProcessId, std::uint32_t& SessionId) const override;
};

/// The machine's name up to its first full stop, and its domain: what follows that full stop, or else the domain that
/// the administrator set, or "". No name server is asked. @{
OXSUPERAPI_EXPORT std::string MachineName();
OXSUPERAPI_EXPORT std::string MachineDomain();
/// @}

}  // namespace oxSuperAPI
