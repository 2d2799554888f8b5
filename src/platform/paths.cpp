#include "platform/paths.h"

#include "platform/drives.h"
#include "platform/file_names.h"

#include <QList>

#include <algorithm>
#include <optional>

namespace {

/// Where the drive's root is now, without trailing slash: empty for "/". Nothing while nothing is mounted.
std::optional<QByteArray> root_of(const Drive& drive)
{
    QByteArray root = drive.mount_point;
    if (root.isEmpty() && !drive.device.isEmpty())
        root = mount_point_of(drive.device);
    if (root.isEmpty())
        return std::nullopt;
    return root == "/" ? QByteArray() : root;
}

bool lies_under(const QByteArray& native, const QByteArray& root)
{
    return native.startsWith(root) && (native.size() == root.size() || native[root.size()] == '/');
}

} // namespace

QByteArray native_path(const QString& path)
{
    if (path.size() < 2 || path[1] != u':')
        return {};
    const auto has_letter = [&path](const Drive& drive) { return drive.DriveLetter == path[0]; };
    const auto drive = std::ranges::find_if(drives(), has_letter);
    if (drive == drives().end())
        return {};
    const std::optional<QByteArray> root = root_of(*drive);
    if (!root)
        return {};
    QByteArray native = *root;
    QStringView names = QStringView(path).sliced(2);
    if (names.endsWith(u'\\'))
        names.chop(1);
    native.reserve(native.size() + 2 * names.size());
    while (!names.empty()) {
        if (names[0] != u'\\')
            return {};
        names = names.sliced(1);
        const qsizetype length = std::ranges::find(names, u'\\') - names.begin();
        native += '/';
        if (!append_name(native, names.first(length)))
            return {};
        names = names.sliced(length);
    }
    return native.isEmpty() ? QByteArray("/") : native;
}

QString program_path(const QByteArray& native)
{
    if (!native.startsWith('/'))
        return {};
    const Drive* nearest = nullptr;
    QByteArray nearest_root;
    for (const Drive& drive : drives()) {
        const std::optional<QByteArray> root = root_of(drive);
        const bool holds = root && lies_under(native, *root);
        if (holds && (nearest == nullptr || root->size() > nearest_root.size())) {
            nearest = &drive;
            nearest_root = *root;
        }
    }
    if (nearest == nullptr)
        return {};
    QString path = nearest->DriveLetter + u':';
    for (const QByteArray& name : native.sliced(nearest_root.size()).split('/')) {
        if (name == "." || name == "..")
            return {};
        if (!name.isEmpty())
            path += u'\\' + name_from_bytes(name);
    }
    return path;
}
