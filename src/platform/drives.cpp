#include "platform/drives.h"

#include "platform/drive_letters.h"
#include "platform/file_names.h"

#include <QFile>
#include <QStandardPaths>

#include <fcntl.h>
#include <libmount.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

namespace {

/// The names in a folder of the system; none where it can't be read.
std::vector<QByteArray> names_in(const QByteArray& folder)
{
    std::vector<QByteArray> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder.toStdString(), error), end; !error && entry != end;
         entry.increment(error))
        names.push_back(QByteArray::fromStdString(entry->path().filename().string()));
    return names;
}

bool is_folder(const QByteArray& path)
{
    struct stat status
    {
    };
    return stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// The node that a path under /dev means, links followed; the path itself where there is none.
QByteArray real_node(const QByteArray& path)
{
    std::array<char, PATH_MAX> resolved{};
    return realpath(path.constData(), resolved.data()) == nullptr ? path : QByteArray(resolved.data());
}

MountedVolume mounted_volume(libmnt_fs* mount)
{
    MountedVolume volume{.source = mnt_fs_get_source(mount),
                         .mount_point = mnt_fs_get_target(mount),
                         .root = mnt_fs_get_root(mount),
                         .type = mnt_fs_get_fstype(mount),
                         .number = mnt_fs_get_devno(mount),
                         .is_network = mnt_fs_is_netfs(mount) == 1,
                         .is_pseudo = mnt_fs_is_pseudofs(mount) == 1};
    if (volume.source.startsWith("/dev/"))
        volume.source = real_node(volume.source);
    return volume;
}

/// The mount table, in mount order. No mounted file system is touched.
std::vector<MountedVolume> mount_table()
{
    const std::unique_ptr<libmnt_table, decltype(&mnt_unref_table)> table(mnt_new_table(), mnt_unref_table);
    const std::unique_ptr<libmnt_iter, decltype(&mnt_free_iter)> iterator(mnt_new_iter(MNT_ITER_FORWARD),
                                                                          mnt_free_iter);
    std::vector<MountedVolume> volumes;
    if (!table || !iterator || mnt_table_parse_file(table.get(), "/proc/self/mountinfo") != 0)
        return volumes;
    libmnt_fs* mount = nullptr;
    while (mnt_table_next_fs(table.get(), iterator.get(), &mount) == 0)
        volumes.push_back(mounted_volume(mount));
    return volumes;
}

bool holds_readable_disc(const QByteArray& node)
{
    const int descriptor = open(node.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const int status = ioctl(descriptor, CDROM_DRIVE_STATUS, CDSL_CURRENT);
    close(descriptor);
    return status == CDS_DISC_OK;
}

BlockDevice block_device(const QByteArray& name)
{
    const QByteArray folder = "/sys/block/" + name;
    BlockDevice device;
    device.name = name;
    for (const QByteArray& entry : names_in(folder)) {
        if (QFile::exists(QFile::decodeName(folder + '/' + entry + "/partition")))
            device.partitions.push_back(entry);
    }
    QFile removable(QFile::decodeName(folder + "/removable"));
    device.is_removable = removable.open(QIODevice::ReadOnly) && removable.readAll().trimmed() == "1";
    device.has_disc = name.startsWith("sr") && holds_readable_disc("/dev/" + name);
    return device;
}

std::map<QByteArray, QString> volume_labels()
{
    const QByteArray folder = "/dev/disk/by-label/";
    std::map<QByteArray, QString> labels;
    for (const QByteArray& name : names_in(folder))
        labels.emplace(real_node(folder + name), decoded_label(name));
    return labels;
}

QByteArray folder_or_none(const QByteArray& path)
{
    const QByteArray clean = path.size() > 1 && path.endsWith('/') ? path.chopped(1) : path;
    return is_folder(clean) ? clean : QByteArray();
}

Machine this_machine()
{
    Machine machine;
    machine.mounts = mount_table();
    for (MountedVolume& mount : machine.mounts) {
        // A network mount that has died would hang here, so nothing but local storage is asked.
        if (mount.source.startsWith("/dev/") && !mount.is_network && !mount.is_pseudo)
            mount.is_folder = is_folder(mount.mount_point);
    }
    for (const QByteArray& name : names_in("/sys/block"))
        machine.block_devices.push_back(block_device(name));
    machine.labels = volume_labels();
    machine.home = folder_or_none(qgetenv("HOME"));
    machine.music = folder_or_none(QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::MusicLocation)));
    return machine;
}

std::optional<std::vector<Drive>>& kept_drives()
{
    static std::optional<std::vector<Drive>> kept;
    return kept;
}

} // namespace

const std::vector<Drive>& drives()
{
    std::optional<std::vector<Drive>>& kept = kept_drives();
    if (!kept)
        kept = drives_of_this_machine();
    return *kept;
}

void set_drives(std::vector<Drive> drives)
{
    kept_drives() = std::move(drives);
}

QByteArray mount_point_of(const QByteArray& device)
{
    for (const MountedVolume& mount : mount_table()) {
        if (mount.source == device && mount.root == "/")
            return mount.mount_point;
    }
    return {};
}

std::vector<Drive> drives_of_this_machine()
{
    return lettered_drives(this_machine());
}
