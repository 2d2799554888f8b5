#pragma once

#include "sample_files.h"
#include "test_main.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

// What the tests of the companion share.

/// What a run of the companion said.
struct Told
{
    int status = -1;
    QByteArray out;
    QByteArray err;

    QByteArrayList lines() const;
    /// The lines as JSON objects.
    QList<QJsonObject> objects() const;
};

/// Runs the companion within this process. `words` follow its name, `input` is what it finds on its standard input,
/// `helpers` are its threads beside the caller's.
Told run_fif(const QByteArrayList& words, const QByteArray& input = {}, int helpers = 1);
/// The same with a stream as its standard input.
Told run_fif(const QByteArrayList& words, std::FILE* input, int helpers = 1);

/// A stream that gathers what is written to it.
class Gathered
{
public:
    Gathered() : stream_(open_memstream(&bytes_, &size_)) {}
    ~Gathered()
    {
        std::fclose(stream_);
        std::free(bytes_);
    }
    Gathered(const Gathered&) = delete;
    Gathered& operator=(const Gathered&) = delete;

    std::FILE* stream() const { return stream_; }
    QByteArray bytes() const
    {
        std::fflush(stream_);
        return {bytes_, static_cast<qsizetype>(size_)};
    }

private:
    char* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* stream_;
};

/// A temporary folder of music on disk, in memory where the machine lets it.
class MusicPlace
{
public:
    MusicPlace();
    ~MusicPlace();
    MusicPlace(const MusicPlace&) = delete;
    MusicPlace& operator=(const MusicPlace&) = delete;

    /// Without trailing slash.
    const QByteArray& root() const { return root_; }
    QByteArray path(const QByteArray& name) const { return root_ + '/' + name; }
    /// Writes a file with the folders above it; replaces one that is there.
    void write(const QByteArray& name, const QByteArray& content) const;
    /// Null when there is no such file.
    QByteArray read(const QByteArray& name) const;
    bool exists(const QByteArray& name) const;
    /// All files below by their names from here on, with what they hold; links by where they lead.
    QMap<QByteArray, QByteArray> content() const;
    /// Where the journal of a run is put in these tests.
    QByteArray journal() const { return root_ + ".journal"; }

private:
    QByteArray root_;
};

/// The words of a run on all music of a place that changes what `words` say, with its journal beside the music.
QByteArrayList applied(const QByteArrayList& words, const MusicPlace& place);

/// Takes back what that run did.
Told undo(const MusicPlace& place);

/// What the disk calls of such runs touch.
QByteArrayList folders_of(const MusicPlace& place);

/// A file of sound with this tag at its end, filled with NULs.
QByteArray song(const QByteArray& artist, const QByteArray& title, unsigned char genre = 17);

/// The tag of a file as bytes, filled with blanks.
QByteArray tag_with_blanks(const QByteArray& artist, const QByteArray& title, unsigned char genre);
