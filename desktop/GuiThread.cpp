#include "desktop/GuiThread.h"

#include <unistd.h>

#include <QApplication>
#include <QLibraryInfo>
#include <QMetaObject>
#include <QTranslator>

#include <chrono>
#include <cstdlib>
#include <utility>

#include "runtime/Language.h"

namespace Desktop {
namespace {

constexpr auto kSettleTimeout = std::chrono::milliseconds(200);

QtMessageHandler previousHandler = nullptr;

// Qt's notes and warnings are for developers, who get them by setting QT_LOGGING_RULES. Users get errors
// alone.
void PassMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  const bool error = type == QtCriticalMsg || type == QtFatalMsg;
  if (previousHandler && (error || qEnvironmentVariableIsSet("QT_LOGGING_RULES")))
    previousHandler(type, context, message);
}

}  // namespace

GuiThread& GuiThread::Instance() {
  static auto* const thread = new GuiThread;
  return *thread;
}

GuiThread::GuiThread() {
  std::promise<void> started;
  auto running = started.get_future();
  thread_ = std::thread([this, &started] { Main(started); });
  running.get();
}

void GuiThread::Main(std::promise<void>& started) {
  // Qt counts references to its data of this thread, one for each object that lives on it. At process end the
  // display plug-in's static objects release one more than they took. An object that is never deleted keeps
  // one; without it the data is freed twice.
  static const auto* const holder = new QObject;
  static_cast<void>(holder);
  // The application keeps references to both for its whole life.
  static int argumentCount = 1;
  static char name[] = "talvane";
  static char* arguments[] = {name, nullptr};
  previousHandler = qInstallMessageHandler(PassMessage);
  QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  QTranslator translator;  // of Qt's own texts, where Qt's translations are installed
  const auto file = "qtbase_" + QString::fromStdString(Runtime::UserLanguage());
  if (translator.load(file, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QApplication::installTranslator(&translator);
  QObject receiver;
  receiver_ = &receiver;
  started.set_value();
  QApplication::exec();
}

void GuiThread::Post(std::function<void()> work) {
  const std::lock_guard lock(mutex_);
  posted_.push_back(std::move(work));
  if (stopped_) return;  // the work is not destroyed, so a caller of Run waits until the process is gone
  QMetaObject::invokeMethod(
      receiver_, [this] { RunPosted(); }, Qt::QueuedConnection);
  woken_.notify_one();
}

void GuiThread::RunPosted() {
  if (running_) return;
  running_ = true;
  std::unique_lock lock(mutex_);
  while (!posted_.empty()) {
    const auto work = std::move(posted_.front());
    posted_.pop_front();
    lock.unlock();
    try {
      work();
    } catch (const std::exception& failure) {
      qCritical("The work of a window failed: %s", failure.what());
    } catch (...) {
      qCritical("The work of a window failed.");
    }
    lock.lock();
  }
  running_ = false;
}

void GuiThread::Await(const std::function<bool()>& settled) {
  if (running_) return;
  const auto until = std::chrono::steady_clock::now() + kSettleTimeout;
  for (bool inTime = true; inTime;) {
    RunPosted();
    std::unique_lock lock(mutex_);
    if (posted_.empty() && settled()) return;
    inTime = woken_.wait_until(lock, until, [&] { return !posted_.empty() || settled(); });
  }
}

void GuiThread::Wake() {
  const std::lock_guard lock(mutex_);
  woken_.notify_one();
}

void GuiThread::EndWithProcess() {
  // exit() destroys the thread_local objects of its thread before all static objects, Qt's among them. So the
  // thread of the windows ends here if the main thread calls exit(), and by atexit if another one does.
  struct Ending {
    ~Ending() {
      if (gettid() == getpid()) Instance().Stop();
    }
  };
  static thread_local const Ending ending;
  static const int registered = std::atexit([] { Instance().Stop(); });
  static_cast<void>(registered);
}

void GuiThread::Stop() {
  {
    const std::lock_guard lock(mutex_);
    if (std::exchange(stopped_, true)) return;
    QMetaObject::invokeMethod(
        receiver_, [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
  }
  thread_.join();
}

}  // namespace Desktop
