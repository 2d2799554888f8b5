#pragma once

#include "Results.h"

/// The lines of a table: "machine", "aims", "times", "growth", "peers", "companion" or "others".
QStringList table(const QString& name, const Results& results);
