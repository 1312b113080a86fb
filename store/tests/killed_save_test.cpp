#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <corvalta/testing/temporary_folder.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "corvalta/store/whole_file.h"

namespace corvalta::testing {
namespace {

using namespace store;

std::string table(const std::string& name, const std::string& level, int firstScore) {
  std::string text;
  for (int row = 0; row < 10; ++row) {
    text += name + "\t" + level + "\t" + std::to_string(firstScore - row) + "\n";
  }
  return text;
}

// Saves forever, alternating the two texts from `first` on, and reports each finished save
// with one byte on `progress`.
[[noreturn]] void saveForever(const std::string& path, const std::string (&texts)[2],
                              std::size_t first, int progress) {
  for (std::size_t i = first;; ++i) {
    replaceWholeFile(posixSystemCalls(), path, texts[i % 2]);
    const char done = 's';
    if (::write(progress, &done, 1) != 1) {
      ::_exit(1);
    }
  }
}

// A process killed at random moments during 1,000 saves that alternate two tables leaves the
// file as one of the two whole tables: never a mixture, a truncated file or an empty one.
TEST(KilledSave, FileIsAlwaysOneOfTheTwoWholeTables) {
  TemporaryFolder folder;
  const std::string path = folder / "corvalta-highscores.plist";
  const std::string texts[2] = {table("Ann Marie", "Hard", 500),
                                table("\xc3\x85sa", " Very Hard", 90)};
  writeBytes(path, texts[1]);
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  std::size_t completed = 0;
  int kills = 0;
  while (completed < 1000) {
    int progress[2];
    ASSERT_EQ(::pipe(progress), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      ::close(progress[0]);
      saveForever(path, texts, completed, progress[1]);
    }
    ::close(progress[1]);
    // Let the child finish a few saves, then kill it at some moment inside the next ones.
    char done[64];
    for (auto wanted = std::uniform_int_distribution<std::size_t>(0, 30)(random); wanted > 0;) {
      const ssize_t got = ::read(progress[0], done, std::min(wanted, sizeof done));
      ASSERT_GT(got, 0);
      wanted -= static_cast<std::size_t>(got);
      completed += static_cast<std::size_t>(got);
    }
    ::usleep(std::uniform_int_distribution<useconds_t>(0, 3000)(random));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    for (ssize_t got; (got = ::read(progress[0], done, sizeof done)) > 0;) {
      completed += static_cast<std::size_t>(got);
    }
    ::close(progress[0]);
    ++kills;
    const std::string bytes = fileBytes(path);
    ASSERT_TRUE(bytes == texts[0] || bytes == texts[1])
        << "after kill " << kills << " and " << completed << " saves the file holds "
        << ::testing::PrintToString(bytes);
  }
  RecordProperty("kills", kills);
}

}  // namespace
}  // namespace corvalta::testing
