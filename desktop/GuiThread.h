// GuiThread: the one thread of the process that owns the windows.
//
// The toolkit's callers run on threads of their own; everything that touches a widget is handed over here.
// The thread starts with the first toolkit and ends, windows and all, before the process does.
#pragma once

#include <functional>
#include <future>
#include <memory>
#include <thread>
#include <type_traits>

class QObject;

namespace Desktop {

class GuiThread {
 public:
  // Starts the thread and returns when its event loop is about to run.
  GuiThread();
  ~GuiThread();
  GuiThread(const GuiThread&) = delete;
  GuiThread& operator=(const GuiThread&) = delete;

  // Runs work on the thread later, in the order of the calls. Any thread.
  void Post(std::function<void()> work);

  // Runs work on the thread and gives its result; an exception of it comes back. From any thread but this
  // one.
  template <class Work>
  auto Run(Work work) -> std::invoke_result_t<Work> {
    auto task = std::make_shared<std::packaged_task<std::invoke_result_t<Work>()>>(std::move(work));
    auto result = task->get_future();
    Post([task] { (*task)(); });
    return result.get();
  }

 private:
  void Main(std::promise<void>& started);

  QObject* receiver_ = nullptr;  // lives on the thread; what is posted to it runs there
  std::thread thread_;
};

}  // namespace Desktop
