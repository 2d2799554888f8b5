#include "companion/PathSource.h"

#include <cstdlib>
#include <memory>

std::optional<QByteArray> PathSource::next()
{
    if (stream_ == nullptr)
        return place_ < paths_.size() ? std::optional(paths_[place_++]) : std::nullopt;
    QByteArray path;
    char* bytes = nullptr;
    std::size_t room = 0;
    ssize_t length = 0;
    while (path.isEmpty() && (length = getdelim(&bytes, &room, '\0', stream_)) >= 0) {
        const qsizetype end = length > 0 && bytes[length - 1] == '\0' ? length - 1 : length;
        path = QByteArray(bytes, end);
    }
    std::free(bytes);
    return path.isEmpty() ? std::nullopt : std::optional(path);
}
