#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <functional>

// Work that is killed in the middle, as by kill -9. A program that calls this links the faulty disk, too.

/// When a process is killed; at neither moment when both are 0.
struct Stroke
{
    int before_call = 0;  ///< the nth call of the disk
    int microseconds = 0; ///< after the beginning of its work

    /// As the report of a failing test shows it.
    QByteArray text() const;
};

struct ChildRun
{
    bool was_killed = false;
    int calls = 0;        ///< that touched the folders, up to the end
    int microseconds = 0; ///< from the beginning of the work to the end
};

/// Runs `work`, whose calls of the disk touch `folders`, in a process of its own, and kills that at the stroke if it
/// has not ended before.
ChildRun run_in_child(const QByteArrayList& folders, const Stroke& stroke, const std::function<void()>& work);

/// A random moment of a work that took as long as `whole` when nothing disturbed it: before one of its calls, or at any
/// time; the two in turn as `round` goes up.
Stroke stroke_within(const ChildRun& whole, int round);
