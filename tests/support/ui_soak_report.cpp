#include "ui_soak_report.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

extern "C" {
// There in a build with AddressSanitizer only.
__attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();   // NOLINT
__attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)()); // NOLINT
}

namespace {

constexpr std::size_t noted_actions = 30;
constexpr std::size_t longest_note = 160;

/// Fixed places, so that they can be written out in the middle of a crash.
struct Notes
{
    std::array<std::array<char, longest_note>, noted_actions> texts{};
    std::array<char, longest_note> seed{};
    unsigned count = 0;
};

Notes notes;

void put(std::array<char, longest_note>& place, const std::string& text)
{
    place.fill('\0');
    std::copy_n(text.begin(), std::min(text.size(), place.size() - 2), place.begin());
    place.at(std::min(text.size(), place.size() - 2)) = '\n';
}

void write_out(const std::array<char, longest_note>& text)
{
    const auto end = std::ranges::find(text, '\0');
    const auto length = static_cast<std::size_t>(end - text.begin());
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), length);
}

void tell_and_die(int signal_number)
{
    tell_last_soak_actions();
    std::signal(signal_number, SIG_DFL);
    std::raise(signal_number);
}

int entries_of(const char* folder)
{
    std::error_code error;
    return static_cast<int>(
        std::distance(std::filesystem::directory_iterator(folder, error), std::filesystem::directory_iterator()));
}

} // namespace

void note_soak_action(const QString& action)
{
    static const bool tells = std::getenv("QUILMO_SOAK_TELL") != nullptr;
    auto& text = notes.texts.at(notes.count % noted_actions);
    put(text, std::to_string(notes.count + 1) + ". " + action.toStdString());
    ++notes.count;
    if (tells)
        write_out(text);
}

void begin_soak_notes(unsigned seed)
{
    notes.count = 0;
    put(notes.seed, "QUILMO_SOAK_SEED=" + std::to_string(seed) + " replays the sequence that ends with:");
}

void tell_last_soak_actions()
{
    write_out(notes.seed);
    const unsigned first = notes.count > noted_actions ? notes.count - unsigned{noted_actions} : 0;
    for (unsigned number = first; number < notes.count; ++number)
        write_out(notes.texts.at(number % noted_actions));
}

void tell_soak_actions_on_crash()
{
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(tell_last_soak_actions);
        return;
    }
    for (const int signal_number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
        std::signal(signal_number, tell_and_die);
}

SoakWatchdog::SoakWatchdog(int seconds) : thread_([this, seconds] { watch(seconds); }) {}

SoakWatchdog::~SoakWatchdog()
{
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

void SoakWatchdog::watch(int seconds)
{
    std::unique_lock lock(mutex_);
    unsigned last = beats_;
    while (!ended_.wait_for(lock, std::chrono::seconds(seconds), [this] { return ends_; })) {
        const unsigned beats = beats_;
        if (beats == last) {
            tell_last_soak_actions();
            std::abort();
        }
        last = beats;
    }
}

SoakResources SoakResources::now()
{
    const std::size_t bytes = __sanitizer_get_current_allocated_bytes != nullptr
                                  ? __sanitizer_get_current_allocated_bytes()
                                  : mallinfo2().uordblks;
    return {.bytes = static_cast<long long>(bytes),
            .descriptors = entries_of("/proc/self/fd"),
            .threads = entries_of("/proc/self/task")};
}
