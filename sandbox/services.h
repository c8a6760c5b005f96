#pragma once

#include "clock.h"
#include "faults.h"
#include "journal.h"
#include "options.h"
#include "store.h"
#include "tokens.h"

namespace sandbox {

/// Everything the endpoints share. One object for the life of the process.
struct Services {
  explicit Services(const Options& chosen) : options(chosen), store(chosen.state) { PreRegister(); }

  /// Lets the customers named on the command line activate.
  void PreRegister();

  const Options& options;
  Clock clock;
  Store store;
  Tokens tokens{clock};
  Journal journal;
  Presets presets;
};

}  // namespace sandbox
