// Form: the model of a dialog, which knows no toolkit.
//
// A dialog is a form plus handlers. It is made, used and dropped on one thread, and its handlers run on the
// thread that called ShowModal, whatever thread a toolkit draws on. The first touch of a form (of its
// caption, its place or its controls) loads it: the toolkit gets to know it, and Load fires.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "platform/Forms/Control.h"

namespace Platform {

enum class Event {
  Click,
  KeyUp,
  Scroll,
  GotFocus,
  MouseDown,
  MouseMove,  // of a control
  Load,
  Activate,
  KeyDown,
  Unload  // of a form
};

enum class FormProperty { Caption, Font, Place, Icon };

// What comes with an event. KeyCode is the platform's number of the key, for KeyDown and KeyUp alone.
struct EventArgs {
  std::int32_t KeyCode = 0;
};

inline constexpr std::int32_t KeyF1 = 112;

struct FormDesign {
  String Name;
  String Caption;
  String Tag;
  Platform::Place Place;  // left, top, and the size of the client area
};

// Told of every change that code makes to a shown form. Called on the form's thread.
class FormObserver {
 public:
  virtual ~FormObserver();
  virtual void ControlChanged(const Control& control, ControlProperty property) = 0;
  virtual void FormChanged(FormProperty property) = 0;
  virtual void FocusMoved(const Control& control) = 0;
  virtual void Ended() = 0;  // hidden or unloaded
};

class Form {
 public:
  using Handler = std::function<void(const EventArgs&)>;

  Form(FormDesign design, std::vector<ControlDesign> controls);  // the controls in tab order
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form();

  const String& Name() const { return design_.Name; }
  const String& Tag() const { return design_.Tag; }

  // These touch the form.
  const String& Caption();
  void SetCaption(String caption);
  const Platform::Font& Font();
  void SetFont(Platform::Font font);
  Platform::Place Place();  // of the whole window on the screen
  void Move(float left, float top);
  std::span<const std::unique_ptr<Control>> Controls();
  Control& operator[](StringView name);  // raises 438 for a name that the form lacks
  void SetKeyPreview(bool preview);
  void ClearIcon();
  std::intptr_t WindowHandle();

  // The client area, in twips. These and the rest below don't touch the form.
  float ClientWidth() const { return design_.Place.Width; }
  float ClientHeight() const { return design_.Place.Height; }
  bool KeyPreview() const { return keyPreview_; }
  bool HasIcon() const { return icon_; }
  bool IsLoaded() const { return loaded_; }
  bool IsShown() const { return shown_; }
  Control* ActiveControl() const { return activeControl_; }

  // Shows the form and returns when it has been hidden or unloaded. A failure of the toolkit passes.
  void ShowModal();

  // Ends the modal show; the form stays loaded.
  void Hide();

  // Ends the modal show and fires Unload. Does nothing on a form that isn't loaded.
  void Unload();

  // The handler of an event; none: nothing happens. Of the form itself the control's name is empty.
  void Handle(StringView control, Event event, Handler handler);

  // Runs the handler. A failure in it passes to the caller.
  void Fire(StringView control, Event event, const EventArgs& arguments = {});

  // Makes a control the active one and fires its GotFocus, unless it is active already.
  void MoveFocus(Control& control);

  // For toolkits: the observer (null for none), and the window's place and handle as the toolkit made it.
  void SetObserver(FormObserver* observer) { observer_ = observer; }
  FormObserver* Observer() const { return observer_; }
  void TakeWindow(std::intptr_t handle, float width, float height);

 private:
  void Touch();
  void End();

  FormDesign design_;
  std::vector<std::unique_ptr<Control>> controls_;
  std::map<std::pair<String, Event>, Handler> handlers_;
  Platform::Font font_;
  Platform::Place window_;
  std::intptr_t windowHandle_ = 0;
  bool keyPreview_ = false;
  bool icon_ = true;
  bool loaded_ = false;
  bool shown_ = false;
  Control* activeControl_ = nullptr;
  FormObserver* observer_ = nullptr;
};

}  // namespace Platform
