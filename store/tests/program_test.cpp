#include <corvalta/platform/errors.h>

#include <stdexcept>

#include "corvalta/store/program.h"
#include "store_game.h"

namespace corvalta::testing {
namespace {

using core::Module1;

// Start-up makes R and the main window, whose Open reads both files and leaves no field with
// the focus. The quit command during a game, like the main window's close box, saves the
// settings and the table as they are, without the game's points, quits with 0 and ends the run.
TEST(Program, StartsAndQuitsInOrder) {
  for (const char* quit : {"quit\n", "close Window1\n"}) {
    SCOPED_TRACE(quit);
    TemporaryFolder folder;
    Game game(folder.path());
    EXPECT_NE(Module1.R, nullptr);
    EXPECT_EQ(game.window().focus(), nullptr);
    EXPECT_EQ(folderEntries(folder.path()), (std::vector<std::string>{kScores, kSettings}));

    game.run(std::string("menu SoundSoundOff\n") + kRightAnswerAtEasy + quit + "press Stop\npress Hard\n");
    EXPECT_EQ(Module1.Points, 1);
    EXPECT_EQ(game.session.app().exitCode(), 0);
    EXPECT_TRUE(game.session.app().quitRequested());
    EXPECT_TRUE(game.selected("Easy")) << "nothing runs after the quit";
    EXPECT_EQ(fileBytes(folder / kSettings), "False\nEasy\n");
    EXPECT_EQ(fileBytes(folder / kScores), tableText(defaultRows()));
  }
}

// An exception that escapes a handler is reported with its class and message, and the program
// quits with 1 and ends without saving: nothing after it runs.
TEST(Program, UnhandledExceptionIsReportedAndEndsTheRun) {
  TemporaryFolder folder;
  Game game(folder.path());
  game.session.app().addMenuHandler("Broken", []() -> bool {
    throw platform::NilObjectException("Window1 has no control Gone");
  });
  game.run("menu SoundSoundOff\n");
  std::istringstream script("menu Broken\npress Hard\n");
  EXPECT_EQ(game.session.run(script), 1);
  EXPECT_NE(game.err.str().find("An exception of class NilObjectException was not handled: Window1 has no "
                                "control Gone. The application must shut down."),
            std::string::npos)
      << game.err.str();
  EXPECT_EQ(game.session.app().exitCode(), 1);
  EXPECT_FALSE(game.selected("Hard"));
  EXPECT_EQ(fileBytes(folder / kSettings), "True\nEasy\n");
}

// The report names the exception's class without its namespaces, with its message if it has one.
TEST(Program, ReportNamesTheExceptionClass) {
  const std::pair<std::exception_ptr, const char*> cases[] = {
      {std::make_exception_ptr(platform::OutOfBoundsException("row 12")),
       "An exception of class OutOfBoundsException was not handled: row 12. The application must shut down."},
      {std::make_exception_ptr(std::runtime_error("disk")),
       "An exception of class runtime_error was not handled: disk. The application must shut down."},
      {std::make_exception_ptr(42), "An exception of class int was not handled. The application must shut down."},
  };
  for (const auto& [error, report] : cases) EXPECT_EQ(store::unhandledExceptionReport(error), report);
}

}  // namespace
}  // namespace corvalta::testing
