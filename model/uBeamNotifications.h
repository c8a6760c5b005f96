#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/model/uBeamNotification.h"

namespace oxSuperAPI {

/// The notifications of one fetch. They are shared: the host may keep one longer than the list.
class OXSUPERAPI_EXPORT TBeamNotifications {
 public:
  /// Key of the call log row of the fetch: for the host to set. Never in JSON.
  std::int32_t BeamSuperLogID = 0;

  /// Null is ignored.
  void AddNotification(std::shared_ptr<TBeamNotification> Notification);
  /// Null for an index out of range. @{
  std::shared_ptr<TBeamNotification> GetNotification(std::ptrdiff_t Index) const;
  std::size_t GetNotificationCount() const { return FNotifications.size(); }
  /// @}

  /// A bare array: the service has no object around this list. @{
  std::unique_ptr<TJSONArray> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  /// Appends the notifications of an array; does nothing for anything else. Raises TBeamError at an element that is no
  /// notification or lacks a member that its type must have; those before it stay, it is not added.
  void LoadFromJsonObject(TJSONView Source);

  template <class Array>
  void WriteElements(Array& Json) const;
  /// @}

 private:
  std::vector<std::shared_ptr<TBeamNotification>> FNotifications;
};

}  // namespace oxSuperAPI
