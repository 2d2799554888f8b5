#pragma once

#include "platform/drives.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <vector>

// How the facts of a machine become lettered drives: no look at the machine itself.

/// One line of the mount table.
struct MountedVolume
{
    QByteArray source; ///< what is mounted: a node under /dev in its shortest spelling, or any other text
    QByteArray mount_point;
    QByteArray root = "/"; ///< the part of the volume that is mounted
    QByteArray type;       ///< file system type, such as "ext4"
    quint64 number = 0;    ///< device number of the file system, the same for all its mounts
    bool is_network = false;
    bool is_pseudo = false; ///< no storage behind it
    bool is_folder = true;  ///< whether the mount point is a folder; only asked of local volumes
};

/// One entry of /sys/block.
struct BlockDevice
{
    QByteArray name;                    ///< such as "sda" or "sr0"
    std::vector<QByteArray> partitions; ///< such as "sda1"
    bool is_removable = false;
    bool has_disc = false; ///< of an optical drive: whether a readable disc lies in it
};

/// All that is known of a machine.
struct Machine
{
    std::vector<MountedVolume> mounts; ///< in mount order
    std::vector<BlockDevice> block_devices;
    std::map<QByteArray, QString> labels; ///< volume labels by node under /dev
    QByteArray home;                      ///< the user's home folder, empty for none
    QByteArray music;                     ///< the user's music folder, empty for none
};

/// The drives of the machine in alphabetical order; see drives_of_this_machine. The letters A, B and those of the
/// root, the home and the music folder are never given to others. Where letters run out, volumes are left out
/// before optical drives are.
std::vector<Drive> lettered_drives(const Machine& machine);

/// A label as /dev/disk/by-label spells it, where "\x20" stands for a blank.
QString decoded_label(const QByteArray& spelling);
