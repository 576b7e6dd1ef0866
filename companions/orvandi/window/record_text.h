#pragma once

#include <QString>

#include "window/session.h"

namespace orvandi {

// Name or path of the journal of a log.
QString JournalOf(const QString& log);

// "1200", and "1 000 000" with narrow blanks from 10,000 on.
QString CountText(std::uint64_t count);
// "1 record", "1200 records".
QString RecordsText(std::uint64_t count);
// "2026-11-21 14:03:11", or the time of day alone for a block without a date.
QString WhenText(const Log& log, const Record& record);
// "51.83450 N 5.46880 E", or "no position".
QString WhereText(const Record& record);
// What is told of a record in one line and, for a tool tip, in several. Both name file and line.
QString RecordLine(const Session& session, std::uint32_t record);
QString RecordTip(const Session& session, std::uint32_t record);
// "no fix, old fix", or "" for a record without a mark.
QString MarksText(const Record& record);

}  // namespace orvandi
