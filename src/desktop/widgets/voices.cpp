#include "desktop/widgets/voices.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "desktop/text_convert.h"
#include "desktop/widgets/lamp_widget.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/readout.h"

namespace kestrum {
namespace {

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

class LineVoice : public QAccessibleWidget {
 public:
  explicit LineVoice(TextLine* line) : QAccessibleWidget(line), line_(line) {}

  QAccessible::Role role() const override {
    return line_->Pressable() ? QAccessible::Button : QAccessible::StaticText;
  }
  QString text(QAccessible::Text kind) const override {
    if (kind != QAccessible::Name) return QAccessibleWidget::text(kind);
    // What is faded for the eye is said to the ear.
    return line_->Stale() ? line_->text() + QStringLiteral(", no longer true") : line_->text();
  }
  QStringList actionNames() const override {
    return line_->Pressable() ? QStringList{pressAction(), setFocusAction()}
                              : QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action == pressAction()) {
      line_->Press();
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 private:
  TextLine* line_;
};

class BarVoice : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit BarVoice(MeterBar* bar) : QAccessibleWidget(bar, QAccessible::ProgressBar), bar_(bar) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QVariant currentValue() const override { return bar_->value(); }
  void setCurrentValue(const QVariant& /*value*/) override {}
  QVariant maximumValue() const override { return bar_->maximum(); }
  QVariant minimumValue() const override { return bar_->minimum(); }
  QVariant minimumStepSize() const override { return 1; }
  QStringList actionNames() const override {
    return bar_->Pressable() ? QStringList{pressAction(), setFocusAction()}
                             : QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action == pressAction()) {
      bar_->Press();
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 private:
  MeterBar* bar_;
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
