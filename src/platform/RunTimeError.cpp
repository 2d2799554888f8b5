#include "platform/RunTimeError.h"

using namespace Qt::StringLiterals;

RunTimeError::RunTimeError(Number number) : number_(number) {}

QString RunTimeError::text() const
{
    switch (number_) {
    case overflow:
        return u"Overflow"_s;
    case subscript_out_of_range:
        return u"Subscript out of range"_s;
    case division_by_zero:
        return u"Division by zero"_s;
    case type_mismatch:
        return u"Type mismatch"_s;
    case file_not_found:
        return u"File not found"_s;
    case file_already_exists:
        return u"File already exists"_s;
    case permission_denied:
        return u"Permission denied"_s;
    case path_file_access_error:
        return u"Path/File access error"_s;
    case path_not_found:
        return u"Path not found"_s;
    case key_not_unique:
        return u"Key is not unique in collection"_s;
    }
    return u"Application-defined or object-defined error"_s;
}
