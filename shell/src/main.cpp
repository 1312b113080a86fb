// The desktop game: the view state on Qt widgets, sound through SDL2.
#include <corvalta/platform/app_info.h>
#include <corvalta/platform/application.h>
#include <corvalta/platform/qt/light_look.h>
#include <corvalta/platform/qt/qt_clock_service.h>
#include <corvalta/platform/qt/qt_dialogs.h>
#include <corvalta/platform/qt/qt_event_loop.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>
#include <corvalta/platform/qt/qt_view.h>
#include <corvalta/platform/qt/sdl_sound_system.h>
#include <corvalta/shell/info_windows.h>
#include <corvalta/shell/menus.h>
#include <corvalta/shell/window_descriptions.h>
#include <corvalta/store/preferences_folder.h>
#include <corvalta/store/program.h>
#include <corvalta/update/update_check.h>

#include <QApplication>
#include <QMessageBox>

namespace {

namespace platform = corvalta::platform;
namespace shell = corvalta::shell;
namespace store = corvalta::store;
namespace update = corvalta::update;

}  // namespace

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Corvalta"));
  QApplication::setApplicationVersion(QString::fromUtf8(platform::app_info::ShortVersion()));
  QApplication::setDesktopFileName(QStringLiteral("example.dunmere.corvalta"));
  platform::qt::useLightLook(qt);

  platform::qt::QtEventLoop loop;
  platform::qt::QtClockService clock;
  platform::qt::SdlSoundSystem sounds(platform::qt::SdlSoundSystem::defaultResourceFolder(), loop,
                                      clock);
  platform::qt::QtDialogs dialogs;
  platform::qt::QtUrlOpener urls;
  platform::Application app({loop, clock, sounds, dialogs, urls, {}});
  platform::qt::QtView view(app);
  view.setMenuBarWindow("Window1");
  app.setObserver(&view);

  app.setMenuBar(shell::makeMenuBar1());
  shell::addMenuHandlers(app);
  shell::registerInfoWindows(app);
  update::registerUpdateWindow(app, {*shell::findWindowDescription("updateWindow"),
                                     [] { return std::make_unique<platform::qt::QtTcpSocket>(); }});
  store::Program program(app, store::posixSystemCalls(),
                         store::configurationFolderPath(store::currentUserEnvironment()),
                         [](const std::string& text) {
                           QMessageBox::critical(nullptr, QStringLiteral("Corvalta"),
                                                 QString::fromStdString(text));
                         });
  program.start();
  if (!app.quitRequested()) {
    QApplication::exec();
  }
  return program.finish();
}
