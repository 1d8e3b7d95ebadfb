#include "desktop/GuiThread.h"

#include <unistd.h>

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QMetaObject>
#include <QTranslator>

#include <chrono>
#include <cstdlib>
#include <utility>

namespace Desktop {
namespace {

constexpr auto kSettleTimeout = std::chrono::milliseconds(200);

QtMessageHandler previousHandler = nullptr;

// Drops what is known and meant: the application doesn't live on the main thread, which a host keeps for
// itself, and a display may lack a wish that windows have.
void PassMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.contains(QLatin1String("was not created in the main() thread")) ||
      message.startsWith(QLatin1String("This plugin does not support")))
    return;
  if (previousHandler) previousHandler(type, context, message);
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
  // The application keeps references to both for its whole life.
  static int argumentCount = 1;
  static char name[] = "talvane";
  static char* arguments[] = {name, nullptr};
  previousHandler = qInstallMessageHandler(PassMessage);
  QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  QTranslator translator;  // of the toolkit's own texts, where its translations are installed
  if (translator.load(QLocale(), "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QApplication::installTranslator(&translator);
  QObject receiver;
  receiver_ = &receiver;
  started.set_value();
  QApplication::exec();
}

void GuiThread::Post(std::function<void()> work) {
  const std::lock_guard lock(mutex_);
  posted_.push_back(std::move(work));
  if (stopped_) return;  // kept, not dropped: whoever waits for it waits on
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
      qWarning("The work of a window failed: %s", failure.what());
    } catch (...) {
      qWarning("The work of a window failed.");
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
  // An ending process destroys the objects of the thread that ends it first. On the main thread that is the
  // moment at which all that the windows stand on is still there.
  struct Ending {
    ~Ending() {
      if (gettid() == getpid()) Instance().Stop();
    }
  };
  static thread_local const Ending ending;
  static const int atLatest = std::atexit([] { Instance().Stop(); });
  static_cast<void>(atLatest);
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
