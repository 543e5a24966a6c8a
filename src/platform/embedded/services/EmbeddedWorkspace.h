#pragma once

#include <string>
#include <vector>

#include "platform/Workspace.h"

namespace vembrix {

/// Records the addresses instead of opening them.
class EmbeddedWorkspace : public Workspace {
 public:
  /// The workspace behind Workspace::shared().
  static EmbeddedWorkspace& shared();

  void openURL(std::string_view url) override { openedURLs_.emplace_back(url); }

  /// The addresses, in the order in which they were opened.
  const std::vector<std::string>& openedURLs() const { return openedURLs_; }

 private:
  std::vector<std::string> openedURLs_;
};

}  // namespace vembrix
