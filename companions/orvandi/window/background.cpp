#include "window/background.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "map/mbtiles_source.h"
#include "map/tile_layer.h"

namespace orvandi {
namespace {

const auto kKindKey = QStringLiteral("background/kind");
const auto kFileKey = QStringLiteral("background/file");
const auto kUrlKey = QStringLiteral("background/url");
const auto kAttributionKey = QStringLiteral("background/attribution");

QString CacheFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/tiles");
}

}  // namespace

Background LoadBackground(QSettings& settings) {
  Background background;
  const QString kind = settings.value(kKindKey).toString();
  background.file = settings.value(kFileKey).toString();
  background.online.url = settings.value(kUrlKey, background.online.url).toString();
  background.online.attribution = settings.value(kAttributionKey, background.online.attribution).toString();
  if (kind == QLatin1String("file") && !background.file.isEmpty()) background.kind = Background::Kind::kFile;
  if (kind == QLatin1String("online")) background.kind = Background::Kind::kOnline;
  return background;
}

void SaveBackground(QSettings& settings, const Background& background) {
  QString kind = QStringLiteral("grid");
  if (background.kind == Background::Kind::kFile) kind = QStringLiteral("file");
  if (background.kind == Background::Kind::kOnline) kind = QStringLiteral("online");
  settings.setValue(kKindKey, kind);
  settings.setValue(kFileKey, background.file);
  settings.setValue(kUrlKey, background.online.url);
  settings.setValue(kAttributionKey, background.online.attribution);
}

QString ShowBackground(TileLayer& layer, const Background& background) {
  if (background.kind == Background::Kind::kFile) {
    const MbTilesInfo info = ReadMbTilesInfo(background.file);
    if (info.error.isEmpty()) {
      layer.SetSource(std::make_unique<MbTilesSource>(background.file, info));
      return {};
    }
    layer.SetSource(nullptr);
    return info.error;
  }
  if (background.kind == Background::Kind::kOnline) {
    QString complaint = ComplaintOf(background.online);
    if (complaint.isEmpty()) {
      layer.SetSource(std::make_unique<UrlSource>(background.online, CacheFolder()));
      return {};
    }
    layer.SetSource(nullptr);
    return complaint;
  }
  layer.SetSource(nullptr);
  return {};
}

OnlineMapDialog::OnlineMapDialog(const UrlTemplate& source, QWidget* parent)
    : QDialog(parent),
      source_(source),
      url_(new QLineEdit(source.url)),
      attribution_(new QLineEdit(source.attribution)),
      complaint_(new QLabel),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
  setWindowTitle(QStringLiteral("Online map"));
  url_->setObjectName(QStringLiteral("tileUrl"));
  url_->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  url_->setToolTip(
      QStringLiteral("Where the squares of the map come from; {z}, {x} and {y} stand for zoom, column and "
                     "row."));
  attribution_->setObjectName(QStringLiteral("tileAttribution"));
  attribution_->setToolTip(QStringLiteral("Shown on the map, as makers of maps ask for it."));
  complaint_->setWordWrap(true);
  auto* hint = new QLabel(
      QStringLiteral("The map's server then learns which area you look at. What it has sent is kept "
                     "on this machine for as long as the server allows."));
  hint->setWordWrap(true);
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("&Address"), url_);
  form->addRow(QStringLiteral("&Credit"), attribution_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(hint);
  layout->addWidget(complaint_);
  layout->addWidget(buttons_);
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(url_, &QLineEdit::textChanged, this, &OnlineMapDialog::Check);
  Check();
}

UrlTemplate OnlineMapDialog::Source() const {
  UrlTemplate source = source_;
  source.url = url_->text().trimmed();
  source.attribution = attribution_->text().trimmed();
  return source;
}

void OnlineMapDialog::Check() {
  const QString complaint = ComplaintOf(Source());
  complaint_->setText(complaint);
  buttons_->button(QDialogButtonBox::Ok)->setEnabled(complaint.isEmpty());
}

}  // namespace orvandi
