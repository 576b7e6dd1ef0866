#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// Controls as data. The core reads and writes them as ordinary members; the desktop paints what stands in
// them and calls their handlers. Setting a member never calls a handler.
namespace kestrum {

using Handler = std::function<void()>;

// Background of a control. The values are the classic red-in-the-low-byte colour numbers; the desktop may
// shade them to keep the text readable.
enum class Color : int {
  kSystem = -1,
  kRed = 255,
  kGreen = 65280,
  kBlue = 16711680,
  kWarning = 42495,  // orange
};

enum class Key { kF1, kF2, kF3, kF4, kF5, kAltF4, kEnter };

// Every control knows its name; the desktop's widget carries the same one.
struct Control {
  Control() = default;
  explicit Control(const char* own_name) : name(own_name) {}

  const char* name = "";
  std::string tool_tip;
  bool enabled = true;
  bool visible = true;
  Color back_color = Color::kSystem;
  bool stale = false;  // what it shows is no longer true
};

// Runs a handler if there is one.
inline void Run(const Handler& handler) {
  if (handler) handler();
}

struct Label : Control {
  Label() = default;
  explicit Label(const char* own_name, std::string text = {}) : Control(own_name), caption(std::move(text)) {}
  std::string caption;
  Handler click;
};

// A label whose caption mirrors a text item of another program.
struct LinkLabel : Label {
  using Label::Label;
  std::string link_topic;
  std::string link_item;
};

struct Button : Control {
  Button() = default;
  explicit Button(const char* own_name, std::string text = {})
      : Control(own_name), caption(std::move(text)) {}
  std::string caption;
  Handler click;
};

struct CheckBox : Button {
  using Button::Button;
  bool checked = false;  // the desktop sets it before it calls click
};

struct OptionButton : CheckBox {
  using CheckBox::CheckBox;  // only one of a group is set: the desktop and whoever sets one clear the others
};

// The place for a mark beside a menu item: none until it is checked, a check mark, or one choice of a group.
enum class Mark { kNone, kCheck, kChoice };

struct MenuItem : CheckBox {
  MenuItem() = default;
  explicit MenuItem(const char* own_name, std::string text = {}, Mark own_mark = Mark::kNone)
      : CheckBox(own_name, std::move(text)), mark(own_mark) {}

  Mark mark = Mark::kNone;
  std::string status_tip;
};

// A line between the items of a menu.
struct MenuRule {
  const char* name = "";
};

struct Frame : Control {
  Frame() = default;
  explicit Frame(const char* own_name, std::string text = {}) : Control(own_name), caption(std::move(text)) {}
  std::string caption;
};

struct TextBox : Control {
  TextBox() = default;
  explicit TextBox(const char* own_name, std::string initial = {})
      : Control(own_name), text(std::move(initial)) {}

  std::string text;
  int selection_start = 0;
  int selection_length = 0;
  int selections = 0;  // rises with every Select, so that the same selection can be made anew

  Handler click;
  Handler focus;           // receiving the focus
  Handler enter_released;  // the Enter key goes up

  void Select(int start, int length) {
    selection_start = start;
    selection_length = length;
    ++selections;
  }
  void SelectAll() { Select(0, static_cast<int>(text.size())); }
};

struct ComboBox : Control {
  using Control::Control;

  std::string text;
  std::vector<std::string> items;
  Handler enter_pressed;  // the key is consumed
  Handler taken;  // Enter, a choice from the list, or leaving the box after typing takes the text over
};

struct Slider : Control {
  Slider() = default;
  Slider(const char* own_name, int lowest, int highest)
      : Control(own_name), minimum(lowest), maximum(highest), value(lowest) {}

  int minimum = 0;
  int maximum = 100;
  int value = 0;
  Handler change;  // after the user, or SetValue, has moved it

  // As a move by the user: the handler runs when the value differs.
  void SetValue(int new_value) {
    if (new_value == value) return;
    value = new_value;
    Run(change);
  }
};

// One mark of a scale.
struct ScaleMark {
  int value = 0;
  std::string text;
  bool operator==(const ScaleMark&) const = default;
};

struct ProgressBar : Control {
  using Control::Control;

  int maximum = 255;
  int value = 0;
  int peak = -1;                 // highest value of a moment ago; -1 for none
  std::vector<ScaleMark> marks;  // the scale under the bar
  bool segments = true;          // segments or one plain bar
  int top = 0;                   // twips
  int height = 0;                // twips; 0 leaves both to the layout
  Handler click;
};

// A direction in degrees clockwise from the top; nothing when there is none to show.
using Needle = std::optional<double>;

// A compass rose with a needle. The front of the car is at the top.
struct CompassRose : Control {
  using Control::Control;

  Needle needle;
  Needle course;      // over ground, by which compass letters turn; nothing for no letters
  std::string badge;  // stands over it while it is stale
};

// A picture as a list of shapes in twips, 15 to a pixel, the origin at the top left.
struct Shape {
  enum class Kind { kCircle, kLine };
  Kind kind = Kind::kCircle;
  double x1 = 0;
  double y1 = 0;
  double x2 = 0;      // lines only
  double y2 = 0;      // lines only
  double radius = 0;  // circles only
  Color color = Color::kBlue;
  int pen_width = 3;  // pixels
};

struct Picture : Control {
  using Control::Control;

  double width = 0;   // twips, kept up to date by the desktop
  double height = 0;  // twips
  std::vector<Shape> shapes;
  Needle needle;      // what the shapes show
  std::string badge;  // stands over it while it is stale
  Handler resized;
};

struct StatusPanel {
  StatusPanel() = default;
  explicit StatusPanel(const char* own_name) : name(own_name) {}

  const char* name = "";
  std::string text;
  std::string tool_tip;
};

// Calls `tick` every `interval_ms` while it runs.
struct Timer {
  Timer() = default;
  explicit Timer(int every_ms) : interval_ms(every_ms) {}

  int interval_ms = 1000;
  bool enabled = false;
  unsigned restarts = 0;  // rises with every Start, so that a stop and start between two looks is seen
  unsigned stops = 0;     // rises with every Stop
  Handler tick;

  void Start() {
    enabled = true;
    ++restarts;
  }
  void Stop() {
    enabled = false;
    ++stops;
  }
};

// What every window has.
struct Form {
  Form() = default;
  explicit Form(const char* own_name) : name(own_name) {}

  const char* name = "";
  std::string caption;
  float left = 0;  // twips; present position of a shown window, kept up to date by the desktop
  float top = 0;   // twips
  bool visible = false;
  bool loaded = false;
  unsigned calls_to_front = 0;        // rises with every Show
  Handler activate;                   // the window comes to the front
  Handler close;                      // the user closes the window; the handler hides it
  std::function<bool(Key)> key_down;  // before the controls see the key; true when it is consumed

  // Shows the window; one that is open already comes to the front.
  void Show() {
    visible = true;
    ++calls_to_front;
  }
};

}  // namespace kestrum
