#pragma once

#include "platform/numbers.h"

#include <QLocale>

/// The languages that the program speaks. One is chosen when the program is built, and nothing changes it in a run.
enum Language : i16
{
    english = 1,
    korean = 2,
    german = 3
};

/// The language of the program: English until `set_program_language` has said otherwise.
Language program_language();

/// Called once, before any text is asked for; tests and the tour call it to pass through all languages.
void set_program_language(Language language);

/// How the program writes dates, times and sizes: as the desktop does. Where the desktop speaks another language than a
/// Korean or German program, or none, the program writes them as is usual for its own.
QLocale program_locale();
