#include "platform/file_address.h"

#include "platform/paths.h"

QByteArray file_address(const QString& path)
{
    const QByteArray native = native_path(path);
    return native.isEmpty() ? QByteArray() : "file://" + native.toPercentEncoding("/");
}
