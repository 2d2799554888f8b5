#include "kills.h"

#include "faulty_disk.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <new>

namespace {

/// What parent and child both see.
class SharedCount
{
public:
    SharedCount()
        : memory_(mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
        if (memory_ == MAP_FAILED)
            qFatal("no shared memory");
        count_ = new (memory_) std::atomic<int>(0);
    }
    ~SharedCount() { munmap(memory_, sizeof(std::atomic<int>)); }
    SharedCount(const SharedCount&) = delete;
    SharedCount& operator=(const SharedCount&) = delete;

    std::atomic<int>& value() const { return *count_; }

private:
    void* memory_;
    std::atomic<int>* count_ = nullptr;
};

} // namespace

QByteArray Stroke::text() const
{
    return before_call > 0 ? "killed before call " + QByteArray::number(before_call)
                           : "killed after " + QByteArray::number(microseconds) + " microseconds";
}

ChildRun run_in_child(const QByteArrayList& folders, const Stroke& stroke, const std::function<void()>& work)
{
    const SharedCount begun;
    const SharedCount calls;
    const pid_t child = fork();
    if (child == 0) {
        begun.value() = 1;
        watch_disk(
            folders,
            [&](const QByteArray&, const QByteArray&) {
                if (++calls.value() == stroke.before_call)
                    kill(getpid(), SIGKILL);
            },
            work);
        _exit(0);
    }
    while (begun.value() == 0)
        usleep(10);
    QElapsedTimer timer;
    timer.start();
    if (stroke.microseconds > 0) {
        usleep(static_cast<useconds_t>(stroke.microseconds));
        kill(child, SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {.was_killed = WIFSIGNALED(status),
            .calls = calls.value(),
            .microseconds = static_cast<int>(timer.nsecsElapsed() / 1000)};
}

Stroke stroke_within(const ChildRun& whole, int round)
{
    QRandomGenerator& random = *QRandomGenerator::global();
    if (round % 2 == 0)
        return {.before_call = random.bounded(1, whole.calls + 1)};
    return {.microseconds = random.bounded(1, whole.microseconds + 1)};
}
