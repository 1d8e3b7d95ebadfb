// HelpWindow: the viewer of the help pages.
#pragma once

#include <QWidget>

class QTextBrowser;

namespace Desktop {

// On the windows' thread. One window shows one page after another and stays open beside the dialogs.
class HelpWindow : public QWidget {
 public:
  HelpWindow();

  // False if the file can't be read; what is shown stays.
  bool ShowFile(const QString& file);

 private:
  QTextBrowser* page_;
};

}  // namespace Desktop
