// FormSession: connects one loaded form, on the thread that uses it, with its window on the windows' thread.
#pragma once

#include <memory>
#include <thread>

#include "desktop/EventQueue.h"
#include "desktop/FormWindow.h"
#include "desktop/GuiThread.h"

namespace Desktop {

// Created, used and destroyed on the form's thread; Window, Thread and Shown may be called on any. The form
// outlives the session.
class FormSession : public Platform::FormObserver {
 public:
  FormSession(GuiThread& gui, Platform::Form& form);
  ~FormSession() override;

  // Shows the window and runs the user's acts on this thread until the form isn't shown any more. A failure
  // in an act is shown by UserInput.
  void Show(Platform::FormsToolkit& toolkit);

  void SetZOrder(Platform::ZOrder order);

  // Never null. The window may be used on the windows' thread alone.
  FormWindow* Window() const { return window_; }
  std::thread::id Thread() const { return thread_; }
  bool Shown() const { return shown_; }

 private:
  void ControlChanged(const Platform::Control& control, Platform::ControlProperty property) override;
  void FormChanged(Platform::FormProperty property) override;
  void FocusMoved(const Platform::Control& control) override;
  void Ended() override;

  // Opens the window on the form as it is now.
  void OpenWindow();

  // True, once, for the change that the running act was expected to make.
  bool IsEcho(const Echo& change);

  // The window shows a change that the form refused: shows the form's state again.
  void TakeBack(const Echo& change);

  GuiThread& gui_;
  Platform::Form& form_;
  std::shared_ptr<EventQueue> queue_;
  std::optional<Echo> expected_;
  FormWindow* window_ = nullptr;  // owned
  std::thread::id thread_ = std::this_thread::get_id();
  std::atomic<bool> shown_ = false;
};

}  // namespace Desktop
