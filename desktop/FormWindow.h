// FormWindow: the window of one form.
//
// Created, used and destroyed on the windows' thread. What the user does goes into the form's queue; what
// code does to the form is applied by the operations. No operation raises a failure; a name that no control
// has changes nothing.
#pragma once

#include <QDialog>

#include <memory>
#include <vector>

#include "desktop/ControlWidget.h"

namespace Desktop {

class FormWindow : public QDialog {
 public:
  FormWindow(const FormState& state, std::shared_ptr<EventQueue> queue);

  // Shows the window in front of others, its frame at left and top (see Place), with the focus on the first
  // control in tab order that takes it.
  void Open(const FormState& state, float left, float top);

  // Moves the window's frame to left and top: twips from the primary screen's corner.
  void Place(float left, float top);

  // Shows one property of the control that state names.
  void Apply(const ControlState& state, Platform::ControlProperty property);

  void FocusOn(const Platform::String& control);

  // Does nothing on a window that hasn't been opened.
  void SetZOrder(Platform::ZOrder order);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void reject() override;

 private:
  ControlWidget* Find(const Platform::String& name) const;
  ControlWidget::Report ReportFor(const Platform::String& name);
  void ReportKey(int key);
  void LinkLabels();
  void ReportFocus(const Platform::String& control, Qt::FocusReason reason);

  std::shared_ptr<EventQueue> queue_;
  std::vector<std::unique_ptr<ControlWidget>> controls_;  // in tab order
};

}  // namespace Desktop
