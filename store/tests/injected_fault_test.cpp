#include <corvalta/testing/temporary_folder.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "corvalta/store/whole_file.h"
#include "faulty_system_calls.h"

namespace corvalta::testing {
namespace {

using namespace store;

const std::string kOldText = "Ann\tHard\t120\n" + std::string(300, 'o') + "\n";
const std::string kNewText = "Bo\t Very Hard\t130\n" + std::string(5000, 'n') + "\n";
const std::string kName = "corvalta-highscores.plist";

std::vector<std::string> callsOfOneSave() {
  TemporaryFolder folder;
  writeBytes(folder / kName, kOldText);
  FaultySystemCalls calls;
  EXPECT_TRUE(replaceWholeFile(calls, folder / kName, kNewText));
  return calls.log();
}

// Whichever call of a save fails, and however, the save ends either saved with the new file
// or not saved with the old file (or no file) as it was and nothing else in the folder.
TEST(InjectedFault, EachCallOfASaveFailingInTurn) {
  const std::vector<std::string> log = callsOfOneSave();
  for (const char* needed : {"open", "write", "fsync", "close", "rename"}) {
    EXPECT_NE(std::find(log.begin(), log.end(), needed), log.end()) << needed;
  }
  int saved = 0;
  int intact = 0;
  for (const bool oldFileThere : {true, false}) {
    for (const int error : {EIO, ENOSPC, EACCES, EINTR}) {
      for (std::size_t index = 0; index < log.size(); ++index) {
        SCOPED_TRACE(::testing::Message() << "call " << index << " (" << log[index] << ") fails with "
                                        << error << (oldFileThere ? "" : ", no old file"));
        TemporaryFolder folder;
        if (oldFileThere) {
          writeBytes(folder / kName, kOldText);
        }
        FaultySystemCalls calls;
        calls.failCall(index, error);
        if (replaceWholeFile(calls, folder / kName, kNewText)) {
          ++saved;
          EXPECT_EQ(fileBytes(folder / kName), kNewText);
        } else {
          ++intact;
          EXPECT_EQ(fileBytes(folder / kName), oldFileThere ? kOldText : "<missing>");
        }
        EXPECT_EQ(folderEntries(folder.path()),
                  oldFileThere || fileBytes(folder / kName) == kNewText
                      ? std::vector<std::string>{kName}
                      : std::vector<std::string>{});
      }
    }
  }
  EXPECT_GT(saved, 0);
  EXPECT_GT(intact, 0);
}

}  // namespace
}  // namespace corvalta::testing
