#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

class TBeamRecordReader;

/// A default superannuation fund of an employer. Dates are texts in wire form.
class OXSUPERAPI_EXPORT TBeamDefaultFund {
 public:
  /// The id is the service's; texts are passed through. @{
  std::string DefaultFundId;
  std::string EndDate;
  std::string StartDate;
  std::string USI;  ///< the fund's unique superannuation identifier
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
  /// As an employer's fund: all but the id.
  void ReadInEmployer(const TBeamRecordReader& Json);
  /// @}
};

/// The default funds of an employer, as the lookup answers them. Funds are shared: the host may keep one longer than
/// the list.
class OXSUPERAPI_EXPORT TBeamDefaultFunds {
 public:
  /// Null is ignored.
  void AddDefaultFund(std::shared_ptr<TBeamDefaultFund> Fund);
  /// Null for an index out of range. @{
  std::shared_ptr<TBeamDefaultFund> GetDefaultFund(std::ptrdiff_t Index) const;
  std::size_t GetDefaultFundCount() const { return FDefaultFunds.size(); }
  /// @}

  /// A bare array: the service has no object around this list. @{
  std::unique_ptr<TJSONArray> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  /// Appends the funds of an array; does nothing for anything else. Raises TBeamTypeError at an element that is
  /// neither an object nor null.
  void LoadFromJsonObject(TJSONView Source);

  template <class Array>
  void WriteElements(Array& Json) const;
  /// @}

 private:
  std::vector<std::shared_ptr<TBeamDefaultFund>> FDefaultFunds;
};

}  // namespace oxSuperAPI
