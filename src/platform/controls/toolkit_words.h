#pragma once

/// Gives the toolkit's own texts, such as those of its file dialog, in the program's language, or in English where the
/// machine has no translation.
void translate_toolkit();
