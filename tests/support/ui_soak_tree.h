#pragma once

#include "test_main.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QStringList>
#include <QTemporaryDir>

#include <map>
#include <set>

/// How often each kind of work was seen.
using SoakCounts = std::map<QString, int>;

/// What a scratch tree holds or lacks beside the usual.
struct SoakTreeKind
{
    bool has_tiny_files = false; ///< files too short for a tag
    bool has_many_files = false; ///< a folder of more files than can be copied at once
    bool has_trash = true;       ///< whether the user's trash takes anything
};

/// Drives of several kinds full of files of all kinds, and an account of where their contents are. Every content bears
/// a number of its own, in a place that no tag reaches.
class SoakTree
{
public:
    /// `home` is the path on disk of the user's home, whose trash is empty.
    SoakTree(const SoakTreeKind& kind, const QByteArray& home);
    ~SoakTree();
    SoakTree(const SoakTree&) = delete;
    SoakTree& operator=(const SoakTree&) = delete;

    /// Compares the disk with the last look: adds to `counts` what was renamed, moved, copied, thrown away and tagged
    /// since, and gives a line for each content that is gone though nobody gave it up.
    QStringList look(SoakCounts& counts);
    /// A person has agreed to lose what a path of the program's holds, a file or all of a folder.
    void give_up(const QString& path);
    int contents() const { return static_cast<int>(seen_.size()); }
    /// How many contents are gone with a person's word.
    int given_up_and_gone() const;
    /// Whether a path is on the drive D:, which has no trash of its own that is the test's to fill.
    static bool is_on_other_volume(const QString& path);

private:
    using Number = QByteArray;
    using Places = std::map<QByteArray, QByteArray>; ///< path on disk and the last bytes there
    using Account = std::map<Number, Places>;

    void write_files(const SoakTreeKind& kind) const;
    void write_discs() const;
    QByteArrayList roots() const;
    Account account() const;
    void add_to_account(Account& account, const QByteArray& root) const;
    void count_changes(const Places& before, const Places& now, SoakCounts& counts) const;
    bool is_in_trash(const QByteArray& path) const { return path.startsWith(trash_); }

    TestDisk disk_;
    QTemporaryDir other_volume_;
    QTemporaryDir cd_;
    QTemporaryDir stick_;
    QByteArray trash_;
    Account seen_;
    std::set<Number> given_up_;
};
