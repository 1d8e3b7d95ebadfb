// Form: the model of a dialog, which knows no toolkit.
//
// A dialog is a form plus handlers. It is created, used and destroyed on one thread, on which ShowModal is
// called and all handlers run; a toolkit may draw on another one. The first access to the caption, the place
// or the controls loads the form: FormsToolkit::Load is called, then the event Load fires.
//
// Failures of the toolkit and of handlers are raised to the caller, from each operation that loads the form,
// shows or unloads it, or fires an event. References and pointers that a form gives are valid as long as the
// form.
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

// The arguments of an event. KeyCode is a virtual-key code, for KeyDown and KeyUp; 0 for other events.
struct EventArgs {
  std::int32_t KeyCode = 0;
};

inline constexpr std::int32_t KeyF1 = 112;

struct FormDesign {
  String Name;
  String Caption;
  String Tag;
  Platform::Place Place;  // left and top of the window, width and height of its client area
};

// Receives each change of a form and its controls, after it was made, on the form's thread. What it raises
// reaches the code that made the change.
class FormObserver {
 public:
  virtual ~FormObserver();
  virtual void ControlChanged(const Control& control, ControlProperty property) = 0;
  virtual void FormChanged(FormProperty property) = 0;
  virtual void FocusMoved(const Control& control) = 0;
  virtual void Ended() = 0;  // the modal show has ended: hidden or unloaded
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

  // Each of these loads the form on its first access. A failed load leaves the form unloaded.
  const String& Caption();
  void SetCaption(String caption);
  const Platform::Font& Font();
  void SetFont(Platform::Font font);
  Platform::Place Place();  // of the whole window on the screen, in twips
  void Move(float left, float top);
  std::span<const std::unique_ptr<Control>> Controls();
  Control& operator[](StringView name);  // in this spelling; raises 438 if there is none
  void SetKeyPreview(bool preview);      // true: the form gets KeyDown for the keys of its controls
  void ClearIcon();
  std::intptr_t WindowHandle();  // as the toolkit gave it; 0: none

  // The client area, in twips. From here on nothing loads the form but ShowModal.
  float ClientWidth() const { return design_.Place.Width; }
  float ClientHeight() const { return design_.Place.Height; }
  bool KeyPreview() const { return keyPreview_; }
  bool HasIcon() const { return icon_; }
  bool IsLoaded() const { return loaded_; }
  bool IsShown() const { return shown_; }
  Control* ActiveControl() const { return activeControl_; }  // which has the focus; null: none

  // Loads and shows the form, and returns when it has been hidden or unloaded.
  void ShowModal();

  // Ends the modal show; the form stays loaded.
  void Hide();

  // Ends the modal show and fires Unload. Does nothing on a form that isn't loaded.
  void Unload();

  // Sets the handler of a control's event in place of an earlier one; an empty name means the form itself.
  void Handle(StringView control, Event event, Handler handler);

  // Runs the handler of the event, if there is one. Raises what the handler raises.
  void Fire(StringView control, Event event, const EventArgs& arguments = {});

  // Makes a control the active one and fires its GotFocus, unless it is active already.
  void MoveFocus(Control& control);

  // For toolkits: the observer (null: none), which must outlive its use, and the window that the toolkit
  // created: its handle, and its outer size in twips.
  void SetObserver(FormObserver* observer) { observer_ = observer; }
  FormObserver* Observer() const { return observer_; }
  void TakeWindow(std::intptr_t handle, float width, float height);

 private:
  void LoadOnce();
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
