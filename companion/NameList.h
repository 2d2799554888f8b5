#pragma once

#include <QByteArrayView>

#include <string>
#include <vector>

/// The names of a large folder, packed: a few bytes above their own.
class NameList
{
public:
    void add(QByteArrayView name);
    /// By bytes.
    void sort();
    qsizetype size() const { return std::ssize(starts_); }
    QByteArrayView at(qsizetype index) const;

private:
    std::string bytes_; ///< a NUL behind each name
    std::vector<quint32> starts_;
};
