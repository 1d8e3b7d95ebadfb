// HelpWindow: the viewer of help pages.
#pragma once

#include <QDialog>

class QTextBrowser;

namespace Desktop {

// Created, used and destroyed on the windows' thread. One window shows one page after another and stays open
// beside the dialogs. Escape closes it.
class HelpWindow : public QDialog {
 public:
  HelpWindow();

  // Shows an HTML file in front of other windows. False if the file can't be read; the window stays as it is.
  bool ShowFile(const QString& file);

 private:
  QTextBrowser* page_;
};

}  // namespace Desktop
