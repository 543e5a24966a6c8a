// The program's settings on the command line, for tests that look at them from outside. Values are
// read and printed as property lists.

#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/UserDefaults.h"
#include "platform/linux/defaults/LinuxUserDefaults.h"
#include "platform/linux/defaults/XmlPropertyList.h"

namespace vembrix {
namespace {

std::string standardInput() {
  return {std::istreambuf_iterator<char>(std::cin), {}};
}

int print(const PropertyList& value) {
  const std::optional<std::string> xml = writePropertyList(value);
  if (xml) std::cout << *xml;
  return xml ? 0 : 1;
}

int set(const std::string& key) {
  const auto read = readPropertyList(standardInput());
  const auto* value = std::get_if<PropertyList>(&read);
  if (!value) return 2;
  UserDefaults::standard().set(key, *value);
  return 0;
}

/// Returns a value that shows whether it is complete.
PropertyList pairOf(int number) {
  const auto length = static_cast<std::size_t>(number % 50) * 100;
  return PropertyList::Dictionary{
      {"number", number}, {"text", std::to_string(number)}, {"weight", std::string(length, 'w')}};
}

/// Writes pairs of rising numbers until it is killed.
[[noreturn]] void writePairs(int first) {
  for (int number = first;; ++number) {
    UserDefaults::standard().set("Pair", pairOf(number));
    LinuxUserDefaults::shared().finish();
    // Printed only after the value is stored.
    std::cout << number << std::endl;
  }
}

/// Returns whether standard input has data or has ended.
bool isToldToEnd() {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  return ::poll(&input, 1, 0) > 0;
}

/// Reads pairs until standard input has data or ends; prints how many. Fails at once if a pair is
/// missing, incomplete, or older than the one before.
int readPairs() {
  int count = 0;
  std::int64_t last = 0;
  while (!isToldToEnd()) {
    const PropertyList pair = UserDefaults::standard().object("Pair");
    const std::int64_t number = pair["number"].integer().value_or(-1);
    if (number < last || pair != pairOf(static_cast<int>(number))) {
      std::cout << "read " << number << " after " << last << std::endl;
      return 1;
    }
    last = number;
    count += 1;
  }
  std::cout << count << std::endl;
  return 0;
}

int setMany(const std::string& prefix, int count) {
  for (int i = 0; i < count; ++i) UserDefaults::standard().set(prefix + std::to_string(i), i);
  return 0;
}

int run(const std::vector<std::string>& arguments) {
  const std::string command = arguments.empty() ? "" : arguments[0];
  const std::string first = arguments.size() > 1 ? arguments[1] : "";
  const std::string second = arguments.size() > 2 ? arguments[2] : "";
  UserDefaults& defaults = UserDefaults::standard();
  if (command == "get") return print(defaults.object(first));
  if (command == "get-from") return print(defaults.object(second, first));
  if (command == "keys") return print(defaults.keyList(first));
  if (command == "set") return set(first);
  if (command == "set-many") return setMany(first, std::atoi(second.c_str()));
  if (command == "read-pairs") return readPairs();
  if (command == "write-pairs") writePairs(std::atoi(first.c_str()));
  if (command == "remove") {
    defaults.set(first, {});
    return 0;
  }
  std::cerr << "get KEY | get-from DOMAIN KEY | keys DOMAIN | set KEY | set-many PREFIX COUNT |\n"
               "remove KEY | write-pairs FIRST | read-pairs\n";
  return 2;
}

}  // namespace
}  // namespace vembrix

int main(int count, char** arguments) {
  return vembrix::run(std::vector<std::string>(arguments + 1, arguments + count));
}
