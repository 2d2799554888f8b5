#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <cstdio>
#include <optional>

/// The paths that a person names, one by one: arguments, or what comes in on a stream with a NUL behind each.
class PathSource
{
public:
    explicit PathSource(QByteArrayList paths) : paths_(std::move(paths)) {}
    /// `stream` outlives it.
    explicit PathSource(std::FILE* stream) : stream_(stream) {}

    /// The next path; nothing at the end, or where the stream can't be read further. Empty ones on the stream are
    /// passed over.
    std::optional<QByteArray> next();
    /// Why the stream can't be read further; empty while it can, and at its end.
    const QByteArray& error() const { return error_; }

private:
    std::optional<QByteArray> read();

    QByteArrayList paths_;
    qsizetype place_ = 0;
    std::FILE* stream_ = nullptr;
    QByteArray error_;
};
