#include "bridge_window.h"

#include <QComboBox>
#include <QDir>
#include <QFontDatabase>
#include <QFormLayout>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <array>

namespace kestrum::rigbridge {
namespace {

constexpr std::array<int, 9> kSpeeds = {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200, 230400};
constexpr int kRowsOfList = 7;
constexpr double kReadingScale = 1.4;
constexpr int kNumberRole = Qt::UserRole;

QString Text(const std::string& text) {
  return QString::fromUtf8(text.c_str());
}

// Serial ports of this machine, those with a name that stays first.
QStringList SerialPorts() {
  QStringList ports;
  const QDir by_id(QStringLiteral("/dev/serial/by-id"));
  for (const QString& name : by_id.entryList(QDir::System | QDir::Files)) ports << by_id.filePath(name);
  const QDir dev(QStringLiteral("/dev"));
  for (const QString& name : dev.entryList(
           {QStringLiteral("ttyUSB*"), QStringLiteral("ttyACM*"), QStringLiteral("ttyS?")}, QDir::System)) {
    ports << dev.filePath(name);
  }
  return ports;
}

}  // namespace

BridgeWindow::BridgeWindow(Bridge& bridge, const std::vector<RigModel>& rigs)
    : bridge_(bridge), rigs_(rigs), form_(new QFormLayout(this)) {
  setWindowTitle(QStringLiteral("Rig bridge"));
  AddChoice();
  auto* rule = new QFrame;
  rule->setFrameShape(QFrame::HLine);
  rule->setFrameShadow(QFrame::Sunken);
  form_->addRow(rule);
  AddState();

  FilterRigs();
  ShowSettings();
  ShowHints();
  SetComplaint({});
  Refresh();
  connect(&refresh_, &QTimer::timeout, this, &BridgeWindow::Refresh);
  refresh_.start(kRefreshMs);
}

void BridgeWindow::AddChoice() {
  search_ = new QLineEdit;
  search_->setObjectName(QStringLiteral("txtSearch"));
  search_->setPlaceholderText(QStringLiteral("maker, model or number"));
  search_->setClearButtonEnabled(true);
  list_ = new QListWidget;
  list_->setObjectName(QStringLiteral("lstRigs"));
  list_->setMinimumHeight(list_->fontMetrics().height() * kRowsOfList);
  device_ = new QComboBox;
  device_->setObjectName(QStringLiteral("cboDevice"));
  device_->setEditable(true);
  device_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  speed_ = new QComboBox;
  speed_->setObjectName(QStringLiteral("cboSpeed"));
  speed_->addItem(QStringLiteral("the rig's default"), 0);
  for (const int speed : kSpeeds) speed_->addItem(QString::number(speed), speed);
  act_as_ = new QComboBox;
  act_as_->setObjectName(QStringLiteral("cboActAs"));
  act_as_->addItem(QStringLiteral("FT840: 256 steps, up to 30 MHz"), static_cast<int>(sets::Model::kFT840));
  act_as_->addItem(QStringLiteral("FT817: 16 steps, also VHF and UHF"),
                   static_cast<int>(sets::Model::kFT817));
  connect_ = new QPushButton(QStringLiteral("&Connect"));
  connect_->setObjectName(QStringLiteral("cmdConnect"));
  connect_->setDefault(true);

  form_->addRow(QStringLiteral("&Find rig"), search_);
  form_->addRow(QStringLiteral("&Rig"), list_);
  form_->addRow(QStringLiteral("&Port"), device_);
  form_->addRow(QStringLiteral("&Speed"), speed_);
  form_->addRow(QStringLiteral("&Act as"), act_as_);
  form_->addRow(QString(), connect_);
  connect(search_, &QLineEdit::textChanged, this, &BridgeWindow::FilterRigs);
  connect(list_, &QListWidget::currentItemChanged, this, &BridgeWindow::ShowHints);
  connect(list_, &QListWidget::itemDoubleClicked, this, &BridgeWindow::Connect);
  connect(connect_, &QPushButton::clicked, this, &BridgeWindow::Connect);
}

void BridgeWindow::AddState() {
  rig_ = AddLine(QStringLiteral("Rig"), "lblRig");
  state_ = AddLine(QStringLiteral("State"), "lblState");
  reading_ = AddLine(QStringLiteral("Reading"), "lblReading");
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(font.pointSizeF() * kReadingScale);
  reading_->setFont(font);
  frequency_ = AddLine(QStringLiteral("Frequency"), "lblFrequency");
  link_ = AddLine(QStringLiteral("Kestrum"), "lblLink");
  notes_ = AddLine(QStringLiteral("Notes"), "lblNotes");
  complaint_ = AddLine(QStringLiteral("Trouble"), "lblComplaint");
  // Wide enough for the usual states, so that the window does not change with them; longer ones wrap.
  state_->setMinimumWidth(state_->fontMetrics().averageCharWidth() * 72);
}

QLabel* BridgeWindow::AddLine(const QString& caption, const char* name) {
  auto* label = new QLabel;
  label->setObjectName(QString::fromLatin1(name));
  label->setAccessibleName(caption);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  form_->addRow(caption, label);
  return label;
}

void BridgeWindow::FilterRigs() {
  const QVariant chosen = list_->currentItem() != nullptr ? list_->currentItem()->data(kNumberRole)
                                                          : QVariant(bridge_.Settings().model);
  const QSignalBlocker quiet(list_);
  list_->clear();
  const std::string search = search_->text().toStdString();
  for (const RigModel& rig : rigs_) {
    if (!Matches(rig, search)) continue;
    QString text = Text(rig.FullName());
    if (!rig.has_meter) text += QStringLiteral(" (no S-meter)");
    auto* item = new QListWidgetItem(text, list_);
    item->setData(kNumberRole, rig.number);
    item->setToolTip(QStringLiteral("Hamlib's number %1, driver: %2").arg(rig.number).arg(Text(rig.status)));
    if (chosen == QVariant(rig.number)) list_->setCurrentItem(item);
  }
  if (list_->currentItem() == nullptr && list_->count() > 0 && !search.empty()) list_->setCurrentRow(0);
  if (list_->currentItem() != nullptr)
    list_->scrollToItem(list_->currentItem(), QAbstractItemView::PositionAtCenter);
  ShowHints();
}

const RigModel* BridgeWindow::ChosenRig() const {
  if (list_->currentItem() == nullptr) return nullptr;
  return RigOf(rigs_, list_->currentItem()->data(kNumberRole).toInt());
}

void BridgeWindow::ShowSettings() {
  const BridgeSettings& settings = bridge_.Settings();
  FillPorts();
  if (speed_->findData(settings.speed) < 0) speed_->addItem(QString::number(settings.speed), settings.speed);
  speed_->setCurrentIndex(speed_->findData(settings.speed));
  act_as_->setCurrentIndex(act_as_->findData(static_cast<int>(settings.act_as)));
}

void BridgeWindow::FillPorts() {
  device_->clear();
  device_->addItems(SerialPorts());
  if (!bridge_.Settings().device.empty()) device_->setCurrentText(Text(bridge_.Settings().device));
}

// What is asked for depends on how the rig is reached.
void BridgeWindow::ShowHints() {
  const RigModel* rig = ChosenRig();
  const PortKind kind = rig != nullptr ? rig->port : PortKind::kSerial;
  connect_->setEnabled(rig != nullptr);
  device_->setEnabled(kind != PortKind::kNone);
  speed_->setEnabled(kind == PortKind::kSerial);
  device_->lineEdit()->setPlaceholderText(kind == PortKind::kNetwork
                                              ? QStringLiteral("host:port, as localhost:7356")
                                              : QStringLiteral("/dev/ttyUSB0"));
  const bool is_serial_port = device_->currentText().startsWith(QLatin1String("/dev/"));
  if (kind == PortKind::kNetwork && is_serial_port) device_->clearEditText();
  if (kind == PortKind::kSerial && !is_serial_port && device_->count() > 0) device_->setCurrentIndex(0);
}

void BridgeWindow::Connect() {
  const RigModel* rig = ChosenRig();
  if (rig == nullptr) return;
  BridgeSettings settings = bridge_.Settings();
  settings.model = rig->number;
  settings.speed = speed_->currentData().toInt();
  settings.act_as = static_cast<sets::Model>(act_as_->currentData().toInt());
  const std::string device = device_->currentText().trimmed().toStdString();
  Outcome done = Set(settings, "device", rig->port == PortKind::kNone ? std::string() : device);
  const bool understood = done.ok();
  if (understood) done = bridge_.Change(settings);
  SetComplaint(done ? QString() : Text(done.fault().reason));
  if (!understood) return;
  Refresh();
}

void BridgeWindow::Refresh() {
  const BridgeSettings& settings = bridge_.Settings();
  const RigModel* rig = RigOf(rigs_, settings.model);
  QString name = rig != nullptr ? Text(rig->FullName()) : QStringLiteral("none");
  if (rig != nullptr && !settings.device.empty()) name += QStringLiteral(" at ") + Text(settings.device);
  const BridgeView view = bridge_.View();
  QStringList notes;
  for (const std::string& note : view.notes) notes << Text(note);
  rig_->setText(name);
  state_->setText(Text(view.state));
  reading_->setText(Text(view.reading));
  frequency_->setText(Text(view.frequency));
  link_->setText(Text(view.link));
  notes_->setText(notes.join(QLatin1Char('\n')));
  form_->setRowVisible(notes_, !notes.isEmpty());
  GrowToFit();
}

void BridgeWindow::SetComplaint(const QString& complaint) {
  complaint_->setText(complaint);
  form_->setRowVisible(complaint_, !complaint.isEmpty());
  GrowToFit();
}

// Qt leaves a window as high as it is when a text in it wraps.
void BridgeWindow::GrowToFit() {
  const int needed = form_->totalHeightForWidth(width());
  if (isVisible() && needed > height()) resize(width(), needed);
}

}  // namespace kestrum::rigbridge
