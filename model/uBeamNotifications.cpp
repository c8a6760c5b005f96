#include "oxSuperAPI/model/uBeamNotifications.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamChildren.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Array>
void TBeamNotifications::WriteElements(Array& Json) const {
  for (const auto& Child : FNotifications) Json.Element(Always, [&](auto& Element) { Child->Write(Element); });
}

void TBeamNotifications::LoadFromJsonObject(TJSONView Source) {
  TBeamRecordReader::EachElement(Source.Array(), "notifications", [&](const TBeamRecordReader& Element) {
    auto Child = std::make_shared<TBeamNotification>();
    Child->ReadInList(Element);
    AddNotification(std::move(Child));
  });
}

void TBeamNotifications::AddNotification(std::shared_ptr<TBeamNotification> Notification) {
  AddChild(FNotifications, std::move(Notification));
}

std::shared_ptr<TBeamNotification> TBeamNotifications::GetNotification(std::ptrdiff_t Index) const {
  return ChildAt(FNotifications, Index);
}

std::unique_ptr<TJSONArray> TBeamNotifications::GetAsJsonObject() const {
  return WriteToArray(*this);
}

std::string TBeamNotifications::GetAsJsonString() const {
  return WriteToArrayText(*this);
}

template void TBeamNotifications::WriteElements(TJSONArrayHelper&) const;
template void TBeamNotifications::WriteElements(TJSONTextCounter&) const;
template void TBeamNotifications::WriteElements(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
