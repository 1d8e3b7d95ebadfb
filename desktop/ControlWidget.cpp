#include "desktop/ControlWidget.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>

#include "desktop/KeyCodes.h"
#include "desktop/Strings.h"
#include "desktop/TextBox.h"

namespace Desktop {

using namespace Platform;

namespace {

class LabelWidget : public ControlWidget {
 public:
  LabelWidget(const ControlState& state, QWidget* window, Report report)
      : ControlWidget(state, new QLabel(window), std::move(report)) {
    static_cast<QLabel*>(widget_)->setTextFormat(Qt::PlainText);
  }
  void Apply(const ControlState& state, ControlProperty property) override {
    ControlWidget::Apply(state, property);
    if (property == ControlProperty::Caption) AsLabel()->setText(ToQt(state.Caption));
    if (property == ControlProperty::Caption || property == ControlProperty::Font) FitCaption(2);
  }
  QLabel* AsLabel() override { return static_cast<QLabel*>(widget_); }
};

class ButtonWidget : public ControlWidget {
 public:
  ButtonWidget(const ControlState& state, QWidget* window, Report report)
      : ControlWidget(state, new QPushButton(window), std::move(report)) {
    Button()->setDefault(state.Default);
    QObject::connect(Button(), &QPushButton::clicked, Button(), [this] {
      if (!state_.Default || Button()->window()->focusWidget() == Button()) {
        report_([](UserInput& input, Control& button) { input.Press(button); }, Changing({}));
      } else {  // the Enter key, which doesn't move the focus
        report_([](UserInput& input, Control&) { input.Enter(); }, {});
      }
    });
  }
  void Apply(const ControlState& state, ControlProperty property) override {
    ControlWidget::Apply(state, property);
    if (property == ControlProperty::Caption) Button()->setText(ToQt(state.Caption));
    if (property == ControlProperty::Caption || property == ControlProperty::Font) FitCaption(6);
  }

 private:
  QPushButton* Button() { return static_cast<QPushButton*>(widget_); }
};

class CheckWidget : public ControlWidget {
 public:
  CheckWidget(const ControlState& state, QWidget* window, Report report)
      : ControlWidget(state, new QCheckBox(window), std::move(report)) {
    QObject::connect(Check(), &QCheckBox::toggled, Check(), [this](bool on) {
      report_([on](UserInput& input, Control& check) { input.Check(check, on); },
              Changing(ControlProperty::Value, {}, on ? 1 : 0));
    });
  }
  void Apply(const ControlState& state, ControlProperty property) override {
    ControlWidget::Apply(state, property);
    if (property == ControlProperty::Caption) Check()->setText(ToQt(state.Caption));
    if (property == ControlProperty::Caption || property == ControlProperty::Font) FitCaption(26);
    if (property == ControlProperty::Value) Quietly([&] { Check()->setChecked(state.Value != 0); });
  }

 private:
  QCheckBox* Check() { return static_cast<QCheckBox*>(widget_); }
};

class TextWidget : public ControlWidget {
 public:
  TextWidget(const ControlState& state, QWidget* window, Report report)
      : ControlWidget(state, new TextBox(state.PasswordChar, window), std::move(report)) {
    if (state.ImeMode == 3) Box()->setAttribute(Qt::WA_InputMethodEnabled, false);
    Box()->OnMouseDown = [this] {
      report_([](UserInput& input, Control& box) { input.MouseDown(box); }, {});
    };
    Box()->OnMouseMove = [this] {
      report_([](UserInput& input, Control& box) { input.MouseMove(box); }, {});
    };
    Box()->OnFocus = [this] {
      report_([](UserInput& input, Control& box) { input.Focus(box); }, Changing({}));
    };
    QObject::connect(Box(), &QLineEdit::textEdited, Box(), [this](const QString& text) {
      report_([text = FromQt(text)](UserInput& input, Control& box) { input.Type(box, text); },
              Changing(ControlProperty::Text, FromQt(text)));
    });
  }
  void Apply(const ControlState& state, ControlProperty property) override {
    ControlWidget::Apply(state, property);
    switch (property) {
      case ControlProperty::Text:
        Quietly([&] { Box()->setText(ToQt(state.Text)); });
        break;
      case ControlProperty::Locked:
        Box()->setReadOnly(state.Locked);
        ApplyColors();
        break;
      case ControlProperty::MaxLength:
        Box()->setMaxLength(state.MaxLength > 0 ? state.MaxLength : 32767);
        break;
      case ControlProperty::Selection:
        if (state.SelLength > 0) {
          Box()->setSelection(state.SelStart, state.SelLength);
        } else {
          Box()->deselect();
        }
        break;
      default:
        break;
    }
  }

 private:
  TextBox* Box() { return static_cast<TextBox*>(widget_); }
};

// A drop-down list that reports the scrolling of its open list and each key that is released.
class ListWidget : public ControlWidget {
 public:
  ListWidget(const ControlState& state, QWidget* window, Report report)
      : ControlWidget(state, new KeyedList(window), std::move(report)) {
    static_cast<KeyedList*>(widget_)->OnKeyUp = [this](std::int32_t code) {
      report_([code](UserInput& input, Control& list) { input.KeyUp(list, code); }, {});
    };
    QObject::connect(List(), &QComboBox::activated, List(), [this](int position) {
      report_([position](UserInput& input, Control& list) { input.Choose(list, position); },
              Changing(ControlProperty::ListIndex, {}, position));
    });
    QObject::connect(List()->view()->verticalScrollBar(), &QScrollBar::valueChanged, List(),
                     [this] { report_([](UserInput& input, Control& list) { input.Scroll(list); }, {}); });
  }
  void Apply(const ControlState& state, ControlProperty property) override {
    ControlWidget::Apply(state, property);
    if (property == ControlProperty::List) {
      Quietly([&] {
        List()->clear();
        for (const String& entry : state.List) List()->addItem(ToQt(entry));
        List()->setCurrentIndex(state.ListIndex);
      });
    } else if (property == ControlProperty::ListIndex) {
      Quietly([&] { List()->setCurrentIndex(state.ListIndex); });
    }
  }

 private:
  class KeyedList : public QComboBox {
   public:
    using QComboBox::QComboBox;
    std::function<void(std::int32_t code)> OnKeyUp;

   protected:
    void keyReleaseEvent(QKeyEvent* event) override {
      QComboBox::keyReleaseEvent(event);
      if (OnKeyUp) OnKeyUp(KeyCodeOf(event->key()));
    }
  };
  QComboBox* List() { return static_cast<QComboBox*>(widget_); }
};

}  // namespace

std::unique_ptr<ControlWidget> ControlWidget::Make(const ControlState& state, QWidget* window,
                                                   Report report) {
  switch (state.Kind) {
    case ControlKind::Label:
      return std::make_unique<LabelWidget>(state, window, std::move(report));
    case ControlKind::TextBox:
      return std::make_unique<TextWidget>(state, window, std::move(report));
    case ControlKind::CommandButton:
      return std::make_unique<ButtonWidget>(state, window, std::move(report));
    case ControlKind::CheckBox:
      return std::make_unique<CheckWidget>(state, window, std::move(report));
    case ControlKind::ComboBox:
      return std::make_unique<ListWidget>(state, window, std::move(report));
    case ControlKind::CommonDialog:
      return nullptr;
  }
  return nullptr;
}

ControlWidget::ControlWidget(const ControlState& state, QWidget* widget, Report report)
    : state_(state), widget_(widget), report_(std::move(report)) {
  widget_->setObjectName(ToQt(state.Name));
  widget_->setGeometry(ToPixels(state.Place, *widget_->parentWidget()));
}

void ControlWidget::Apply(const ControlState& state, ControlProperty property) {
  state_ = state;
  switch (property) {
    case ControlProperty::Enabled:
      widget_->setEnabled(state.Enabled);
      break;
    case ControlProperty::Visible:
      widget_->setVisible(state.Visible);
      break;
    case ControlProperty::BackColor:
      ApplyColors();
      break;
    case ControlProperty::Font:
      if (state.Font) {
        QFont font = widget_->font();
        if (!state.Font->Name.empty()) font.setFamily(ToQt(state.Font->Name));
        font.setPointSizeF(state.Font->Size);
        widget_->setFont(font);
      }
      break;
    default:
      break;
  }
}

void ControlWidget::ApplyColors() {
  if (state_.Kind != ControlKind::TextBox && state_.Kind != ControlKind::ComboBox) return;
  QPalette palette;  // without colours of its own: the widget has those of the application
  if (state_.Locked || state_.BackColor == ButtonFace) {
    palette = QApplication::palette(widget_);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
      palette.setColor(group, QPalette::Base, palette.color(group, QPalette::Button));
      palette.setColor(group, QPalette::Text, palette.color(group, QPalette::ButtonText));
    }
  }
  widget_->setPalette(palette);
}

void ControlWidget::FitCaption(int decoration) {
  constexpr int kNarrowest = 60;  // percent
  QFont font = widget_->font();
  font.setStretch(QFont::Unstretched);
  const int room = widget_->width() - decoration;
  const auto wanted = [&] {
    return QFontMetrics(font).size(Qt::TextShowMnemonic, ToQt(state_.Caption)).width();
  };
  for (int stretch = 99; wanted() > room && stretch >= kNarrowest; --stretch) font.setStretch(stretch);
  widget_->setFont(font);
}

void ControlWidget::ApplyAll(const ControlState& state) {
  for (const ControlProperty property :
       {ControlProperty::Font, ControlProperty::Caption, ControlProperty::MaxLength, ControlProperty::Text,
        ControlProperty::Value, ControlProperty::List, ControlProperty::ListIndex, ControlProperty::Locked,
        ControlProperty::BackColor, ControlProperty::Enabled, ControlProperty::Visible}) {
    Apply(state, property);
  }
}

void ControlWidget::Quietly(const std::function<void()>& change) {
  const QSignalBlocker blocker(widget_);
  change();
}

QRect ToPixels(const Place& place, const QWidget& widget) {
  const double across = widget.logicalDpiX() / 1440.0;
  const double down = widget.logicalDpiY() / 1440.0;
  // The edges are rounded, not the sizes, so that places that touch in twips touch in pixels.
  const QPoint topLeft(qRound(place.Left * across), qRound(place.Top * down));
  const QPoint bottomRight(qRound((place.Left + place.Width) * across),
                           qRound((place.Top + place.Height) * down));
  return {topLeft, QSize(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y())};
}

QString PlainCaption(StringView caption) {
  QString plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&' && i + 1 < caption.size()) ++i;
    plain += QChar(caption[i]);
  }
  return plain;
}

}  // namespace Desktop
