// FormsToolkit: what shows forms, boxes and help to a person. The terminal, the desktop and the tests bring
// one.
//
// Every operation is called on the thread that uses the form, by any number of threads, and comes back on it.
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
  String FileName;  // what stands in the box at first
  String Filter;    // pairs of a name and a pattern, all separated by "|"
};

class FormsToolkit {
 public:
  virtual ~FormsToolkit();

  // Gets to know a form before its Load fires. May give it a window by Form::TakeWindow.
  virtual void Load(Form& form) = 0;

  // Lets the user work on a loaded form and returns as soon as it isn't shown any more. Raises a failure if
  // it can't be shown. All acts of the user go through a UserHand.
  virtual void ShowModal(Form& form) = 0;

  // Forgets a form that is being unloaded or destroyed.
  virtual void Unload(Form& form) = 0;

  // Shows a text with one OK button and returns when it is pressed. No title: the toolkit's own default.
  virtual void MessageBox(StringView text, const std::optional<String>& title) = 0;

  // The path that the user chose, or nothing after a cancel.
  virtual std::optional<String> OpenFile(const OpenFileRequest& request) = 0;

  virtual ScreenSize Screen() = 0;
  virtual void SetMousePointer(MousePointer pointer) = 0;
  virtual void SetZOrder(Form& form, ZOrder order) = 0;

  // The help viewer: a file (8-bit text), which may name a window behind ">", a command word and its number.
  // False: the page can't be shown and the user hasn't been told so.
  virtual bool ShowHelp(std::intptr_t window, const std::string& file, std::uint32_t command,
                        std::uint32_t number) = 0;

  // A help topic by its name, for the help component. The result is that of ShowHelp.
  virtual bool ShowTopic(StringView topic) = 0;
};

// The open-file dialog as forms use it.
class CommonDialog {
 public:
  bool CancelError = false;
  OpenFileRequest Request;

  // Request.FileName becomes the chosen path. After a cancel it stays; failure 32755 if CancelError is set.
  void ShowOpen();
};

}  // namespace Platform
