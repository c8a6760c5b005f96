#include "oxSuperAPI/editor/display.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QApplication>
#include <QFile>
#include <QPluginLoader>
#include <QThread>

namespace oxSuperAPI {

namespace {

/// The QApplication that this component made; never freed, since nothing is destroyed at process exit.
QApplication* OwnApplication = nullptr;

/// Held from a successful look until Qt has a connection of its own: an X server whose last client leaves may start
/// afresh, and Qt would abort when it came at that moment.
xcb_connection_t* HeldConnection = nullptr;

void Hold(xcb_connection_t* Connection) {
  if (HeldConnection) xcb_disconnect(HeldConnection);
  HeldConnection = Connection;
}

bool XServerLetsUsIn() {
  if (qEnvironmentVariableIsEmpty("DISPLAY")) return false;
  xcb_connection_t* const Connection = xcb_connect(nullptr, nullptr);
  const bool Connected = xcb_connection_has_error(Connection) == 0;
  if (Connected)
    Hold(Connection);
  else
    xcb_disconnect(Connection);
  return Connected;
}

bool WaylandAnswers() {
  const QByteArray Name = qgetenv("WAYLAND_DISPLAY");
  const QByteArray Path = Name.startsWith('/') ? Name : qgetenv("XDG_RUNTIME_DIR") + "/" + Name;
  sockaddr_un Address{};
  if (Name.isEmpty() || Path.size() >= static_cast<qsizetype>(sizeof Address.sun_path)) return false;
  Address.sun_family = AF_UNIX;
  Path.toStdString().copy(Address.sun_path, sizeof Address.sun_path - 1);
  const int Socket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (Socket < 0) return false;
  const bool Connected = connect(Socket, reinterpret_cast<const sockaddr*>(&Address), sizeof Address) == 0;
  close(Socket);
  return Connected;
}

/// Without its plugin, or without a library that the plugin needs, Qt would abort.
bool PluginLoads(const QStringList& Files) {
  for (const QString& Directory : QCoreApplication::libraryPaths())
    for (const QString& File : Files) {
      const QString Path = Directory + "/platforms/" + File;
      if (QFile::exists(Path) && QPluginLoader(Path).load()) return true;
    }
  return false;
}

bool IsOffscreen(const QString& Platform) {
  return Platform == "offscreen" || Platform.startsWith("minimal");
}

bool CanStart(const QString& Platform, TScreens Screens) {
  if (Platform == "xcb") return XServerLetsUsIn() && PluginLoads({"libqxcb.so"});
  if (Platform == "wayland") return WaylandAnswers() && PluginLoads({"libqwayland-generic.so", "libqwayland-egl.so"});
  return Platform == "offscreen" && Screens == TScreens::OffscreenToo && PluginLoads({"libqoffscreen.so"});
}

bool IsUsable(const QApplication& Application, TScreens Screens) {
  if (&Application == OwnApplication && QThread::currentThread() != Application.thread()) return false;
  return Screens == TScreens::OffscreenToo || !IsOffscreen(QApplication::platformName());
}

void Ignore(QtMsgType, const QMessageLogContext&, const QString&) {}

}  // namespace

std::string UsablePlatform(TScreens Screens) {
  if (QCoreApplication* const Existing = QCoreApplication::instance()) {
    const auto* const Application = qobject_cast<QApplication*>(Existing);
    const bool Usable = Application && !QCoreApplication::closingDown() && IsUsable(*Application, Screens);
    return Usable ? QApplication::platformName().toStdString() : "";
  }
  if (gettid() != getpid()) return "";  // Qt's widgets belong to the main thread
  const QString Wanted = qEnvironmentVariable("QT_QPA_PLATFORM", "xcb;wayland");
  for (const QString& Platform : Wanted.split(';'))
    if (CanStart(Platform.section(':', 0, 0), Screens)) return Platform.toStdString();
  return "";
}

QApplication* NeedApplication(TScreens Screens) {
  const std::string Platform = UsablePlatform(Screens);
  if (Platform.empty()) return nullptr;
  if (QCoreApplication::instance()) return static_cast<QApplication*>(QCoreApplication::instance());

  // Qt keeps references to these two.
  static std::string Words[] = {"oxsuper", "-platform", Platform};
  static char* Arguments[] = {Words[0].data(), Words[1].data(), Words[2].data(), nullptr};
  static int Count = 3;
  const TLocaleKeeper Locale;
  const QtMessageHandler Before = qInstallMessageHandler(Ignore);  // it comments on the locale
  OwnApplication = new QApplication(Count, Arguments);
  qInstallMessageHandler(Before);
  Hold(nullptr);
  QApplication::setQuitOnLastWindowClosed(false);
  return OwnApplication;
}

}  // namespace oxSuperAPI
