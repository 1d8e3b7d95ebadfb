#include "desktop/HelpWindow.h"

#include <QFileInfo>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace Desktop {

HelpWindow::HelpWindow() : page_(new QTextBrowser(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(page_);
  resize(560, 620);
  connect(page_, &QTextBrowser::sourceChanged, this, [this] { setWindowTitle(page_->documentTitle()); });
}

bool HelpWindow::ShowFile(const QString& file) {
  if (!QFileInfo(file).isReadable()) return false;
  page_->setSource(QUrl::fromLocalFile(file));
  setWindowTitle(page_->documentTitle());
  show();
  raise();
  activateWindow();
  return true;
}

}  // namespace Desktop
