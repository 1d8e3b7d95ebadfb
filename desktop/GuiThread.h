// GuiThread: the one thread of the process that owns the windows.
//
// The toolkit's callers run on threads of their own; all work on widgets is posted to this one. The thread
// starts with the first toolkit and ends with the process. The object is never destroyed, because other
// threads may still use it while the process ends; those that wait for a result then wait until the process
// is gone.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <type_traits>

class QObject;

namespace Desktop {

class GuiThread {
 public:
  // Starts the thread at the first call, and returns when its event loop is about to run.
  static GuiThread& Instance();

  GuiThread(const GuiThread&) = delete;
  GuiThread& operator=(const GuiThread&) = delete;

  // Runs work on the thread later, in the order of the calls. Any thread. A failure of the work is logged;
  // the work posted after it still runs. Once the process is ending, the work is not run.
  void Post(std::function<void()> work);

  // Runs work on the thread and returns its result; an exception of it is raised here. From any thread but
  // this one, which would wait for itself. Doesn't return once the process is ending.
  template <class Work>
  auto Run(Work work) -> std::invoke_result_t<Work> {
    auto task = std::make_shared<std::packaged_task<std::invoke_result_t<Work>()>>(std::move(work));
    auto result = task->get_future();
    Post([task] { (*task)(); });
    return result.get();  // task is kept here, so that an ending process waits instead of raising
  }

  // On the thread alone: runs posted work until settled returns true, for 0.2 s at most: a user would notice
  // a longer delay. Within posted work it returns at once.
  void Await(const std::function<bool()>& settled);

  // Makes Await check its condition again. Any thread.
  void Wake();

  // Ends the thread when the process ends, before Qt's static objects are destroyed. To be called on the main
  // thread if possible: if not, the windows disappear later than the main thread's own objects.
  static void EndWithProcess();

 private:
  GuiThread();
  void Main(std::promise<void>& started);
  void RunPosted();
  void Stop();

  QObject* receiver_ = nullptr;  // lives on the thread; what is posted to it runs there
  bool running_ = false;         // within posted work; used on the thread alone
  std::mutex mutex_;
  std::condition_variable woken_;
  std::deque<std::function<void()>> posted_;
  bool stopped_ = false;
  std::thread thread_;
};

}  // namespace Desktop
