// FormQuestions: shows a form on the terminal: its fields as questions, its buttons as a choice.
#pragma once

#include <optional>
#include <vector>

#include "host/terminal/Terminal.h"
#include "platform/Forms/FormsToolkit.h"
#include "platform/Forms/UserInput.h"

namespace Host {

using namespace Platform;

// A caption without the mark of its access key and the colon at its end; "&&" becomes "&".
String PlainCaption(StringView caption);

class FormQuestions {
 public:
  FormQuestions(Form& form, FormsToolkit& toolkit, const Terminal& terminal)
      : form_(form), input_(form, toolkit), terminal_(terminal) {}

  // Asks until the form is closed.
  void Ask();

 private:
  // Each returns false at the end of the input.
  bool AskFields();
  bool AskField(Control& control, const String& name);
  bool AskText(Control& box, const String& name);
  bool AskCheck(Control& box, const String& name);
  bool AskList(Control& list, const String& name);
  bool AskButtons();

  std::optional<String> Answer(const String& prompt, bool hidden = false);
  void Say(const String& text) { terminal_.Write(text + u"\n"); }

  Form& form_;
  UserInput input_;
  const Terminal& terminal_;
};

}  // namespace Host
