#pragma once

#include <QFont>

/// The font of the forms. Where the machine lacks it, the named stand-ins follow, with letters for Korean among them.
QFont form_font();

/// The font of Korean texts, with its stand-ins.
QFont korean_font();
