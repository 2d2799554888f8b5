#pragma once

#include "platform/drives.h"

#include <QByteArray>
#include <QString>

/// A fixed drive without a name of its own, with its root at `mount_point`; nothing is mounted where that is empty.
inline Drive fixed_drive(const QString& letter, const QByteArray& mount_point)
{
    return {.DriveLetter = letter,
            .Type = DriveType::fixed,
            .VolumeName = {},
            .IsReady = true,
            .mount_point = mount_point,
            .device = {}};
}
