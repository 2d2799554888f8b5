#include "corpus.h"

#include "sample_files.h"

#include <QFile>
#include <QString>

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A third of the tags each in ASCII, Korean and Western text; files of four sizes.
QByteArray content(int number, const QByteArray& title)
{
    static const std::array audio = {sample_audio({.frames = 12}), sample_audio({.frames = 14}),
                                     sample_audio({.frames = 17}), sample_audio({.frames = 19})};
    static const std::array artists = {QByteArray("Plain Artist"), korean_bytes(u"한국 가수"_s),
                                       western_bytes(u"Café Müller"_s)};
    const auto place = static_cast<std::size_t>(number);
    return audio.at(place % audio.size()) + sample_tag({.title = title,
                                                        .artist = artists.at(place % artists.size()),
                                                        .genre = static_cast<unsigned char>(number % 148)});
}

QByteArray padded(int number, int width)
{
    return QByteArray::number(number).rightJustified(width, '0');
}

bool has_fif_name(const Corpus& corpus, int number)
{
    return corpus.fif_names == Corpus::FifNames::all ||
           (corpus.fif_names == Corpus::FifNames::every_other && number % 2 == 1);
}

} // namespace

std::vector<CorpusFile> write_corpus(const QByteArray& native, const Corpus& corpus)
{
    std::vector<CorpusFile> files;
    files.reserve(static_cast<std::size_t>(corpus.files));
    for (int number = 0; number < corpus.files; ++number) {
        const auto place = std::int64_t{number} * corpus.folders / corpus.files;
        QByteArray folder = "folder " + padded(static_cast<int>(place), 3);
        if ((files.empty() || files.back().folder != folder) && mkdir((native + '/' + folder).constData(), 0777) != 0 &&
            errno != EEXIST)
            qFatal("can't make %s/%s", native.constData(), folder.constData());
        const QByteArray title = "Title " + padded(number, 6);
        QByteArray name = has_fif_name(corpus, number) ? QByteArray("[") + corpus_fif_artist + "][" + title + "].mp3"
                                                       : "track " + padded(number, 6) + ".mp3";
        QFile file(QFile::decodeName(native + '/' + folder + '/' + name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content(number, title)) < 0)
            qFatal("can't write %s", qPrintable(file.fileName()));
        files.push_back({.folder = std::move(folder), .name = std::move(name)});
    }
    return files;
}
