#include "companion/NameList.h"

#include "platform/numbers.h"

#include <algorithm>
#include <cstring>

void NameList::add(QByteArrayView name)
{
    starts_.push_back(checked<quint32>(std::ssize(bytes_)));
    bytes_.append(name.data(), static_cast<std::size_t>(name.size())).push_back('\0');
}

void NameList::sort()
{
    std::ranges::sort(starts_, [this](quint32 a, quint32 b) { return std::strcmp(&bytes_[a], &bytes_[b]) < 0; });
}

QByteArrayView NameList::at(qsizetype index) const
{
    return &bytes_[starts_[static_cast<std::size_t>(index)]];
}
