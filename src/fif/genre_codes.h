#pragma once

#include <QString>

/// The three-letter code of one of the first seventeen entries of the genre box, positions 0 to 16; empty for any
/// other.
QString genre_code(int position);
