#include "platform/text.h"

#include "platform/numbers.h"

using namespace Qt::StringLiterals;

QString text_box_text(const QString& text)
{
    const qsizetype nul = text.indexOf(QChar(0));
    return nul < 0 ? text : text.left(nul);
}

QString trim_blanks(const QString& text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text[first] == u' ')
        ++first;
    while (last > first && text[last - 1] == u' ')
        --last;
    return text.mid(first, last - first);
}

int compare_texts(QStringView a, QStringView b)
{
    const int order = a.compare(b, Qt::CaseInsensitive);
    return order != 0 ? order : a.compare(b, Qt::CaseSensitive);
}

QString group_digits(qint64 number)
{
    if (number == 0)
        return {};
    QString digits = QString::number(number);
    const qsizetype first_digit = number < 0 ? 1 : 0;
    for (qsizetype place = digits.size() - 3; place > first_digit; place -= 3)
        digits.insert(place, u',');
    return digits;
}

QString kilobytes_text(qint64 bytes)
{
    return group_digits(static_cast<qint64>(round_half_even(static_cast<double>(bytes) / 1024.0))) + u"KB"_s;
}

qint64 megabytes(qint64 bytes)
{
    return static_cast<qint64>(round_half_even(static_cast<double>(bytes) / 1048576.0));
}
