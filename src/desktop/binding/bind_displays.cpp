#include <QAction>
#include <QGroupBox>
#include <QLabel>

#include "desktop/binding/binder.h"
#include "desktop/binding/user_events.h"
#include "desktop/text_convert.h"
#include "desktop/twips.h"
#include "desktop/widgets/control_colors.h"
#include "desktop/widgets/list_box.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/pelorus_widget.h"
#include "desktop/widgets/picture_widget.h"

// Controls that only show something, and what all controls have in common.
namespace kestrum {
namespace {

constexpr double kFullBarHeight_twips = 456;

// Tool tips are plain text, also where they look like mark-up ("<<Store uV now in memory.").
QString ToolTip(const std::string& text) {
  QString plain = ToQtLines(text);
  if (!Qt::mightBeRichText(plain)) return plain;
  return QLatin1String("<p style='white-space:pre'>") + plain.toHtmlEscaped() + QLatin1String("</p>");
}

}  // namespace

void Binder::BindCommon(const Control& control, QWidget* widget) {
  widget->setObjectName(QLatin1String(control.name));
  Follow<std::string>(control.tool_tip, [widget](const std::string& text) {
    widget->setToolTip(ToolTip(text));
    widget->setAccessibleDescription(ToQtLines(text));
  });
  FollowFrom<bool>(true, control.enabled, [widget](const bool& enabled) { widget->setEnabled(enabled); });
  FollowFrom<bool>(true, control.visible, [widget](const bool& visible) { widget->setVisible(visible); });
  FollowFrom<Color>(Color::kSystem, control.back_color,
                    [widget](const Color& color) { PaintBackground(widget, color); });
}

void Binder::Bind(Label& label, QLabel* widget) {
  BindCommon(label, widget);
  widget->setTextFormat(Qt::PlainText);  // "&" and "<" stand for themselves
  Follow<std::string>(label.caption, [widget](const std::string& text) {
    widget->setText(ToQtLines(text));
    widget->setAccessibleName(widget->text());
  });
  auto* events = new UserEvents(widget);
  events->clicked = [this, &label] { Enter(label.click); };
}

void Binder::Bind(Label& list, ListBox* widget) {
  BindCommon(list, widget);
  Follow<std::string>(list.caption, [widget](const std::string& text) { widget->ShowText(ToQtLines(text)); });
}

void Binder::Bind(TextBox& box, ListBox* widget) {
  BindCommon(box, widget);
  Follow<std::string>(box.text, [widget](const std::string& text) { widget->ShowText(ToQtLines(text)); });
}

void Binder::Bind(Frame& frame, QGroupBox* widget) {
  BindCommon(frame, widget);
  Follow<std::string>(frame.caption, [widget](const std::string& text) {
    widget->setTitle(ToQt(text));
    widget->setAccessibleName(ToQt(text));
  });
}

void Binder::Bind(StatusPanel& panel, QLabel* widget) {
  widget->setObjectName(QLatin1String(panel.name));
  widget->setTextFormat(Qt::PlainText);
  Follow<std::string>(panel.text, [widget](const std::string& text) {
    widget->setText(ToQtLines(text));
    widget->setAccessibleName(widget->text());
  });
  Follow<std::string>(panel.tool_tip, [widget](const std::string& text) {
    widget->setToolTip(ToolTip(text));
    widget->setAccessibleDescription(ToQtLines(text));
  });
}

void Binder::Bind(ProgressBar& bar, MeterBar* widget) {
  BindCommon(bar, widget);
  Follow<int>(bar.maximum, [widget](const int& maximum) { widget->setMaximum(maximum); });
  Follow<int>(bar.value, [widget](const int& value) {
    widget->setValue(qBound(widget->minimum(), value, widget->maximum()));
  });
  Follow<bool>(bar.segments, [widget](const bool& segments) { widget->SetSegments(segments); });
  Follow<int>(bar.height, [widget](const int& height) {
    widget->SetHeightShare(height > 0 ? height / kFullBarHeight_twips : 1);
  });
  auto* events = new UserEvents(widget);
  events->clicked = [this, &bar] { Enter(bar.click); };
}

void Binder::Bind(CompassRose& rose, PelorusWidget* widget) {
  BindCommon(rose, widget);
  Follow<std::string>(rose.needle, [widget](const std::string& text) {
    widget->SetNeedle(text);
    widget->setAccessibleName(QLatin1String("Compass rose ") + ToQt(text));
  });
}

void Binder::Bind(Picture& picture, PictureWidget* widget) {
  BindCommon(picture, widget);
  widget->setAccessibleName(QLatin1String("Needle"));
  Watch([&picture, widget, painted = std::vector<Shape>()]() mutable {
    const auto same = [](const Shape& a, const Shape& b) {
      return a.kind == b.kind && a.x1 == b.x1 && a.y1 == b.y1 && a.x2 == b.x2 && a.y2 == b.y2 &&
             a.radius == b.radius && a.color == b.color && a.pen_width == b.pen_width;
    };
    if (std::equal(painted.begin(), painted.end(), picture.shapes.begin(), picture.shapes.end(), same))
      return;
    painted = picture.shapes;
    widget->SetShapes(picture.shapes);
  });
  const auto measure = [&picture, widget] {
    picture.width = ToTwips(widget->width());
    picture.height = ToTwips(widget->height());
  };
  measure();
  connect(widget, &PictureWidget::Resized, this,
          [this, &picture, measure] { Enter(measure, picture.resized); });
}

void Binder::Bind(MenuItem& item, QAction* action) {
  action->setObjectName(QLatin1String(item.name));
  // The place of a mark stays free while there is none.
  if (item.mark != Mark::kNone) action->setCheckable(true);
  Follow<std::string>(item.caption, [action](const std::string& text) { action->setText(ToQt(text)); });
  Follow<std::string>(item.tool_tip, [action](const std::string& text) {
    action->setToolTip(ToolTip(text));
    action->setWhatsThis(ToQtLines(text));
  });
  Follow<std::string>(item.status_tip,
                      [action](const std::string& text) { action->setStatusTip(ToQt(text)); });
  Follow<bool>(item.enabled, [action](const bool& enabled) { action->setEnabled(enabled); });
  Follow<bool>(item.visible, [action](const bool& visible) { action->setVisible(visible); });
  Follow<bool>(item.checked, [action](const bool& checked) {
    if (checked) action->setCheckable(true);
    action->setChecked(checked);
  });
  connect(action, &QAction::triggered, this, [this, &item, action] {
    // The check mark is the program's to set: the click alone does not turn it.
    if (!program_.Ended() && action->isCheckable()) action->setChecked(item.checked);
    Enter(item.click);
  });
}

}  // namespace kestrum
