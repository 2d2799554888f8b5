#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <cerrno>
#include <functional>
#include <span>

// A disk that fails on purpose. A program that links this library makes its calls of the system, and those of the
// libraries it uses, through functions of ours; they pass everything on but what a test lets go wrong.

/// How a call goes wrong.
struct DiskFault
{
    const char* name;   ///< as the report of a failing test shows it
    int error = 0;      ///< the call does nothing and fails with this error number; 0 for a transfer that comes short
    bool lasts = false; ///< every call after it goes wrong likewise, as on a disk that was pulled out
    bool halves_first = false; ///< a read or write that it strikes does half, and what fails is the call after it

    /// A read or write that does half of what it was asked for; other calls go on.
    bool is_short() const { return error == 0; }
};

/// All the ways in which a single call goes wrong, and those that last.
std::span<const DiskFault> disk_faults();

/// Runs `work` while the `nth` call, from 1 on, that touches one of `folders` or what lies below goes wrong, on
/// whatever thread. Of a short transfer, reads and writes alone are counted; of ENOSPC and EROFS, the calls that change
/// the disk. Gives the call that went wrong first, such as "rename /tmp/x/a.mp3"; empty when there were fewer calls.
QByteArray with_fault(const QByteArrayList& folders, int nth, const DiskFault& fault,
                      const std::function<void()>& work);

/// Called before a call of the system by the thread that makes it; the disk calls that it makes itself are passed on
/// unseen. `call` is the name of the system's function, `native` the path that it touches.
using DiskWatch = std::function<void(const QByteArray& call, const QByteArray& native)>;

/// Runs `work` while `watch` sees each call that touches one of `folders` or what lies below.
void watch_disk(const QByteArrayList& folders, const DiskWatch& watch, const std::function<void()>& work);
