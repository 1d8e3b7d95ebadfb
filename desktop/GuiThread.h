// GuiThread: the one thread of the process that owns the windows.
//
// The toolkit's callers run on threads of their own; everything that touches a widget is handed over here.
// The thread starts with the first toolkit and ends when the process does, so there is one object, which is
// never destroyed: other threads may still be about to use it then. They wait for it, and end with the
// process.
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

  // Runs work on the thread later, in the order of the calls. Any thread. A failure of the work is logged and
  // ends nothing else. Does nothing once the process is ending.
  void Post(std::function<void()> work);

  // Runs work on the thread and gives its result; an exception of it comes back. From any thread but this
  // one.
  template <class Work>
  auto Run(Work work) -> std::invoke_result_t<Work> {
    auto task = std::make_shared<std::packaged_task<std::invoke_result_t<Work>()>>(std::move(work));
    auto result = task->get_future();
    Post([task] { (*task)(); });
    return result.get();  // task is kept here, so that an ending process waits instead of raising
  }

  // On the thread: runs what is posted until settled holds, or a moment has passed in which a person would
  // notice that the windows don't answer. Within posted work it returns at once.
  void Await(const std::function<bool()>& settled);

  // What an Await waits for may have come. Any thread.
  void Wake();

  // Has the process end the thread before anything that the windows stand on goes. To be called on the main
  // thread if possible: a process that another thread ends takes the windows away later than it should.
  static void EndWithProcess();

 private:
  GuiThread();
  void Main(std::promise<void>& started);
  void RunPosted();
  void Stop();

  QObject* receiver_ = nullptr;  // lives on the thread; what is posted to it runs there
  bool running_ = false;         // on the thread: within posted work
  std::mutex mutex_;
  std::condition_variable woken_;
  std::deque<std::function<void()>> posted_;
  bool stopped_ = false;
  std::thread thread_;
};

}  // namespace Desktop
