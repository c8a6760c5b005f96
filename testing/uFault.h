#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace oxSuperAPI {

/// An error to raise on demand. A host's facilities may raise anything, so all three sorts deserve a test.
class TFault {
 public:
  /// A std::runtime_error with this text.
  static TFault Standard(std::string Text);
  /// A TBeamError with this text.
  static TFault Beam(std::string Text);
  /// The integer itself is thrown: something that `catch (const std::exception&)` lets pass.
  static TFault NonStandard(int Value = 42);

  /// For facilities of a test's own; those here raise through `TFaults::Check`.
  [[noreturn]] void Raise() const;

 private:
  enum class TSort { Standard, Beam, NonStandard };
  TFault(TSort Sort, std::string Text, int Value);
  TSort FSort;
  std::string FText;
  int FValue;
};

/// The faults that one facility has been told to raise, by operation. An operation carries the name that it has in the
/// facility's interface ("httpNetPost", "SetField", ...).
class TFaults {
 public:
  /// `Operations` are those that can fail here.
  explicit TFaults(std::initializer_list<std::string_view> Operations);

  /// From now on every call of `Operation` raises `Fault`, until Clear. An operation that the facility does not have
  /// raises std::invalid_argument, so that a misspelt name does not pass for a fault that never came.
  void FailOn(std::string_view Operation, TFault Fault);
  /// The same for one call only, after `Skip` calls that work.
  void FailOnce(std::string_view Operation, TFault Fault, std::size_t Skip = 0);
  /// Disarms all.
  void Clear() { FArmed.clear(); }

  /// For the facility: raises if the operation is to fail now.
  void Check(std::string_view Operation);

 private:
  struct TArmed {
    std::string Operation;
    TFault Fault;
    bool Once;
    std::size_t Skip;
  };
  void Arm(TArmed Armed);

  std::vector<std::string> FOperations;
  std::vector<TArmed> FArmed;
};

}  // namespace oxSuperAPI
