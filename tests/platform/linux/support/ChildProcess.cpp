#include "platform/linux/support/ChildProcess.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace vembrix {
namespace {

std::vector<char*> pointers(std::vector<std::string>& strings) {
  std::vector<char*> result;
  result.reserve(strings.size() + 1);
  for (std::string& string : strings) result.push_back(string.data());
  result.push_back(nullptr);
  return result;
}

std::vector<std::string> mergedEnvironment(const std::vector<std::string>& over) {
  std::vector<std::string> merged = over;
  for (char** entry = environ; *entry; ++entry) {
    const std::string current = *entry;
    const std::string name = current.substr(0, current.find('=') + 1);
    bool isReplaced = false;
    for (const std::string& own : over) isReplaced = isReplaced || own.starts_with(name);
    if (!isReplaced) merged.push_back(current);
  }
  return merged;
}

}  // namespace

ChildProcess::ChildProcess(const Command& command) {
  std::vector<std::string> words = command.words;
  std::vector<std::string> environment = mergedEnvironment(command.environment);
  const std::vector<char*> arguments = pointers(words);
  const std::vector<char*> variables = pointers(environment);
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  const pid_t parent = getpid();
  pid_ = fork();
  if (pid_ < 0) throw std::runtime_error("fork failed");
  if (pid_ == 0) {
    // Ends the program with the test, even if the test is killed.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(127);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(null, standard);
    if (command.output >= 0) dup2(command.output, kOutput);
    execvpe(arguments[0], arguments.data(), variables.data());
    _exit(127);
  }
  close(null);
}

ChildProcess::~ChildProcess() {
  send(SIGCONT);
  send(SIGTERM);
  for (int i = 0; i < 200 && pid_ > 0; ++i) {
    if (waitpid(pid_, nullptr, WNOHANG) != 0) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  kill();
}

void ChildProcess::send(int signal) const {
  // After its end the number is negative, which kill() would take for all processes.
  if (pid_ > 0) ::kill(pid_, signal);
}

void ChildProcess::kill() {
  send(SIGKILL);
  if (pid_ > 0) waitpid(pid_, nullptr, 0);
  pid_ = -1;
}

void ChildProcess::stop() const {
  send(SIGSTOP);
}

void ChildProcess::resume() const {
  send(SIGCONT);
}

std::string readLine(int descriptor) {
  std::string line;
  char c = 0;
  for (;;) {
    const ssize_t count = read(descriptor, &c, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0 || c == '\n') return count <= 0 ? std::string() : line;
    line.push_back(c);
  }
}

}  // namespace vembrix
