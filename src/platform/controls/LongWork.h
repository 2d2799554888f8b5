#pragma once

#include <QElapsedTimer>

/// Work on many files: as long as the object lives the wait cursor is shown, and each call of step lets the windows
/// paint when a tenth of a second has gone by. Input of the person waits until the work is done, so nothing is started
/// twice.
class LongWork
{
public:
    LongWork();
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    /// To be called between two files, when no shared state is in use.
    void step();

private:
    QElapsedTimer since_painted_;
};
