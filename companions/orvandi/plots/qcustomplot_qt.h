#pragma once

// QCustomPlot's header is written with Qt's keywords, which this program does without.
#ifdef QT_NO_KEYWORDS
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define foreach Q_FOREACH
#endif
#include <qcustomplot.h>
#ifdef QT_NO_KEYWORDS
#undef signals
#undef slots
#undef foreach
#endif
