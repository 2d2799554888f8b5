#pragma once

#include "platform/numbers.h"

#include <QStringView>

/// Number of bytes that a text takes in code page 949. Raises "Overflow" beyond 16 bits.
i16 Byte_count(QStringView text);

/// The text of a byte count as the forms show it, such as "17 byte".
QString byte_count_text(QStringView text);
