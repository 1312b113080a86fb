#include <corvalta/platform/application.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/platform/menu_item_classes.h>
#include <corvalta/platform/network_error.h>
#include <corvalta/platform/qt/qt_clock_service.h>
#include <corvalta/platform/qt/qt_dialogs.h>
#include <corvalta/platform/qt/qt_event_loop.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>
#include <corvalta/platform/qt/sdl_sound_system.h>

#include "../src/menu_bar_widget.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QTemporaryDir>

#include <cstdlib>
#include <fstream>

namespace corvalta::platform::qt {
namespace {

using namespace std::chrono_literals;

// A message box belongs to the owner's window; a box without a title shows a blank one rather
// than the application's name, and its buttons carry words, no pictures.
TEST(QtDialogsTest, BoxesBelongToTheOwnerAndShowTheirOwnTitle) {
  QWidget owner;
  QtDialogs dialogs;
  dialogs.setOwner([&owner] { return &owner; });
  QString title;
  QWidget* parent = nullptr;
  bool pictures = true;
  QTimer::singleShot(0, [&] {
    auto* shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(shown, nullptr);
    title = shown->windowTitle();
    parent = shown->parentWidget();
    const auto buttons = shown->buttons();
    pictures = std::any_of(buttons.begin(), buttons.end(), [](auto* b) { return !b->icon().isNull(); });
    shown->button(QMessageBox::Cancel)->click();
  });
  EXPECT_EQ(dialogs.showMsgBox("Clear?", decodeMsgBoxButtons(305), ""), kMsgBoxCancel);
  EXPECT_EQ(title, " ");
  EXPECT_EQ(parent, &owner);
  EXPECT_FALSE(pictures);
}

// Calls run in the order of their times, calls of the same time in the order asked for, a
// cancelled one never, and a call may ask for more.
TEST(QtClock, CallsRunInOrderOfTheirTimes) {
  QtClockService clock;
  QtEventLoop loop;
  std::vector<std::string> ran;
  const auto start = clock.now();
  clock.callAt(start + 30ms, [&] { ran.push_back("30a"); });
  const auto dropped = clock.callAt(start + 10ms, [&] { ran.push_back("dropped"); });
  clock.callAt(start + 20ms, [&] {
    ran.push_back("20");
    clock.callAt(start + 40ms, [&] {
      ran.push_back("40");
      loop.wake();
    });
  });
  clock.callAt(start + 30ms, [&] { ran.push_back("30b"); });
  clock.callAt(start - 5ms, [&] { ran.push_back("past"); });
  clock.cancel(dropped);
  clock.cancel(12345);
  loop.waitUntil([&] { return ran.size() == 5; }, {.deliverInput = true, .deadline = start + 10s});
  EXPECT_EQ(ran, (std::vector<std::string>{"past", "20", "30a", "30b", "40"}));
  EXPECT_GE(clock.now() - start, 40ms);
}

// A sound plays for its length and then says so by waking the loop; the player never makes a
// wait hang, whether a file is missing or no audio device exists (SDL's dummy driver here).
TEST(SdlSounds, PlayToTheEndOrNotAtAll) {
  ::setenv("SDL_AUDIODRIVER", "dummy", 1);
  QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  // 0.2 s of silence, 8-bit mono at 8000 Hz: the player converts it to its own format.
  const std::string header("RIFF\x64\x06\0\0WAVEfmt \x10\0\0\0\x01\0\x01\0\x40\x1f\0\0\x40\x1f\0\0\x01\0\x08\0"
                           "data\x40\x06\0\0", 44);
  for (const char* name : {"OK3.wav", "Microwave.wav"}) {
    std::ofstream(folder.filePath(name).toStdString(), std::ios::binary) << header << std::string(1600, '\x80');
  }
  QtEventLoop loop;
  QtClockService clock;
  SdlSoundSystem sounds(folder.path().toStdString(), loop, clock);

  const auto sound = sounds.GetSound(168);
  ASSERT_NE(sound, nullptr);
  const auto start = clock.now();
  sound->Play();
  EXPECT_TRUE(loop.waitUntil([&] { return !sound->IsPlaying(); },
                             {.deliverInput = false, .deadline = start + 10s}));
  EXPECT_GE(clock.now() - start, 200ms);

  // Applause.wav is not in the folder: a sound that plays in silence and ends at once.
  const auto missing = sounds.GetSound(169);
  ASSERT_NE(missing, nullptr);
  missing->Play();
  EXPECT_FALSE(missing->IsPlaying());
  ::unsetenv("SDL_AUDIODRIVER");
}

// A Connect that fails before it reaches the network (a port out of range) still fails only
// once it has returned, and a Close or another Connect before then drops that failure.
TEST(QtTcpSocket, AFailureQueuedForAnEarlierAttemptNeverArrives) {
  QtEventLoop loop;
  QtClockService clock;
  const auto socket = std::make_unique<QtTcpSocket>();
  std::vector<std::int32_t> errors;
  TCPSocket::Events events;
  events.onError = [&] {
    errors.push_back(socket->LastErrorCode());
    loop.wake();
  };
  socket->setEvents(events);
  socket->setAddress("127.0.0.1");
  socket->setPort(0);
  socket->Connect();
  socket->Close();
  socket->Connect();
  EXPECT_TRUE(errors.empty());
  EXPECT_TRUE(loop.waitUntil([&] { return !errors.empty(); },
                             {.deliverInput = true, .deadline = clock.now() + 10s}));
  QCoreApplication::processEvents();
  EXPECT_EQ(errors, std::vector<std::int32_t>{code(NetworkError::InvalidPort)});
  EXPECT_FALSE(socket->IsConnected());
}

// The tree becomes menus, a "-" item a separator; the quit item without a handler of its own
// runs the platform's quit; the Edit items act on the focused text field, and only when they can.
TEST(MenuBar, FollowsTheTreeAndEditsTheFocusedField) {
  headless::HeadlessServices services{1};
  Application app{services.services()};
  auto bar = std::make_shared<MenuItem>("Bar");
  auto file = std::make_shared<MenuItem>("FileMenu", "&File");
  file->Append(std::make_shared<QuitMenuItem>("FileQuit", "Quit"));
  auto edit = std::make_shared<MenuItem>("EditMenu", "&Edit");
  edit->Append(std::make_shared<MenuItem>("EditCut", "Cu&t"));
  edit->Append(std::make_shared<MenuItem>("Line", "-"));
  for (const auto& menu : {file, edit}) bar->Append(menu);
  app.setMenuBar(bar);
  int quits = 0;
  const std::unique_ptr<QMenuBar> menuBar(makeMenuBar(app, [&quits] { ++quits; }));
  QMenu* editMenu = menuBar->findChild<QMenu*>("EditMenu");
  QAction* cut = menuBar->findChild<QAction*>("EditCut");

  ASSERT_EQ(menuBar->actions().size(), 2);
  EXPECT_EQ(menuBar->actions()[0]->text(), "&File");
  EXPECT_TRUE(editMenu->actions()[1]->isSeparator());
  menuBar->findChild<QAction*>("FileQuit")->trigger();
  EXPECT_EQ(quits, 1);

  QLineEdit field;
  field.show();
  QApplication::setActiveWindow(&field);
  field.setFocus();
  ASSERT_EQ(QApplication::focusWidget(), &field);
  field.setText("12345");
  emit editMenu->aboutToShow();
  EXPECT_FALSE(cut->isEnabled());
  field.setSelection(1, 2);
  emit editMenu->aboutToShow();
  EXPECT_TRUE(cut->isEnabled());
  cut->trigger();
  EXPECT_EQ(field.text(), "145");
}

}  // namespace
}  // namespace corvalta::platform::qt
