#pragma once

#include <QString>

namespace orvandi {

class MapView;
class PlotDeck;
class Session;

// A drive on paper (PDF, A4): map, plots, numbers, cleaning. Returns a sentence when it failed, "" otherwise.
QString SaveReport(const Session& session, MapView& map, PlotDeck& plots, const QString& path);

}  // namespace orvandi
