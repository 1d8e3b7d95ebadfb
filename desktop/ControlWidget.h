// ControlWidget: one control of a form as a widget.
//
// Made and used on the windows' thread alone. What the user does goes into the queue as an act on the
// control's name.
#pragma once

#include <QWidget>

#include <functional>

#include "desktop/ControlState.h"
#include "desktop/EventQueue.h"

class QLabel;

namespace Desktop {

class ControlWidget {
 public:
  using Act = std::function<void(Platform::UserHand&, Platform::Control&)>;

  // Puts an act on the control, and the change that it makes, into the queue of its form.
  using Report = std::function<void(Act act, std::optional<Echo> expected)>;

  // A child of window; null for a kind that is never seen.
  static std::unique_ptr<ControlWidget> Make(const ControlState& state, QWidget* window, Report report);

  virtual ~ControlWidget() = default;

  // Takes one property over; the base knows those that every kind has.
  virtual void Apply(const ControlState& state, Platform::ControlProperty property);

  void ApplyAll(const ControlState& state);
  QWidget* Widget() const { return widget_; }
  const ControlState& State() const { return state_; }

  // The label in front of a box gives it its access key and its name for those who don't see.
  virtual QLabel* AsLabel() { return nullptr; }

 protected:
  ControlWidget(const ControlState& state, QWidget* widget, Report report);

  // The change of one of the control's properties, or of the focus, as an echo.
  Echo Changing(std::optional<Platform::ControlProperty> property, Platform::String text = {},
                std::int32_t number = 0) const {
    return {state_.Name, property, std::move(text), number};
  }

  // Draws the caption as narrow as it takes to have room beside what the control draws itself, in pixels:
  // places are fixed, and fonts and languages differ.
  void FitCaption(int drawnBeside);

  // Runs change without telling the form of it: it comes from there.
  void Quietly(const std::function<void()>& change);

  ControlState state_;
  QWidget* widget_;
  Report report_;
};

// Twips as device-independent pixels of the screen that the widget is on.
QRect ToPixels(const Platform::Place& place, const QWidget& widget);

// A caption without its access key's mark.
QString PlainCaption(Platform::StringView caption);

}  // namespace Desktop
