#include "desktop/HelpWindow.h"

#include <QFileInfo>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "desktop/DesktopTexts.h"
#include "desktop/Strings.h"

namespace Desktop {

HelpWindow::HelpWindow() : QDialog(nullptr, Qt::Window), page_(new QTextBrowser(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(page_);
  resize(560, 620);
  connect(page_, &QTextBrowser::sourceChanged, this, [this] {
    const QString title = ToQt(DesktopText(TextNumber::kHelpTitle, {FromQt(page_->documentTitle())}));
    setWindowTitle(title.isEmpty() ? page_->documentTitle() : title);
  });
}

bool HelpWindow::ShowFile(const QString& file) {
  if (!QFileInfo(file).isReadable()) return false;
  page_->setSource(QUrl::fromLocalFile(file));
  show();
  raise();
  activateWindow();
  return true;
}

}  // namespace Desktop
