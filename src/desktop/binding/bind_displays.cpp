#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <algorithm>
#include <cmath>
#include <utility>

#include "desktop/binding/binder.h"
#include "desktop/binding/user_events.h"
#include "desktop/ports/box_text.h"
#include "desktop/text_convert.h"
#include "desktop/twips.h"
#include "desktop/widgets/control_colors.h"
#include "desktop/widgets/lamp_widget.h"
#include "desktop/widgets/list_box.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/pelorus_widget.h"
#include "desktop/widgets/picture_widget.h"
#include "desktop/widgets/readout.h"
#include "desktop/widgets/strip_chart_widget.h"

// Controls that only show something, and what all controls have in common.
namespace kestrum {
namespace {

constexpr double kFullBarHeightTwips = 456;

// No window becomes larger than the screen by what a file holds.
constexpr int kMostOfLabel = 1000;
constexpr int kMostOfHeading = 60;
constexpr int kMostOfToolTip = 2000;
constexpr qsizetype kLongLine = 160;

// Tool tips are plain text, also where they look like mark-up ("<<Store uV now in memory."). Only mark-up
// breaks long lines.
QString ToolTip(const QString& plain, const QWidget& owner) {
  const QStringList lines = plain.split(QLatin1Char('\n'));
  const bool is_long =
      std::any_of(lines.begin(), lines.end(), [](const QString& line) { return line.size() > kLongLine; });
  if (!is_long && !Qt::mightBeRichText(plain)) return plain;
  return QStringLiteral("<p style='white-space:%1'>%2</p>")
      .arg(is_long ? QLatin1String("pre-wrap") : QLatin1String("pre"), BoxText(plain, owner).toHtmlEscaped());
}

void ShowToolTip(const std::string& text, QWidget* widget) {
  const QString plain = Shortened(ToQtLines(text), kMostOfToolTip);
  const QString tip = ToolTip(plain, *widget);
  widget->setToolTip(tip);
  // A screen reader takes the tool tip where there is no description; mark-up is nothing for it.
  const QString description = tip == plain ? QString() : plain;
  if (description != widget->accessibleDescription()) widget->setAccessibleDescription(description);
}

// What a screen reader says of a needle.
QString NeedleName(const Needle& needle) {
  if (!needle) return QStringLiteral("Needle, no direction");
  return QStringLiteral("Needle %1 degrees").arg(static_cast<int>(std::lround(*needle)));
}

}  // namespace

void Binder::BindCommon(const Control& control, QWidget* widget) {
  widget->setObjectName(QLatin1String(control.name));
  Follow<std::string>(control.tool_tip, [widget](const std::string& text) { ShowToolTip(text, widget); });
  struct State {
    bool enabled = true;
    bool visible = true;
    Color back_color = Color::kSystem;
  };
  Watch([&control, widget, painted = State()]() mutable {
    const State before = std::exchange(painted, {control.enabled, control.visible, control.back_color});
    if (before.enabled != painted.enabled) widget->setEnabled(painted.enabled);
    if (before.visible != painted.visible) widget->setVisible(painted.visible);
    if (before.back_color != painted.back_color) PaintBackground(widget, painted.back_color);
  });
}

void Binder::Bind(Label& label, QLabel* widget) {
  BindCommon(label, widget);
  widget->setTextFormat(Qt::PlainText);  // "&" and "<" stand for themselves
  Follow<std::string>(label.caption, [widget](const std::string& text) {
    widget->setText(Shortened(ToQtLines(text), kMostOfLabel));
    widget->setAccessibleName(widget->text());
  });
  auto* events = new UserEvents(widget);
  events->clicked = [this, &label] { Deed(label.click); };
}

void Binder::Bind(Label& label, TextLine* widget) {
  BindCommon(label, widget);
  Follow<std::string>(label.caption, [widget](const std::string& text) {
    widget->SetText(Shortened(ToQtLines(text), kMostOfLabel));
  });
  FollowFrom<bool>(false, label.stale, [widget](const bool& stale) { widget->SetStale(stale); });
  auto* events = new UserEvents(widget);
  events->clicked = [this, &label] { Deed(label.click); };
  if (!label.click) return;
  widget->MakePressable(*widget, events->clicked);
  events->enter_pressed = events->clicked;
}

void Binder::Bind(Lamp& lamp, LampWidget* widget) {
  BindCommon(lamp, widget);
  widget->setAccessibleName(QLatin1String(lamp.name).mid(3));  // until it says more
  Follow<LampText>(lamp.says, [widget](const LampText& says) { widget->Show(says); });
  Follow<std::string>(lamp.says.advice, [widget](const std::string& advice) { ShowToolTip(advice, widget); });
  connect(widget, &LampWidget::clicked, this, [this, &lamp] { Deed(lamp.click); });
}

void Binder::Bind(StripChart& chart, StripChartWidget* widget) {
  BindCommon(chart, widget);
  Follow<unsigned>(chart.revision, [&chart, widget](const unsigned&) { widget->Show(chart); });
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
    widget->setTitle(Shortened(ToQt(text), kMostOfHeading));
    widget->setAccessibleName(widget->title());
  });
}

void Binder::Bind(StatusPanel& panel, TextLine* widget) {
  widget->setObjectName(QLatin1String(panel.name));
  Follow<std::string>(panel.text, [widget](const std::string& text) {
    widget->SetText(Shortened(ToQtLines(text), kMostOfLabel));
  });
  Follow<std::string>(panel.tool_tip, [widget](const std::string& text) { ShowToolTip(text, widget); });
}

void Binder::Bind(ProgressBar& bar, MeterBar* widget) {
  BindCommon(bar, widget);
  Follow<int>(bar.maximum, [widget](const int& maximum) { widget->setMaximum(maximum); });
  Follow<int>(bar.value, [widget](const int& value) {
    widget->setValue(qBound(widget->minimum(), value, widget->maximum()));
  });
  Follow<int>(bar.peak, [widget](const int& peak) { widget->SetPeak(peak); });
  Follow<std::vector<ScaleMark>>(bar.marks,
                                 [widget](const std::vector<ScaleMark>& marks) { widget->SetScale(marks); });
  FollowFrom<bool>(false, bar.stale, [widget](const bool& stale) { widget->SetStale(stale); });
  Follow<bool>(bar.segments, [widget](const bool& segments) { widget->SetSegments(segments); });
  Follow<int>(bar.height, [widget](const int& height) {
    widget->SetHeightShare(height > 0 ? height / kFullBarHeightTwips : 1);
  });
  auto* events = new UserEvents(widget);
  events->clicked = [this, &bar] { Deed(bar.click); };
  if (!bar.click) return;
  widget->MakePressable(*widget, events->clicked);
  events->enter_pressed = events->clicked;
}

void Binder::Bind(CompassRose& rose, PelorusWidget* widget) {
  BindCommon(rose, widget);
  Follow<Needle>(rose.needle, [widget](const Needle& needle) {
    widget->SetNeedle(needle);
    widget->setAccessibleName(NeedleName(needle));
  });
  Follow<Needle>(rose.course, [widget](const Needle& course) { widget->SetCourse(course); });
  FollowFrom<bool>(false, rose.stale, [widget](const bool& stale) { widget->SetStale(stale); });
  Follow<std::string>(rose.badge, [widget](const std::string& text) { widget->SetBadge(ToQt(text)); });
}

void Binder::Bind(Picture& picture, PictureWidget* widget) {
  BindCommon(picture, widget);
  FollowFrom<bool>(false, picture.stale, [widget](const bool& stale) { widget->SetStale(stale); });
  Follow<std::string>(picture.badge, [widget](const std::string& text) { widget->SetBadge(ToQt(text)); });
  Follow<Needle>(picture.needle,
                 [widget](const Needle& needle) { widget->setAccessibleName(NeedleName(needle)); });
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
  Follow<std::string>(item.caption, [action](const std::string& text) {
    action->setText(Shortened(ToQt(text), kMostOfHeading));
  });
  Follow<std::string>(item.tool_tip, [action](const std::string& text) {
    action->setToolTip(Shortened(ToQtLines(text), kMostOfToolTip));
    action->setWhatsThis(Shortened(ToQtLines(text), kMostOfToolTip));
  });
  Follow<std::string>(item.status_tip,
                      [action](const std::string& text) { action->setStatusTip(ToQt(text)); });
  struct State {
    bool enabled = true;
    bool visible = true;
    bool checked = false;
  };
  Watch([&item, action, painted = State()]() mutable {
    const State before = std::exchange(painted, {item.enabled, item.visible, item.checked});
    if (before.enabled != painted.enabled) action->setEnabled(painted.enabled);
    if (before.visible != painted.visible) action->setVisible(painted.visible);
    if (before.checked == painted.checked) return;
    if (painted.checked) action->setCheckable(true);
    action->setChecked(painted.checked);
  });
  // A group of choices clears the others by itself, also when the program then takes none of it.
  connect(action, &QAction::toggled, this, [this, &item, action](bool checked) {
    if (!program_.Ended() && checked != item.checked) action->setChecked(item.checked);
  });
  connect(action, &QAction::triggered, this, [this, &item, action] {
    // The check mark is the program's to set: the click alone does not turn it.
    if (!program_.Ended() && action->isCheckable()) action->setChecked(item.checked);
    Deed(item.click);
  });
}

}  // namespace kestrum
