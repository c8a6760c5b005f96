#include <gtest/gtest.h>

#include <QSettings>
#include <cstdlib>

#include "../reference/temporary_directory.h"

// What Qt, fontconfig and the X libraries keep until the process ends: the QApplication is never freed on purpose.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\nleak:libdbus\n";
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::GTEST_FLAG(death_test_style) = "threadsafe";  // processes of their own, not forks of one that runs Qt
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  // Never the person's own. Static: the processes of the death tests leave by exit().
  static const oxSuperAPI::tests::TTemporaryDirectory Settings;
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QString::fromStdString(Settings / ""));
  return RUN_ALL_TESTS();
}
