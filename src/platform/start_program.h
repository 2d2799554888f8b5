#pragma once

#include <QString>

/// Starts the program at `path`, a path of the program's own, with no arguments, through no shell, and returns at once.
/// It outlives this program. Gives an empty text, or the system's reason why it could not be started.
QString start_program(const QString& path);
