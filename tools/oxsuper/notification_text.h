#pragma once

#include <string>

#include "oxSuperAPI/model/uBeamNotification.h"

namespace oxSuperAPI {

/// What happened, in one line. Without the value of the element that a response is about: it may be a tax file number.
std::string WhatHappened(const TBeamNotification& Notification);

/// The same for machines, with what the notification's type fills.
TJSONObject NotificationDocument(const TBeamNotification& Notification);

}  // namespace oxSuperAPI
