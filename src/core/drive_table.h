#pragma once

#include "platform/numbers.h"

#include <QString>

/// Puts a drive into the first free slot of the drive table, slots 0 to 19; a full table drops it without a word.
/// `kind`: 1 removable, 2 CD, 4 any other; `ready`: 1 if it reported ready.
void add_drive_entry(i16 kind, const QString& letter, i16 ready);

/// State of a drive at start: 0 not ready or unknown, 1 ready and no CD, 2 ready CD. `letter` without colon.
i16 get_drive_state(const QString& letter);
