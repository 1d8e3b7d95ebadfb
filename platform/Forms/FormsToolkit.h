// FormsToolkit: the interface of what shows forms, boxes and help to a user: terminal, desktop, tests.
//
// Each form is used on one thread, and several threads may use a toolkit at once. An operation returns on the
// thread that called it. Unless said otherwise it raises 57, with the reason, where it can't do its work.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Forms/Form.h"

namespace Platform {

struct ScreenSize {
  float Width = 0, Height = 0;  // twips
};

enum class MousePointer : std::int32_t { Default = 0, Hourglass = 11 };

enum class ZOrder : std::int32_t { Topmost = -1, NotTopmost = -2 };

struct OpenFileRequest {
  String Title;
  String FileName;  // the name shown at first; may be empty
  String Filter;    // pairs of a name and a pattern, all separated by "|"
};

class FormsToolkit {
 public:
  virtual ~FormsToolkit();

  // Called before the form's event Load. May set the form's window by Form::TakeWindow. The toolkit must not
  // use the form after Unload.
  virtual void Load(Form& form) = 0;

  // Shows a loaded form and returns when Form::IsShown is false. All input of the user goes through a
  // UserInput.
  virtual void ShowModal(Form& form) = 0;

  // Called when a form is unloaded or destroyed: ends the toolkit's use of it.
  virtual void Unload(Form& form) = 0;

  // Shows a text with one OK button and returns when it is pressed. No title: the toolkit's default.
  virtual void MessageBox(StringView text, const std::optional<String>& title) = 0;

  // The path that the user chose; nullopt after a cancel.
  virtual std::optional<String> OpenFile(const OpenFileRequest& request) = 0;

  virtual ScreenSize Screen() = 0;
  virtual void SetMousePointer(MousePointer pointer) = 0;
  virtual void SetZOrder(Form& form, ZOrder order) = 0;

  // Opens the help viewer for a file (UTF-8; a window's name may follow ">"), a command and its number.
  // False: the page can't be shown, and no message has been shown.
  virtual bool ShowHelp(std::intptr_t window, const std::string& file, std::uint32_t command,
                        std::uint32_t number) = 0;

  // Opens a help topic by its name, for the help component. Result as for ShowHelp.
  virtual bool ShowTopic(StringView topic) = 0;
};

// The open-file dialog of a form. Used on the form's thread.
class CommonDialog {
 public:
  bool CancelError = false;
  OpenFileRequest Request;

  // Shows the dialog and sets Request.FileName to the chosen path. A cancel keeps it, and raises 32755 if
  // CancelError is true.
  void ShowOpen();
};

}  // namespace Platform
