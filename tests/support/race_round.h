#pragma once

#include "file_operations.h"
#include "platform/controls/FilePrompts.h"
#include "racer.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <random>
#include <set>

/// The person at the program in a race: answers every question by chance, and remembers what was given up.
class RacePerson : public FileOperationGuide, public FilePrompts
{
public:
    explicit RacePerson(unsigned seed) : random_(seed) {}

    using Overwrite = FileOperationGuide::Overwrite;
    using OnError = FileOperationGuide::OnError;

    Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) override;
    OnError ask_error(const QString& path, const QString& reason, bool more_follow) override;
    bool ask_trash(const QStringList& paths) override;
    bool ask_delete(const QStringList& paths) override;
    void progress(const FileProgress& progress) override;
    bool is_cancelled() const override { return false; }

    std::set<int> given_up; ///< numbers of race files
    int overwritten = 0;
    int errors = 0;

private:
    std::mt19937 random_;
};

/// One race: two disks with race files, and a second process that races for them.
class RaceRound
{
public:
    struct Field
    {
        QByteArray acts;
        QStringList folders; ///< as the program writes them; the first holds the files at first
        QStringList names;   ///< as many files as names, less `free_names`, under the first of them
        int free_names = 0;
    };

    RaceRound(const Field& field, unsigned seed);

    std::size_t below(std::size_t limit) { return random_() % limit; }
    const QString& name()
    {
        return field_.names[static_cast<qsizetype>(below(static_cast<std::size_t>(field_.names.size())))];
    }
    const QString& folder()
    {
        return field_.folders[static_cast<qsizetype>(below(static_cast<std::size_t>(field_.folders.size())))];
    }
    QString place() { return folder() + u'\\' + name(); }

    /// Ends the race. Gives what is wrong with the files: one is missing that nobody gave up, or isn't whole.
    QStringList end();
    const Racer& racer() const { return racer_; }

    TwoDisks disks;
    NotedMessages messages;
    RacePerson person;
    bool tags_of_racer_stay = false; ///< whether the files that the racer made must have their first tags at the end

private:
    RacerJob job(const Field& field, unsigned seed);
    void look_below(const QByteArray& native);
    void look_at(const QByteArray& native);

    Field field_;
    std::mt19937 random_;
    std::set<int> numbers_;
    std::set<int> whole_;
    QStringList faults_;
    Racer racer_;
};

/// How many descriptors this process has open.
int open_descriptors();
