#pragma once

#include "corpus.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <vector>

/// A temporary folder that the program sees as its drive C:, with a corpus on it.
class BenchDisk
{
public:
    struct File
    {
        QString folder; ///< with trailing backslash
        QString name;
        QByteArray native; ///< path on disk
    };

    /// Starts a fresh run that sees this disk.
    explicit BenchDisk(const Corpus& corpus = {});

    /// The disk of a corpus, kept from the first call on, with a fresh run that sees it: in English, shape 1, current
    /// in the corpus's first folder.
    static const BenchDisk& of(const Corpus& corpus);

    /// Path on disk, without trailing slash.
    QByteArray native() const;
    /// In the order in which they were made.
    const std::vector<File>& files() const { return files_; }
    /// The paths on disk of the files of the first folder, in the order in which the folder tells them.
    std::vector<QByteArray> paths_as_listed() const;

    /// Makes it the disk of a fresh run.
    void begin_run() const;
    /// Puts all files into the final list, at most 1000.
    void list_all() const;

private:
    QTemporaryDir disk_;
    std::vector<File> files_;
};
