#pragma once

#include <QByteArray>

#include <vector>

/// A corpus of small files with tags, as it should be made. File `n` of all has the title "Title n", so that its name
/// and the name that is made of its tag are its own.
struct Corpus
{
    /// Which files have FIF names from the start; the others are called "track n.mp3".
    enum class FifNames
    {
        none,
        every_other,
        all
    };

    int files = 0;
    int folders = 1; ///< share the files evenly
    FifNames fif_names = FifNames::none;

    auto operator<=>(const Corpus&) const = default; // NOLINT(modernize-use-nullptr): it is no null pointer
};

struct CorpusFile
{
    QByteArray folder; ///< name of its folder
    QByteArray name;
};

/// Writes a corpus into the folder `native` on disk, which is there; gives its files. Any failure ends the process.
std::vector<CorpusFile> write_corpus(const QByteArray& native, const Corpus& corpus);

/// The artist in all FIF names of a corpus, which no tag of it bears.
inline constexpr char corpus_fif_artist[] = "New Artist";
