// The CPU time that the headless driver spends in `await-check` while its update server stays
// silent for 5 s, beside the same check against a server that closes at once: each a fresh
// driver process, measured by the kernel's account of the child. It prints; it judges nothing.
#include <corvalta/testing/child_process.h>
#include <corvalta/testing/scripted_server.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using corvalta::testing::ScriptedServer;
using namespace std::chrono_literals;

struct Run {
  double cpuMilliseconds;
  double wallSeconds;
};

// One driver, fed the update check's script, against a server that reads the request, says
// nothing for `silence` and then closes the connection.
Run checkAgainst(std::chrono::milliseconds silence) {
  ScriptedServer server({{ScriptedServer::readRequest(), ScriptedServer::pause(silence)}});
  const std::string script =
      "update-server " + server.url("/Updates/corvalta.xml") +
      "\nmenu CheckForUpdateCheckNow\npress selfTest.PushButton1\nawait-check\n";
  const auto driver = corvalta::testing::runChild({CORVALTA_DRIVER}, script, "/dev/null");
  if (!driver.exitedZero) {
    std::fprintf(stderr, "the driver failed the update check's script\n");
    std::exit(1);
  }
  return {driver.cpuMilliseconds, driver.wallSeconds};
}

double medianCpu(std::vector<Run> runs) {
  std::sort(runs.begin(), runs.end(),
            [](const Run& a, const Run& b) { return a.cpuMilliseconds < b.cpuMilliseconds; });
  return runs[runs.size() / 2].cpuMilliseconds;
}

}  // namespace

int main() {
  constexpr int kRuns = 3;
  std::vector<Run> silent;
  std::vector<Run> closing;
  // Taking turns, so that neither profits from a warmer machine.
  for (int k = 0; k < kRuns; ++k) {
    silent.push_back(checkAgainst(5s));
    closing.push_back(checkAgainst(0ms));
  }
  const double waiting = medianCpu(silent);
  const double prompt = medianCpu(closing);
  std::printf(
      "driver CPU (median of %d): server silent for 5 s %.1f ms (wall %.1f s), server closing at "
      "once "
      "%.1f ms; the wait itself %.1f ms (goal < 50 ms)\n",
      kRuns, waiting, silent.back().wallSeconds, prompt, waiting - prompt);
  return 0;
}
