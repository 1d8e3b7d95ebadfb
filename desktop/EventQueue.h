// EventQueue: what a user did in a window, on its way to the thread that shows the form.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

#include "platform/Forms/UserHand.h"

namespace Desktop {

// The change that an act makes to the form and that the window shows already. Telling the window of it again
// would undo what the user did since.
struct Echo {
  Platform::String Control;
  std::optional<Platform::ControlProperty> Property;  // none: the focus
  Platform::String Text = {};
  std::int32_t Number = 0;
  friend bool operator==(const Echo&, const Echo&) = default;
};

struct UserAct {
  std::function<void(Platform::UserHand&)> Run;
  std::optional<Echo> Expected = {};
};

class EventQueue {
 public:
  // Any thread.
  void Put(UserAct act) {
    {
      const std::lock_guard lock(mutex_);
      acts_.push_back(std::move(act));
    }
    filled_.notify_one();
  }

  // The oldest act; waits until there is one.
  UserAct Take() {
    std::unique_lock lock(mutex_);
    filled_.wait(lock, [this] { return !acts_.empty(); });
    UserAct act = std::move(acts_.front());
    acts_.pop_front();
    return act;
  }

 private:
  std::mutex mutex_;
  std::condition_variable filled_;
  std::deque<UserAct> acts_;
};

}  // namespace Desktop
