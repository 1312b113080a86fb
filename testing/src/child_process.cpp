#include <corvalta/testing/child_process.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

extern char** environ;

namespace corvalta::testing {
namespace {

double milliseconds(const timeval& t) {
  return static_cast<double>(t.tv_sec) * 1000.0 + static_cast<double>(t.tv_usec) / 1000.0;
}

void makePipe(int ends[2]) {
  if (::pipe(ends) != 0) {
    std::perror("pipe");
    std::exit(1);
  }
}

}  // namespace

ChildRun runChild(const std::vector<std::string>& arguments, const std::string& input,
                  const std::optional<std::string>& outputFile) {
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  int in[2];
  int out[2] = {-1, -1};
  makePipe(in);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
  posix_spawn_file_actions_addclose(&actions, in[1]);
  if (outputFile) {
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputFile->c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0644);
  } else {
    makePipe(out);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, out[0]);
  }
  ChildRun run;
  run.started = std::chrono::steady_clock::now();
  pid_t pid = 0;
  if (posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ) != 0) {
    std::perror(("posix_spawn " + arguments.front()).c_str());
    std::exit(1);
  }
  posix_spawn_file_actions_destroy(&actions);
  ::close(in[0]);
  // The inputs are a few lines, which the pipe holds whole whether or not the child reads them.
  if (::write(in[1], input.data(), input.size()) != static_cast<ssize_t>(input.size())) {
    std::perror("write");
  }
  ::close(in[1]);
  if (!outputFile) {
    ::close(out[1]);
    char buffer[4096];
    for (ssize_t n; (n = ::read(out[0], buffer, sizeof buffer)) > 0;) {
      run.output.append(buffer, static_cast<std::size_t>(n));
    }
    ::close(out[0]);
  }
  int status = 0;
  rusage usage{};
  ::wait4(pid, &status, 0, &usage);
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - run.started;
  run.wallSeconds = wall.count();
  run.cpuMilliseconds = milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
  run.peakKilobytes = usage.ru_maxrss;
  run.exitedZero = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return run;
}

}  // namespace corvalta::testing
