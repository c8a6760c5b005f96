#pragma once

#include <clocale>
#include <string>

#include "oxSuperAPI/editor/editor_qt.h"

class QApplication;

namespace oxSuperAPI {

/// The Qt platform on which a form can be shown in this process now, "" when there is none: see QtEditorAvailable.
std::string UsablePlatform(TScreens Screens);

/// The process's QApplication, made when there is none yet; null without a usable platform.
QApplication* NeedApplication(TScreens Screens);

/// Gives the process its locale back: Qt sets it from the environment, and numbers must not change their look for it.
class TLocaleKeeper {
 public:
  TLocaleKeeper() : FLocale(std::setlocale(LC_ALL, nullptr)) {}
  ~TLocaleKeeper() {
    if (FLocale != std::setlocale(LC_ALL, nullptr)) std::setlocale(LC_ALL, FLocale.c_str());
  }
  TLocaleKeeper(const TLocaleKeeper&) = delete;
  TLocaleKeeper& operator=(const TLocaleKeeper&) = delete;

 private:
  std::string FLocale;
};

}  // namespace oxSuperAPI
