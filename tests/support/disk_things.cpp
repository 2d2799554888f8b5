#include "disk_things.h"

#include "platform/paths.h"

#include <unistd.h>

#include <cerrno>

using namespace Qt::StringLiterals;

bool is_unfinished(const QByteArray& line)
{
    return line.contains("/.quilmo-");
}

QSet<QByteArray> things_in(const QByteArrayList& lines)
{
    QSet<QByteArray> things;
    for (const QByteArray& line : lines) {
        if (is_unfinished(line))
            continue;
        if (line.endsWith('/'))
            things.insert(line.chopped(1).split('/').last() + '/');
        else if (const qsizetype content = line.indexOf(" = "); content >= 0)
            things.insert(line.sliced(content + 1));
        else
            things.insert(line.sliced(line.indexOf(" -> ") + 1));
    }
    return things;
}

QByteArrayList trees_of(const QByteArrayList& folders)
{
    QByteArrayList lines;
    for (const QByteArray& folder : folders) {
        if (!stands(folder))
            continue;
        for (const QByteArray& line : tree_of(folder))
            lines.append(folder + '/' + line);
    }
    return lines;
}

FileCalls calls_between_disks(FileCalls calls)
{
    const auto between = [](const RenameCalls::Call& call) {
        return [call](const QByteArray& old_native, const QByteArray& new_native) {
            const QByteArray other = native_path(u"D:\\"_s);
            return old_native.startsWith(other) == new_native.startsWith(other) ? call(old_native, new_native) : EXDEV;
        };
    };
    calls.rename.rename_no_replace = between(calls.rename.rename_no_replace);
    calls.rename.link = between(calls.rename.link);
    return calls;
}

FileCalls calls_on_one_volume(FileCalls calls)
{
    calls.volume_root = [volume_root = calls.volume_root](const QByteArray& native) {
        return volume_root(native).isEmpty() ? QByteArray() : QByteArray("/the/one/volume");
    };
    return calls;
}

FilesInMemory::FilesInMemory() : before_(qgetenv("TMPDIR"))
{
    if (access("/dev/shm", W_OK | X_OK) == 0)
        qputenv("TMPDIR", "/dev/shm");
}

FilesInMemory::~FilesInMemory()
{
    if (before_.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", before_);
}
