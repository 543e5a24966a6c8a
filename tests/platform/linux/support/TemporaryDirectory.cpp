#include "platform/linux/support/TemporaryDirectory.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace vembrix {

TemporaryDirectory::TemporaryDirectory() {
  std::string name = (std::filesystem::temp_directory_path() / "vembrix-test-XXXXXX").string();
  if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
  path_ = name;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryDirectory::write(std::string_view name,
                                                std::string_view text) const {
  std::filesystem::path path = path_ / name;
  std::ofstream(path) << text;
  return path;
}

}  // namespace vembrix
