#include "fif/Check_korean.h"

#include "platform/code_page.h"

using namespace Qt::StringLiterals;

i16 Byte_count(QStringView text)
{
    return checked<i16>(code_page_bytes(text));
}

QString byte_count_text(QStringView text)
{
    return QString::number(Byte_count(text)) + u" byte"_s;
}
