#include "desktop/GuiThread.h"

#include <QApplication>
#include <QMetaObject>

#include <cstring>

namespace Desktop {
namespace {

QtMessageHandler previousHandler = nullptr;

// The toolkit knows that its application doesn't live on the main thread: a host keeps that one for itself.
void PassMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.contains(QLatin1String("was not created in the main() thread"))) return;
  if (previousHandler) previousHandler(type, context, message);
}

}  // namespace

GuiThread::GuiThread() {
  std::promise<void> started;
  auto running = started.get_future();
  thread_ = std::thread([this, &started] { Main(started); });
  running.get();
}

GuiThread::~GuiThread() {
  Post([] { QCoreApplication::quit(); });
  thread_.join();
}

void GuiThread::Main(std::promise<void>& started) {
  // The application keeps references to both for its whole life.
  static int argumentCount = 1;
  static char name[] = "talvane";
  static char* arguments[] = {name, nullptr};
  previousHandler = qInstallMessageHandler(PassMessage);
  QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  QObject receiver;
  receiver_ = &receiver;
  started.set_value();
  QApplication::exec();
}

void GuiThread::Post(std::function<void()> work) {
  QMetaObject::invokeMethod(receiver_, std::move(work), Qt::QueuedConnection);
}

}  // namespace Desktop
