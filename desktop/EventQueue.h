// EventQueue: the acts of a user in one window, in their order, for the thread that shows the form.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

#include "desktop/GuiThread.h"
#include "platform/Forms/UserInput.h"

namespace Desktop {

// The change that an act makes to the form and that the window already shows. Applying it to the window again
// would undo what the user did since.
struct Echo {
  Platform::String Control;
  std::optional<Platform::ControlProperty> Property;  // none: the focus
  Platform::String Text = {};
  std::int32_t Number = 0;
  friend bool operator==(const Echo&, const Echo&) = default;
};

struct UserAct {
  std::function<void(Platform::UserInput&)> Run;
  std::optional<Echo> Expected = {};
};

class EventQueue {
 public:
  explicit EventQueue(GuiThread& gui) : gui_(gui) {}

  // On the windows' thread. Waits for the handlers of the act, 0.2 s at most, so that they change the window
  // before the user's next key or click. While no form is shown, the act is dropped.
  void Put(UserAct act) {
    {
      const std::lock_guard lock(mutex_);
      if (!open_) return;
      acts_.push_back(std::move(act));
      ++pending_;
    }
    filled_.notify_one();
    gui_.Await([this] { return IsSettled(); });
  }

  // The operations below are called on the form's thread. From Open to Close the queue takes acts; Close
  // drops those that wait.
  void Open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
  }

  void Close() {
    {
      const std::lock_guard lock(mutex_);
      open_ = false;
      acts_.clear();
      pending_ = 0;
    }
    gui_.Wake();
  }

  // The oldest act; waits until there is one. To be called between Open and Close, and each time followed by
  // Done when the act has run.
  UserAct Take() {
    std::unique_lock lock(mutex_);
    filled_.wait(lock, [this] { return !acts_.empty(); });
    UserAct act = std::move(acts_.front());
    acts_.pop_front();
    return act;
  }

  void Done() {
    {
      const std::lock_guard lock(mutex_);
      --pending_;
    }
    gui_.Wake();
  }

 private:
  bool IsSettled() {
    const std::lock_guard lock(mutex_);
    return pending_ == 0;
  }

  GuiThread& gui_;
  std::mutex mutex_;
  std::condition_variable filled_;
  std::deque<UserAct> acts_;
  int pending_ = 0;
  bool open_ = false;
};

}  // namespace Desktop
