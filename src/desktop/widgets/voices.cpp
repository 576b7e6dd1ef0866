#include "desktop/widgets/voices.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "desktop/text_convert.h"
#include "desktop/widgets/lamp_widget.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/readout.h"

namespace kestrum {
namespace {

// Words for a display that may be a button too.
template <typename Widget>
class PressableVoice : public QAccessibleWidget {
 public:
  PressableVoice(Widget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role), widget_(widget) {}

  QStringList actionNames() const override {
    return widget_->IsPressable() ? QStringList{pressAction(), setFocusAction()}
                                  : QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action == pressAction() && widget_->IsPressable()) {
      widget_->Press();
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 protected:
  const Widget& Shown() const { return *widget_; }

 private:
  Widget* widget_;
};

class LampVoice : public QAccessibleWidget {
 public:
  explicit LampVoice(LampWidget* lamp) : QAccessibleWidget(lamp, QAccessible::Button), lamp_(lamp) {}

  QString text(QAccessible::Text kind) const override {
    if (kind != QAccessible::Name) return QAccessibleWidget::text(kind);
    const LampText& says = lamp_->Says();
    // Before it says anything it is known by its place.
    if (says.words.empty()) return lamp_->accessibleName();
    return ToQt(says.words) + QStringLiteral(", ") + ToQt(says.detail);
  }
  QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
  void doAction(const QString& action) override {
    if (action == pressAction()) {
      lamp_->click();
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 private:
  LampWidget* lamp_;
};

class LineVoice : public PressableVoice<TextLine> {
 public:
  explicit LineVoice(TextLine* line) : PressableVoice(line, QAccessible::StaticText) {}

  QAccessible::Role role() const override {
    return Shown().IsPressable() ? QAccessible::Button : QAccessible::StaticText;
  }
  QString text(QAccessible::Text kind) const override {
    if (kind != QAccessible::Name) return QAccessibleWidget::text(kind);
    // What is faded for the eye is said to the ear.
    return Shown().Stale() ? Shown().text() + QStringLiteral(", no longer true") : Shown().text();
  }
};

class BarVoice : public PressableVoice<MeterBar>, public QAccessibleValueInterface {
 public:
  explicit BarVoice(MeterBar* bar) : PressableVoice(bar, QAccessible::ProgressBar) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QVariant currentValue() const override { return Shown().value(); }
  void setCurrentValue(const QVariant& /*value*/) override {}
  QVariant maximumValue() const override { return Shown().maximum(); }
  QVariant minimumValue() const override { return Shown().minimum(); }
  QVariant minimumStepSize() const override { return 1; }
};

QAccessibleInterface* VoiceOf(const QString& class_name, QObject* object) {
  if (class_name == QLatin1String("kestrum::LampWidget")) {
    return new LampVoice(static_cast<LampWidget*>(object));
  }
  if (class_name == QLatin1String("kestrum::TextLine")) return new LineVoice(static_cast<TextLine*>(object));
  if (class_name == QLatin1String("kestrum::MeterBar")) return new BarVoice(static_cast<MeterBar*>(object));
  return nullptr;
}

}  // namespace

void GiveVoices() {
  QAccessible::installFactory(VoiceOf);
}

}  // namespace kestrum
