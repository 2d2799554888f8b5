#pragma once

#include <QString>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

// What is needed to replay a soak that fails, and what it costs the machine.

/// Notes an action; the last thirty are told when the process crashes or hangs. With QUILMO_SOAK_TELL in the
/// environment each is told at once.
void note_soak_action(const QString& action);
/// Forgets the actions noted so far: a new sequence begins with this seed.
void begin_soak_notes(unsigned seed);
/// Writes seed and last actions to the standard error output.
void tell_last_soak_actions();
/// Has them told on a crash, be it found by the system or by AddressSanitizer.
void tell_soak_actions_on_crash();

/// Ends the process, with the last actions told, when beat() is not called for `seconds`.
class SoakWatchdog
{
public:
    explicit SoakWatchdog(int seconds);
    ~SoakWatchdog();
    SoakWatchdog(const SoakWatchdog&) = delete;
    SoakWatchdog& operator=(const SoakWatchdog&) = delete;

    void beat() { ++beats_; }

private:
    void watch(int seconds);

    std::atomic<unsigned> beats_ = 0;
    bool ends_ = false;
    std::mutex mutex_;
    std::condition_variable ended_;
    std::thread thread_;
};

/// What the process holds of the machine.
struct SoakResources
{
    long long bytes = 0; ///< allocated on the heap
    int descriptors = 0;
    int threads = 0;

    static SoakResources now();
};
