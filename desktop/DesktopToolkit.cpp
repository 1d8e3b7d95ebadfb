#include "desktop/DesktopToolkit.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <QScreen>
#include <QTreeView>

#include "desktop/DesktopTexts.h"
#include "desktop/FileFilter.h"
#include "desktop/FormSession.h"
#include "desktop/HelpWindow.h"
#include "desktop/Strings.h"
#include "runtime/HelpPages.h"

namespace Desktop {

DesktopToolkit::~DesktopToolkit() {
  gui_.Post([help = help_] { delete help; });
}

std::shared_ptr<FormSession> DesktopToolkit::SessionOf(const Form& form) {
  const std::lock_guard lock(mutex_);
  const auto found = sessions_.find(&form);
  return found != sessions_.end() ? found->second : nullptr;
}

FormWindow* DesktopToolkit::FrontWindow() {
  const std::lock_guard lock(mutex_);
  for (const auto& [form, session] : sessions_) {
    if (session->Shown() && session->Thread() == std::this_thread::get_id()) return session->Window();
  }
  return nullptr;
}

void DesktopToolkit::Load(Form& form) {
  auto session = std::make_shared<FormSession>(gui_, form);
  const std::lock_guard lock(mutex_);
  sessions_[&form] = std::move(session);
}

void DesktopToolkit::ShowModal(Form& form) {
  SessionOf(form)->Show(*this);
}

void DesktopToolkit::Unload(Form& form) {
  std::shared_ptr<FormSession> ended;  // destroyed after the lock is released
  const std::lock_guard lock(mutex_);
  const auto found = sessions_.find(&form);
  if (found == sessions_.end()) return;
  ended = std::move(found->second);
  sessions_.erase(found);
}

void DesktopToolkit::MessageBox(StringView text, const std::optional<String>& title) {
  auto closed = std::make_shared<std::promise<void>>();
  auto wait = closed->get_future();
  gui_.Post([closed, parent = FrontWindow(), text = ToQt(text),
             title = title ? ToQt(*title) : QStringLiteral("Talvane")] {
    auto* box = new QMessageBox(QMessageBox::NoIcon, title, text, QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QDialog::finished, box, [closed] { closed->set_value(); });
    box->open();
  });
  wait.get();
}

std::optional<String> DesktopToolkit::OpenFile(const OpenFileRequest& request) {
  auto chosen = std::make_shared<std::promise<std::optional<String>>>();
  auto wait = chosen->get_future();
  gui_.Post([chosen, request, parent = FrontWindow()] {
    auto* dialog = new QFileDialog(parent, ToQt(request.Title));
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters(NameFilters(ToQt(request.Filter)));
    if (!request.FileName.empty()) dialog->selectFile(ToQt(request.FileName));
    // Qt doesn't translate the type of each file into every language; the filter shows the type.
    if (auto* details = dialog->findChild<QTreeView*>("treeView")) details->setColumnHidden(2, true);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QDialog::finished, dialog, [dialog, chosen](int result) {
      std::optional<String> file;
      if (result == QDialog::Accepted && !dialog->selectedFiles().isEmpty()) {
        file = FromQt(dialog->selectedFiles().constFirst());
      }
      chosen->set_value(std::move(file));
    });
    dialog->open();
  });
  return wait.get();
}

ScreenSize DesktopToolkit::Screen() {
  return gui_.Run([] {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize size = screen->size();
    return ScreenSize{static_cast<float>(size.width() * 1440.0 / screen->logicalDotsPerInchX()),
                      static_cast<float>(size.height() * 1440.0 / screen->logicalDotsPerInchY())};
  });
}

void DesktopToolkit::SetMousePointer(MousePointer pointer) {
  gui_.Post([pointer] {
    while (QGuiApplication::overrideCursor()) QGuiApplication::restoreOverrideCursor();
    if (pointer == MousePointer::Hourglass) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  });
}

void DesktopToolkit::SetZOrder(Form& form, ZOrder order) {
  if (const auto session = SessionOf(form)) session->SetZOrder(order);
}

void DesktopToolkit::ShowPage(const std::optional<std::string>& file, StringView name) {
  const bool shown = file && gui_.Run([this, path = QString::fromStdString(*file)] {
    if (!help_) help_ = new HelpWindow;
    return help_->ShowFile(path);
  });
  if (shown) return;
  String folders;
  for (const std::string& folder : Runtime::HelpFolders())
    folders += (folders.empty() ? u"" : u", ") + FromUtf8(folder);
  const String text = DesktopText(TextNumber::kHelpPageMissing, {Value(String(name)), Value(folders)});
  MessageBox(text.empty() ? name : StringView(text), std::nullopt);
}

bool DesktopToolkit::ShowHelp(std::intptr_t, const std::string& file, std::uint32_t, std::uint32_t number) {
  ShowPage(Runtime::FindHelpPage(file, number), FromUtf8(std::to_string(number)));
  return true;
}

bool DesktopToolkit::ShowTopic(StringView topic) {
  ShowPage(Runtime::FindHelpPage(topic), topic.substr(topic.rfind(u'/') + 1));
  return true;
}

}  // namespace Desktop
