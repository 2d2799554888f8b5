#pragma once

#include "core/captions.h"

#include <initializer_list>

class QWidget;

/// Gives the controls of `form` their texts in the language of the run: a list its column headers, a label its text,
/// any other control its tool tip. In English they keep those of the design.
void apply_captions(QWidget& form, Form captions);

/// In Korean, gives the controls the font of Korean texts.
void apply_korean_font(std::initializer_list<QWidget*> controls);
