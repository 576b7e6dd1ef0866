#pragma once

#include "log/log.h"

namespace orvandi {

// Gives the records of a block their dates from the block's header; their times of day stay as they are. May
// be called again when more records came. Blocks without a date are left alone.
//
// `forward`: the header was written before its records, as in a journal.
void SettleBlockDates(Log& log, const Block& block, bool forward);

// Whether the block's first record follows its header at once, so that the header was written first.
bool BeginsAtHeader(const Log& log, const Block& block);

}  // namespace orvandi
