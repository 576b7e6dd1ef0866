#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "forms/control.h"
#include "forms/indicators.h"
#include "platform/program.h"

class QAction;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSlider;
class QWidget;

namespace kestrum {

class LampWidget;
class ListBox;
class MeterBar;
class PelorusWidget;
class PictureWidget;
class StripChartWidget;
class TextLine;

// An option button of a group and the widget that paints it.
struct OptionEntry {
  OptionButton& control;
  QRadioButton* widget;
};

// Ties controls to widgets. The core writes the members of a control freely; Sync compares them with what was
// painted last and paints the difference. What the user does goes the other way: the widget writes the member
// and calls the handler through Enter, the only door from the desktop into the program.
class Binder : public QObject {
  Q_OBJECT

 public:
  explicit Binder(const Program& program);

  // Paints what has changed; cheap when nothing has. Does nothing once the program has ended.
  void Sync();
  // Timers alone: starts and stops them as they stand now.
  void SyncTimers();
  // Runs a handler that an event has reached, then paints what it changed. Nothing runs once the program has
  // ended.
  void Enter(const Handler& handler);
  // The same for what comes by itself: timers, texts of other programs, work that is through. While a timer
  // ticks faster than an eye can follow, it is painted at most ten times a second.
  void Tick(const Handler& handler);
  // As Enter, with a member to be written first: `write` is painted before the handler runs, so that a
  // handler that puts the old value back is seen.
  void Enter(const std::function<void()>& write, const Handler& handler);
  // The same for what the user does: while deeds wait they are kept, and run when the outermost handler is
  // through. A toolkit hands some over by other ways than input, a mnemonic by a timer.
  void Deed(const Handler& handler);
  void Deed(const std::function<void()>& write, const Handler& handler);
  void HoldDeeds(bool hold) { deeds_wait_ = hold; }
  // Forgets all controls, before they or their widgets go.
  void Clear();

  // Calls `paint` with the value now and whenever Sync finds it changed.
  template <class T>
  void Follow(const T& source, std::function<void(const T&)> paint) {
    Watch([&source, paint = std::move(paint), painted = std::optional<T>()]() mutable {
      if (painted && *painted == source) return;
      painted = source;
      paint(source);
    });
  }
  // The same for a value that is already painted as `painted`.
  template <class T>
  void FollowFrom(T painted, const T& source, std::function<void(const T&)> paint) {
    Watch([&source, paint = std::move(paint), painted = std::move(painted)]() mutable {
      if (painted == source) return;
      painted = source;
      paint(source);
    });
  }
  // `look` compares and paints by itself; it is called at once and by every Sync.
  void Watch(std::function<void()> look);

  // Each of these names the widget (objectName) as its control, paints the control and forwards the user's
  // events.
  void Bind(Label& label, QLabel* widget);
  void Bind(Label& label, TextLine* widget);
  void Bind(Lamp& lamp, LampWidget* widget);
  void Bind(StripChart& chart, StripChartWidget* widget);
  void Bind(Label& list, ListBox* widget);
  void Bind(Button& button, QPushButton* widget);
  void Bind(CheckBox& box, QCheckBox* widget);
  void BindGroup(const std::vector<OptionEntry>& group);
  void Bind(MenuItem& item, QAction* action);
  void Bind(Frame& frame, QGroupBox* widget);
  void Bind(TextBox& box, QLineEdit* widget);
  void Bind(TextBox& box, ListBox* widget);
  void Bind(ComboBox& box, QComboBox* widget);
  void Bind(Slider& slider, QSlider* widget);
  void Bind(ProgressBar& bar, MeterBar* widget);
  void Bind(CompassRose& rose, PelorusWidget* widget);
  void Bind(Picture& picture, PictureWidget* widget);
  void Bind(StatusPanel& panel, TextLine* widget);
  void Bind(Timer& timer);

 private:
  void BindCommon(const Control& control, QWidget* widget);
  void BindText(TextBox& box, QLineEdit* widget);

  // False when whoever is further out paints.
  bool Perform(const Handler& handler);
  void SyncInTime();
  bool TicksFast() const;
  void RunDeeds();

  const Program& program_;
  int depth_ = 0;  // of handlers that run now
  bool deeds_wait_ = false;
  std::vector<std::pair<std::function<void()>, Handler>> deeds_;
  std::vector<std::function<void()>> watches_;
  QElapsedTimer since_painted_;
  QTimer paint_late_;  // when no tick comes any more
  std::vector<QTimer*> timers_;
  std::vector<std::function<void()>> timer_watches_;
};

}  // namespace kestrum
