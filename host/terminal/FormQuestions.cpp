#include "host/terminal/FormQuestions.h"

#include "platform/ProgramTexts.h"
#include "runtime/Texts.h"

namespace Host {

namespace {

using Runtime::TextOf;

String Number(std::size_t number) {
  return FromUtf8(std::to_string(number));
}

bool StartsWith(StringView text, StringView beginning) {
  return beginning.size() <= text.size() && EqualsIgnoreCase(text.substr(0, beginning.size()), beginning);
}

// The text of a control; for a password only whether there is one.
String ShownText(const Control& control) {
  const String text = control.Text();
  return control.PasswordChar() == 0 || text.empty() ? text : TextOf(TextNumber::kAsTyped);
}

// The only choice that the answer names: its number, counted from 1, or the beginning of its text.
std::optional<std::size_t> FindChoice(const std::vector<String>& choices, const String& answer) {
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (answer == Number(i + 1) || EqualsIgnoreCase(choices[i], answer)) return i;
  }
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (!StartsWith(choices[i], answer)) continue;
    if (found) return std::nullopt;
    found = i;
  }
  return found;
}

}  // namespace

String PlainCaption(StringView caption) {
  String plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    // Captions in scripts without key letters have the access key at the end: "(&P)".
    const StringView rest = caption.substr(i);
    if (rest.size() > 3 && rest.starts_with(u"(&") && rest[3] == u')') {
      i += 3;
      continue;
    }
    if (caption[i] == u'&' && ++i == caption.size()) break;
    plain += caption[i];
  }
  plain = Trim(plain);
  if (plain.ends_with(u':')) plain.pop_back();
  return plain;
}

void FormQuestions::Ask() {
  Say(u"== " + PlainCaption(form_.Caption()) + u" ==");
  Say(TextOf(TextNumber::kFormIntroduction));
  input_.Activate();
  while (form_.IsShown()) {
    if (!AskFields() || !AskButtons()) {
      input_.Close();
      // The form is still shown if its Unload handler failed. Without input nothing more can be asked.
      if (form_.IsShown()) form_.Hide();
    }
  }
}

bool FormQuestions::AskFields() {
  String name;
  for (const auto& control : form_.Controls()) {
    if (!form_.IsShown()) return true;
    switch (control->Kind()) {
      case ControlKind::Label:
        name = PlainCaption(control->Caption());
        continue;
      case ControlKind::CheckBox:
        name = PlainCaption(control->Caption());
        break;
      case ControlKind::TextBox:
      case ControlKind::ComboBox:
        break;
      case ControlKind::CommandButton:
      case ControlKind::CommonDialog:
        continue;
    }
    if (control->Visible() && !AskField(*control, name)) return false;
  }
  return true;
}

bool FormQuestions::AskField(Control& control, const String& name) {
  if (!control.Enabled() || control.Locked()) {
    Say(name + u": " + ShownText(control) + u" " +
        TextOf(control.Enabled() ? TextNumber::kFixedField : TextNumber::kDisabledField));
    return true;
  }
  input_.Focus(control);
  switch (control.Kind()) {
    case ControlKind::TextBox:
      return AskText(control, name);
    case ControlKind::CheckBox:
      return AskCheck(control, name);
    default:
      return AskList(control, name);
  }
}

bool FormQuestions::AskText(Control& box, const String& name) {
  const bool secret = box.PasswordChar() != 0;
  const String present = ShownText(box);
  const auto answer = Answer(name + (present.empty() ? u": " : u" [" + present + u"]: "), secret);
  if (!answer) return false;
  if (answer->empty()) return true;
  const String text = *answer == u"-" && !secret ? String() : *answer;
  input_.Type(box, text);
  if (box.Text().size() < text.size()) Say(TextOf(TextNumber::kTextCut, Number(box.Text().size())));
  return true;
}

bool FormQuestions::AskCheck(Control& box, const String& name) {
  const std::vector<String> choices = {TextOf(TextNumber::kYes), TextOf(TextNumber::kNo)};
  const String& present = box.Value() != 0 ? choices[0] : choices[1];
  const String question = name + u" (" + choices[0] + u"/" + choices[1] + u") [" + present + u"]: ";
  for (;;) {
    const auto answer = Answer(question);
    if (!answer) return false;
    if (answer->empty()) return true;
    // English answers are valid in every language.
    auto choice = FindChoice(choices, *answer);
    if (!choice) choice = FindChoice({u"yes", u"no"}, *answer);
    if (choice) {
      input_.Check(box, *choice == 0);
      return true;
    }
    Say(TextOf(TextNumber::kAnswerYesOrNo, choices[0], choices[1]));
  }
}

bool FormQuestions::AskList(Control& list, const String& name) {
  if (list.List().empty()) {
    Say(name + u": " + TextOf(TextNumber::kEmptyList));
    return true;
  }
  for (;;) {
    String prompt = name + u":\n";
    for (std::size_t i = 0; i < list.List().size(); ++i)
      prompt += u"  " + Number(i + 1) + u" " + list.List()[i] + u"\n";
    prompt += TextOf(TextNumber::kNumberPrompt);
    if (!list.Text().empty()) prompt += u" [" + list.Text() + u"]";
    const auto answer = Answer(prompt + u": ");
    if (!answer) return false;
    if (answer->empty()) return true;
    if (const auto choice = FindChoice(list.List(), *answer)) {
      input_.Choose(list, static_cast<std::int32_t>(*choice));
      return true;
    }
    Say(TextOf(TextNumber::kAnswerFromList));
  }
}

bool FormQuestions::AskButtons() {
  while (form_.IsShown()) {
    std::vector<Control*> buttons;
    std::vector<String> captions;
    String prompt;
    String enter;
    for (const auto& control : form_.Controls()) {
      if (control->Kind() != ControlKind::CommandButton || !control->CanFocus()) continue;
      buttons.push_back(control.get());
      captions.push_back(PlainCaption(control->Caption()));
      prompt += Number(buttons.size()) + u" " + captions.back() + u"  ";
      if (control->IsDefault()) enter = captions.back();
    }
    captions.push_back(TextOf(TextNumber::kEditAgain));
    prompt += Number(captions.size()) + u" " + captions.back();
    if (!enter.empty()) prompt += u" [" + enter + u"]";
    const auto answer = Answer(prompt + u": ");
    if (!answer) return false;
    if (answer->empty()) {
      if (input_.Enter()) return true;
      continue;
    }
    const auto choice = FindChoice(captions, *answer);
    if (!choice) {
      Say(TextOf(TextNumber::kAnswerFromList));
      continue;
    }
    if (*choice == buttons.size()) return true;
    input_.Press(*buttons[*choice]);
    // After the default button the fields are asked again, for corrections; after another one, the buttons.
    if (buttons[*choice]->IsDefault()) return true;
  }
  return true;
}

std::optional<String> FormQuestions::Answer(const String& prompt, bool hidden) {
  for (;;) {
    auto answer = hidden ? terminal_.ReadHidden(prompt) : terminal_.ReadLine(prompt);
    if (!answer || *answer != u"?" || hidden) return answer;
    input_.KeyDown(KeyF1);
  }
}

}  // namespace Host
