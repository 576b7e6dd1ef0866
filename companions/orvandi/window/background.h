#pragma once

#include <QDialog>
#include <QString>

#include "map/url_source.h"

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QSettings;

namespace orvandi {

class TileLayer;

// What lies under the dots.
struct Background {
  enum class Kind { kGrid, kFile, kOnline };
  Kind kind = Kind::kGrid;
  QString file;  // of kFile
  UrlTemplate online{QStringLiteral("https://tile.openstreetmap.org/{z}/{x}/{y}.png"),
                     QStringLiteral("\u00A9 OpenStreetMap contributors"), 0, 19};
};

Background LoadBackground(QSettings& settings);
void SaveBackground(QSettings& settings, const Background& background);
// A sentence when it cannot be shown (the grid is shown then), "" otherwise.
QString ShowBackground(TileLayer& layer, const Background& background);

// Asks for the address of a server of map tiles.
class OnlineMapDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit OnlineMapDialog(const UrlTemplate& source, QWidget* parent = nullptr);
  [[nodiscard]] UrlTemplate Source() const;

 private:
  void Check();

  UrlTemplate source_;
  QLineEdit* url_;
  QLineEdit* attribution_;
  QLabel* complaint_;
  QDialogButtonBox* buttons_;
};

}  // namespace orvandi
