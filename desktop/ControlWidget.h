// ControlWidget: one control of a form as a widget.
//
// Created, used and destroyed on the windows' thread. No operation raises a failure.
#pragma once

#include <QWidget>

#include <functional>

#include "desktop/ControlState.h"
#include "desktop/EventQueue.h"

class QLabel;

namespace Desktop {

class ControlWidget {
 public:
  using Act = std::function<void(Platform::UserInput&, Platform::Control&)>;

  // Puts an act of the user on the control, and the change that it is expected to make, into the form's
  // queue.
  using Report = std::function<void(Act act, std::optional<Echo> expected)>;

  // The widget is a child of window, which owns it. Null for a common dialog, which has no widget.
  static std::unique_ptr<ControlWidget> Make(const ControlState& state, QWidget* window, Report report);

  virtual ~ControlWidget() = default;

  // Shows one property as it is in state. The base does so for the properties that every kind has.
  virtual void Apply(const ControlState& state, Platform::ControlProperty property);

  void ApplyAll(const ControlState& state);

  // Takes the background and text colours from the application's palette. To be called again when that
  // changes. Nothing but fields have colours of their own: a field that is locked or has the button's
  // background is drawn in the button's colours.
  void ApplyColors();

  QWidget* Widget() const { return widget_; }
  const ControlState& State() const { return state_; }

  // The widget as a label; null for every other kind.
  virtual QLabel* AsLabel() { return nullptr; }

 protected:
  ControlWidget(const ControlState& state, QWidget* widget, Report report);

  // The change of one of the control's properties (none: of the focus) to a text or a number.
  Echo Changing(std::optional<Platform::ControlProperty> property, Platform::String text = {},
                std::int32_t number = 0) const {
    return {state_.Name, property, std::move(text), number};
  }

  // Narrows the font, to 60 % at most, until the caption fits its place, of which the control's own
  // decoration takes some pixels. Places are fixed, but fonts and languages differ.
  void FitCaption(int decoration);

  // Changes the widget without a report: the change comes from the form.
  void Quietly(const std::function<void()>& change);

  ControlState state_;
  QWidget* widget_;
  Report report_;
};

// Twips as device-independent pixels of the screen that the widget is on.
QRect ToPixels(const Platform::Place& place, const QWidget& widget);

// A caption without the "&" of its access key; "&&" gives "&".
QString PlainCaption(Platform::StringView caption);

}  // namespace Desktop
