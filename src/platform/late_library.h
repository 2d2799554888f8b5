#pragma once

#include <QLibrary>

/// The function `name` of the shared library lib`library`.so.`version`, which is loaded when its first function is
/// asked for and then stays; nothing where the system has no such library or function.
template<typename Function> Function late_function(const QString& library, int version, const char* name)
{
    return reinterpret_cast<Function>(QLibrary::resolve(library, version, name));
}
