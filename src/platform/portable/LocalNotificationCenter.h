#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/NotificationCenter.h"

namespace vembrix {

/// A notification center within the process. A post allocates nothing.
class LocalNotificationCenter : public NotificationCenter {
 public:
  Observation addObserver(std::string_view name, std::function<void()> handler) override;
  void post(std::string_view name) override;

 private:
  struct Observer {
    std::function<void()> handler;
    bool ended = false;
  };
  /// The observers of one name. During posts the list only grows: ended observers are removed after
  /// the last post.
  struct Channel {
    std::vector<std::shared_ptr<Observer>> observers;
    int posts = 0;

    void sweep();
  };

  std::map<std::string, std::shared_ptr<Channel>, std::less<>> channels_;
};

}  // namespace vembrix
