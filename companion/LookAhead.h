#pragma once

#include "companion/FileWalk.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

/// Looks at files on several threads, some ahead of those whose turn it is. The turns come on the caller's thread, one
/// by one, in the order in which the files were added. The number of files that are looked at ahead is bounded.
class LookAhead
{
public:
    /// What is done when a file's turn comes.
    using Turn = std::function<void()>;
    /// Looks at a file, on any thread; gives what comes of it.
    using Look = std::function<Turn(const MusicFile& file)>;

    /// How far ahead of their turns files are looked at.
    enum class Reach
    {
        far,
        not_at_all ///< each file's turn comes before the next is looked at
    };

    /// Beside the caller's thread, `helpers` others look, or as many of them as the system lets start.
    LookAhead(Look look, Reach reach, int helpers);

    void add(MusicFile file);
    /// Adds a turn without a look.
    void add_turn(Turn turn);
    /// All turns that are left. What a look or a turn raises comes out of here or of an earlier call.
    void finish();

private:
    struct Entry
    {
        std::optional<MusicFile> file;
        Turn turn;
    };
    struct Batch
    {
        std::vector<Entry> entries;
        std::exception_ptr error;
        bool is_done = false;
    };

    void add_entry(Entry entry);
    void send_batch();
    void start_threads();
    void take_first();
    void wait_for(const Batch& batch);
    void look_through(Batch& batch) const;
    void help(const std::stop_token& stop);

    Look look_;
    std::size_t batch_size_;
    std::size_t most_batches_; ///< that wait for their turns
    int helpers_;
    Batch open_batch_;

    std::mutex lock_; ///< of the following
    std::deque<std::unique_ptr<Batch>> batches_;
    std::size_t next_ = 0; ///< the first that nobody looks at yet
    std::condition_variable_any batch_came_;
    std::condition_variable batch_done_;
    std::vector<std::jthread> threads_; ///< the last member: they end before the rest goes
};

/// How many threads beside its own a run gives to looking.
int usual_helpers();
