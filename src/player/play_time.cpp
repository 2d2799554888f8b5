#include "player/play_time.h"

#include "platform/numbers.h"

#include <cmath>

namespace {

QString two_digits(int number)
{
    return QString::number(number).rightJustified(2, u'0');
}

} // namespace

double Fraction(double x)
{
    return x - std::floor(x);
}

QString MinsFromSecs(double seconds)
{
    const double minutes = seconds / 60;
    const i16 whole_minutes = rounded<i16>(std::floor(minutes));
    const i32 rest = rounded<i32>(Fraction(minutes) * 60);
    return two_digits(whole_minutes) + u':' + two_digits(rest);
}
