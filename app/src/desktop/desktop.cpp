#include "desktop.h"

#include <corvalta/app/program.h>
#include <corvalta/platform/app_info.h>
#include <corvalta/platform/application.h>
#include <corvalta/platform/qt/desktop_look.h>
#include <corvalta/platform/qt/qt_clock_service.h>
#include <corvalta/platform/qt/qt_dialogs.h>
#include <corvalta/platform/qt/qt_event_loop.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>
#include <corvalta/platform/qt/qt_view.h>
#include <corvalta/platform/qt/sdl_sound_system.h>
#include <corvalta/store/preferences_folder.h>

#include <QApplication>
#include <QMessageBox>

#include <cstdlib>

namespace corvalta::app {
namespace {

std::function<std::shared_ptr<platform::Random>()> randomSource() {
  const char* seed = std::getenv("CORVALTA_SEED");
  if (seed == nullptr || *seed == '\0') {
    return {};
  }
  return [value = std::strtoull(seed, nullptr, 10)] { return std::make_shared<platform::Random>(value); };
}

}  // namespace

int runDesktop(int argc, char** argv, const DesktopReady& ready) {
  QApplication qt(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Corvalta"));
  QApplication::setApplicationVersion(QString::fromUtf8(platform::app_info::ShortVersion()));
  QApplication::setDesktopFileName(QStringLiteral("example.dunmere.corvalta"));
  platform::qt::useDesktopLook();
  platform::qt::useApplicationIcon(QStringLiteral("example.dunmere.corvalta"));
  // Only the main window's Close ends the program.
  QApplication::setQuitOnLastWindowClosed(false);

  platform::qt::QtEventLoop loop;
  platform::qt::QtClockService clock;
  platform::qt::SdlSoundSystem sounds(platform::qt::SdlSoundSystem::defaultResourceFolder(), loop,
                                      clock);
  platform::qt::QtDialogs dialogs;
  platform::qt::QtUrlOpener urls;
  platform::Application app({loop, clock, sounds, dialogs, urls, randomSource()});
  platform::qt::QtView view(app);
  view.setMenuBarWindow("Window1");
  app.setObserver(&view);
  dialogs.setOwner([&view] { return view.topLevel("Window1"); });

  Program program(app, {store::posixSystemCalls(),
                        store::configurationFolderPath(store::currentUserEnvironment()),
                        [] { return std::make_unique<platform::qt::QtTcpSocket>(); },
                        [](const std::string& text) {
                          QMessageBox::critical(nullptr, QStringLiteral("Corvalta"),
                                                QString::fromStdString(text));
                        }});
  program.start();
  if (!app.quitRequested()) {
    if (ready) {
      ready(app);
    }
    QApplication::exec();
  }
  return program.finish();
}

}  // namespace corvalta::app
