#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <map>
#include <set>

/// What a racer may do; each letter of RacerJob::acts is one of these, and a letter that stands there twice comes twice
/// as often. A racer never replaces anything: it renames to free names only, or swaps.
enum RacerAct : char
{
    swap_two = 'x',
    rename_one = 'm',
    park_one = 'p',   ///< takes something away to a place of its own
    bring_back = 'b', ///< gives something parked a name of the race
    make_file = 'n',  ///< parks a new file
    delete_one = 'd',
    cut_one = 't', ///< makes a file shorter, while others may have it open
    write_into = 's',
    link_one = 'l',
    make_folder = 'f',
    make_pipe = 'i',
    change_rights = 'r',
    take_folder_away = 'w', ///< for a moment, one of the folders of the race itself
    take_file_away = 'a',   ///< for a moment
    contest_name = 'c',     ///< gives something parked one of the names in brackets, or takes only its own away from it
};

struct RacerJob
{
    QByteArray acts;
    QByteArrayList folders; ///< on disk; beside each lies, in a folder "pen", what the racer has parked
    QByteArrayList names;   ///< that it races for in each of them
    unsigned seed = 1;
    int first_number = 1000; ///< of the race files that it makes
};

/// A second process that does its job as long as the object lives, or until it is stopped.
class Racer
{
public:
    explicit Racer(const RacerJob& job);
    ~Racer();
    Racer(const Racer&) = delete;
    Racer& operator=(const Racer&) = delete;

    /// Ends it; gives whether it ended in order.
    bool stop();
    /// What it did, by act; to be asked when it has ended.
    const std::map<char, int>& done() const { return done_; }
    /// The numbers of the files that it has deleted or made shorter itself.
    const std::set<int>& destroyed() const { return destroyed_; }
    /// The numbers of the files that it has made.
    const std::set<int>& made() const { return made_; }

private:
    QTemporaryDir notes_;
    QProcess process_;
    std::map<char, int> done_;
    std::set<int> destroyed_;
    std::set<int> made_;
};

/// The main function of a test that starts racers: a racer is the same program, called with other arguments. Gives
/// whether these are a racer's; then `status` is its exit status, and it has ended.
bool was_racer(int argc, char** argv, int& status);
