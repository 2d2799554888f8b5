#include "Results.h"

#include <algorithm>

std::optional<double> Results::best(const QString& name) const
{
    std::optional<double> best;
    for (const QString& text : values_.value(name)) {
        const double value = text.toDouble();
        best = best ? std::min(*best, value) : value;
    }
    return best;
}

QStringList Results::parts_behind(const QString& start) const
{
    QStringList parts;
    for (auto value = values_.keyBegin(); value != values_.keyEnd(); ++value) {
        if (value->startsWith(start + u'/'))
            parts.append(value->mid(start.size() + 1).section(u'/', 0, 0));
    }
    parts.removeDuplicates();
    std::ranges::sort(
        parts, [](const QString& a, const QString& b) { return std::pair(a.toInt(), a) < std::pair(b.toInt(), b); });
    return parts;
}
