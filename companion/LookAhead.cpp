#include "companion/LookAhead.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace {

constexpr std::size_t files_in_batch = 64;
constexpr std::size_t batches_for_each_thread = 16;
constexpr int most_helpers = 7;

} // namespace

LookAhead::LookAhead(Look look, Reach reach, int helpers)
    : look_(std::move(look)),
      batch_size_(reach == Reach::far ? files_in_batch : 1),
      most_batches_(reach == Reach::far ? batches_for_each_thread * static_cast<std::size_t>(helpers) : 0),
      helpers_(reach == Reach::far ? helpers : 0)
{
}

void LookAhead::add(MusicFile file)
{
    add_entry({.file = std::move(file), .turn = {}});
}

void LookAhead::add_turn(Turn turn)
{
    add_entry({.file = {}, .turn = std::move(turn)});
}

void LookAhead::finish()
{
    send_batch();
    while (!batches_.empty())
        take_first();
}

void LookAhead::add_entry(Entry entry)
{
    open_batch_.entries.push_back(std::move(entry));
    if (open_batch_.entries.size() >= batch_size_)
        send_batch();
}

void LookAhead::send_batch()
{
    {
        const std::lock_guard guard(lock_);
        batches_.push_back(std::make_unique<Batch>(std::exchange(open_batch_, {})));
    }
    batch_came_.notify_one();
    // A run of a few files is over before a thread would have begun.
    if (threads_.empty() && batches_.size() > 1)
        start_threads();
    while (batches_.size() > most_batches_)
        take_first();
}

/// The run goes on with those that the system lets it start.
void LookAhead::start_threads()
{
    try {
        while (std::ssize(threads_) < helpers_)
            threads_.emplace_back([this](const std::stop_token& stop) { help(stop); });
    } catch (const std::system_error&) {
        helpers_ = static_cast<int>(threads_.size());
    }
}

void LookAhead::take_first()
{
    wait_for(*batches_.front());
    std::unique_ptr<Batch> batch;
    {
        const std::lock_guard guard(lock_);
        batch = std::move(batches_.front());
        batches_.pop_front();
        --next_;
    }
    if (batch->error)
        std::rethrow_exception(batch->error);
    for (const Entry& entry : batch->entries)
        entry.turn();
}

/// Looks at what nobody looks at yet until a batch is done.
void LookAhead::wait_for(const Batch& batch)
{
    std::unique_lock guard(lock_);
    while (!batch.is_done) {
        if (next_ == batches_.size()) {
            batch_done_.wait(guard);
            continue;
        }
        Batch& next = *batches_[next_++];
        guard.unlock();
        look_through(next);
        guard.lock();
        next.is_done = true;
    }
}

void LookAhead::look_through(Batch& batch) const
{
    try {
        for (Entry& entry : batch.entries) {
            if (entry.file)
                entry.turn = look_(*entry.file);
        }
    } catch (...) {
        batch.error = std::current_exception();
    }
}

void LookAhead::help(const std::stop_token& stop)
{
    std::unique_lock guard(lock_);
    while (batch_came_.wait(guard, stop, [this] { return next_ < batches_.size(); }) && !stop.stop_requested()) {
        Batch& next = *batches_[next_++];
        guard.unlock();
        look_through(next);
        guard.lock();
        next.is_done = true;
        batch_done_.notify_one();
    }
}

int usual_helpers()
{
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()) - 1, 0, most_helpers);
}
