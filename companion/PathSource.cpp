#include "companion/PathSource.h"

#include "companion/Reason.h"

#include <cerrno>
#include <cstdlib>
#include <memory>

std::optional<QByteArray> PathSource::next()
{
    if (stream_ == nullptr)
        return place_ < paths_.size() ? std::optional(paths_[place_++]) : std::nullopt;
    std::optional<QByteArray> path = read();
    while (path && path->isEmpty())
        path = read();
    return path;
}

std::optional<QByteArray> PathSource::read()
{
    char* bytes = nullptr;
    std::size_t room = 0;
    const ssize_t length = getdelim(&bytes, &room, '\0', stream_);
    const int error = errno;
    const std::unique_ptr<char, decltype(&std::free)> owner(bytes, std::free);
    // What comes before an error or without its NUL may be the beginning of a path, which means another file or folder.
    if (std::ferror(stream_) != 0 || (length < 0 && std::feof(stream_) == 0)) {
        error_ = error_text(error);
        return std::nullopt;
    }
    if (length < 0)
        return std::nullopt;
    if (bytes[length - 1] != '\0') {
        error_ = "it ends in the middle of a path";
        return std::nullopt;
    }
    return QByteArray(bytes, length - 1);
}
