#pragma once

#include <QString>

/// `x` minus its integer part, which is rounded down.
double Fraction(double x);

/// Minutes, ":" and seconds, each of two digits at least: 00:05, 100:00. The seconds are rounded (ties to even) without
/// a carry, on purpose: 59.7 gives 00:60. Raises "Overflow" from 32768 minutes on.
QString MinsFromSecs(double seconds);
