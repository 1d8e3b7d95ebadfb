#include "platform/Forms/Control.h"

#include <utility>

#include "platform/CheckedArithmetic.h"
#include "platform/Failure.h"
#include "platform/Forms/Form.h"

namespace Platform {

Control::Control(Form& form, ControlDesign design)
    : form_(form),
      design_(std::move(design)),
      backColor_(Kind() == ControlKind::TextBox || Kind() == ControlKind::ComboBox ? WindowBackground
                                                                                   : ButtonFace) {
  if (Kind() != ControlKind::CommonDialog) font_.emplace();
}

StringView Control::TypeName() const {
  switch (Kind()) {
    case ControlKind::Label:
      return u"Label";
    case ControlKind::TextBox:
      return u"TextBox";
    case ControlKind::CommandButton:
      return u"CommandButton";
    case ControlKind::CheckBox:
      return u"CheckBox";
    case ControlKind::ComboBox:
      return u"ComboBox";
    case ControlKind::CommonDialog:
      return u"CommonDialog";
  }
  return u"";
}

template <class T>
void Control::Put(T& field, T value, ControlProperty property) {
  field = std::move(value);
  if (FormObserver* observer = form_.Observer()) observer->ControlChanged(*this, property);
}

void Control::SetCaption(String caption) {
  Put(design_.Caption, std::move(caption), ControlProperty::Caption);
}

String Control::Text() const {
  if (Kind() != ControlKind::ComboBox) return text_;
  return listIndex_ < 0 ? String() : list_[static_cast<std::size_t>(listIndex_)];
}

void Control::SetText(String text) {
  selStart_ = selLength_ = 0;
  if (maxLength_ > 0 && text.size() > static_cast<std::size_t>(maxLength_)) {
    text.resize(static_cast<std::size_t>(maxLength_));
  }
  Put(text_, std::move(text), ControlProperty::Text);
}

void Control::SetValue(std::int16_t value) {
  if (value == value_) return;
  Put(value_, value, ControlProperty::Value);
  form_.Fire(Name(), Event::Click);
}

void Control::AddItem(String text) {
  list_.push_back(std::move(text));
  if (FormObserver* observer = form_.Observer()) observer->ControlChanged(*this, ControlProperty::List);
}

void Control::SetListIndex(std::int32_t position) {
  if (position < -1 || position >= Narrow<std::int32_t>(list_.size()))
    Raise(FailureNumber::InvalidArgument, Name());
  Put(listIndex_, position, ControlProperty::ListIndex);
  form_.Fire(Name(), Event::Click);
}

void Control::SetEnabled(bool enabled) {
  Put(enabled_, enabled, ControlProperty::Enabled);
}
void Control::SetVisible(bool visible) {
  Put(design_.Visible, visible, ControlProperty::Visible);
}
void Control::SetLocked(bool locked) {
  Put(locked_, locked, ControlProperty::Locked);
}
void Control::SetBackColor(std::uint32_t color) {
  Put(backColor_, color, ControlProperty::BackColor);
}
void Control::SetMaxLength(std::int32_t length) {
  Put(maxLength_, length, ControlProperty::MaxLength);
}
void Control::SetSelStart(std::int32_t start) {
  Put(selStart_, start, ControlProperty::Selection);
}
void Control::SetSelLength(std::int32_t length) {
  Put(selLength_, length, ControlProperty::Selection);
}

const Font& Control::Font() const {
  if (!font_) Raise(FailureNumber::NoSuchMember, u"Font");
  return *font_;
}

void Control::SetFont(Platform::Font font) {
  if (!font_) Raise(FailureNumber::NoSuchMember, u"Font");
  Put(*font_, std::move(font), ControlProperty::Font);
}

void Control::SetFocus() {
  form_.MoveFocus(*this);
}

bool Control::CanFocus() const {
  return Visible() && Enabled() && Kind() != ControlKind::Label && Kind() != ControlKind::CommonDialog;
}

}  // namespace Platform
