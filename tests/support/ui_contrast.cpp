#include "ui_contrast.h"

#include <algorithm>
#include <cmath>

namespace {

double share_of_light(int value)
{
    const double share = value / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

} // namespace

double luminance(const QColor& colour)
{
    return 0.2126 * share_of_light(colour.red()) + 0.7152 * share_of_light(colour.green()) +
           0.0722 * share_of_light(colour.blue());
}

double contrast(const QColor& one, const QColor& other)
{
    const double lighter = std::max(luminance(one), luminance(other));
    const double darker = std::min(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}
