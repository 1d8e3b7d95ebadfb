// FormWindow: the window of one form.
//
// Made, used and destroyed on the windows' thread. What the user does goes into the queue of the form; what
// code does to the form comes in through Apply.
#pragma once

#include <QDialog>

#include <memory>
#include <vector>

#include "desktop/ControlWidget.h"

namespace Desktop {

class FormWindow : public QDialog {
 public:
  FormWindow(const FormState& state, std::shared_ptr<EventQueue> queue);

  // Makes the window visible, with the focus on the first control in tab order that takes it.
  void Open(const FormState& state, float left, float top);

  void Apply(const ControlState& state, Platform::ControlProperty property);
  void FocusOn(const Platform::String& control);
  void SetZOrder(Platform::ZOrder order);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void reject() override;

 private:
  ControlWidget* Find(const Platform::String& name) const;
  ControlWidget::Report ReportFor(const Platform::String& name);
  void LinkLabels();
  void TellFocus(const Platform::String& control, Qt::FocusReason reason);

  std::shared_ptr<EventQueue> queue_;
  std::vector<std::unique_ptr<ControlWidget>> controls_;  // in tab order
};

}  // namespace Desktop
