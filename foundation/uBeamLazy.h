#pragma once

#include <utility>

namespace oxSuperAPI {

/// What an absent TBeamLazy reads as.
template <class Value>
inline constexpr Value BeamEmptyValue{};

/// A value that most records leave empty: it takes the room of a pointer until it is first changed. Reading one that is
/// absent gives an empty value and allocates nothing; access to one that is not const makes it present. Copied deeply.
///
///     Member.definedBenefits->fullTimeHours = 38;
///     if (std::as_const(Member).definedBenefits->fullTimeHours > 0) ...
template <class Value>
class TBeamLazy {
 public:
  /// Absent. Assigning `{}` makes it absent again. @{
  constexpr TBeamLazy() noexcept = default;
  TBeamLazy(const TBeamLazy& Other) : FValue(Other.FValue ? new Value(*Other.FValue) : nullptr) {}
  TBeamLazy(TBeamLazy&& Other) noexcept : FValue(std::exchange(Other.FValue, nullptr)) {}
  TBeamLazy& operator=(TBeamLazy Other) noexcept {
    std::swap(FValue, Other.FValue);
    return *this;
  }
  constexpr ~TBeamLazy() { delete FValue; }
  /// @}

  /// Whether there is a value of its own, be it empty.
  bool IsPresent() const noexcept { return FValue != nullptr; }

  /// For reading. @{
  const Value& operator*() const noexcept { return FValue ? *FValue : BeamEmptyValue<Value>; }
  const Value* operator->() const noexcept { return &**this; }
  /// @}

  /// For changing. @{
  Value& operator*() {
    if (!FValue) FValue = new Value();
    return *FValue;
  }
  Value* operator->() { return &**this; }
  /// @}

 private:
  Value* FValue = nullptr;
};

}  // namespace oxSuperAPI
