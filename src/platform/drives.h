#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// The kinds of drives, by the platform's own numbers.
enum class DriveType
{
    unknown = 0,
    removable = 1,
    fixed = 2,
    remote = 3,
    cd = 4,
    ram = 5
};

/// One lettered drive.
struct Drive
{
    QString DriveLetter; ///< one capital letter, without colon
    DriveType Type = DriveType::unknown;
    QString VolumeName;     ///< shown beside the letter of a fixed drive
    bool IsReady = false;   ///< a medium is there and can be read
    QByteArray mount_point; ///< where its root is; empty while nothing is mounted
    QByteArray device;      ///< node under /dev, empty for none; finds the mount point of a late medium
    QString ShareName{};    ///< of a drive of the network: the name under which it is shared
};

/// The lettered drives in alphabetical order: read from the machine at the first call and then kept.
const std::vector<Drive>& drives();

/// Puts other drives in place of the machine's, as tests do.
void set_drives(std::vector<Drive> drives);

/// Where a device such as /dev/sr0 is mounted now; empty when it is not.
QByteArray mount_point_of(const QByteArray& device);

/// The drives of this machine: C: is the file system's root, H: the user's home, M: the music folder where there is
/// one, other mounted local volumes take the free letters from D: in mount order, and so does every optical drive,
/// ready or not.
std::vector<Drive> drives_of_this_machine();
