#include "companion_run.h"

#include "companion/companion.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

QByteArray temporary_folder()
{
    const QByteArray memory = "/dev/shm";
    const QByteArray parent = access(memory.constData(), W_OK) == 0 ? memory : QFile::encodeName(QDir::tempPath());
    QByteArray path = parent + "/quilmo-fif-XXXXXX";
    if (mkdtemp(path.data()) == nullptr)
        qFatal("no temporary folder");
    return path;
}

} // namespace

QByteArrayList Told::lines() const
{
    return out.isEmpty() ? QByteArrayList() : out.chopped(1).split('\n');
}

QList<QJsonObject> Told::objects() const
{
    QList<QJsonObject> objects;
    for (const QByteArray& line : lines())
        objects.append(QJsonDocument::fromJson(line).object());
    return objects;
}

Told run_fif(const QByteArrayList& words, const QByteArray& input, int helpers)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> in(std::tmpfile(), std::fclose);
    std::fwrite(input.constData(), 1, static_cast<std::size_t>(input.size()), in.get());
    std::rewind(in.get());
    return run_fif(words, in.get(), helpers);
}

Told run_fif(const QByteArrayList& words, std::FILE* input, int helpers)
{
    QByteArrayList all = QByteArrayList{"quilmo-fif"} + words;
    std::vector<char*> pointers;
    for (QByteArray& word : all)
        pointers.push_back(word.data());
    const Gathered out;
    const Gathered err;
    Told told;
    told.status = run_companion(pointers, {.in = input, .out = out.stream(), .err = err.stream()}, helpers);
    told.out = out.bytes();
    told.err = err.bytes();
    return told;
}

MusicPlace::MusicPlace() : root_(temporary_folder()) {}

MusicPlace::~MusicPlace()
{
    std::error_code error;
    fs::remove_all(root_.toStdString(), error);
    fs::remove_all(journal().toStdString(), error);
}

void MusicPlace::write(const QByteArray& name, const QByteArray& content) const
{
    const fs::path file = path(name).toStdString();
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    if (!stream.write(content.constData(), content.size()))
        qFatal("can't write %s", name.constData());
}

QByteArray MusicPlace::read(const QByteArray& name) const
{
    std::ifstream stream(fs::path(path(name).toStdString()), std::ios::binary);
    if (!stream)
        return {};
    std::ostringstream content;
    content << stream.rdbuf();
    return QByteArray::fromStdString(content.str());
}

bool MusicPlace::exists(const QByteArray& name) const
{
    return fs::exists(fs::symlink_status(path(name).toStdString()));
}

QMap<QByteArray, QByteArray> MusicPlace::content() const
{
    QMap<QByteArray, QByteArray> content;
    for (const auto& entry : fs::recursive_directory_iterator(root_.toStdString())) {
        const QByteArray name = QByteArray::fromStdString(entry.path().string()).sliced(root_.size() + 1);
        if (entry.is_symlink())
            content.insert(name, "-> " + QByteArray::fromStdString(fs::read_symlink(entry.path()).string()));
        else if (entry.is_regular_file())
            content.insert(name, read(name));
    }
    return content;
}

QByteArrayList applied(const QByteArrayList& words, const MusicPlace& place)
{
    return words + QByteArrayList{"--apply", "--journal", place.journal(), place.root()};
}

Told undo(const MusicPlace& place)
{
    return run_fif({"undo", place.journal()});
}

QByteArrayList folders_of(const MusicPlace& place)
{
    return {place.root(), place.journal()};
}

QByteArray song(const QByteArray& artist, const QByteArray& title, unsigned char genre)
{
    return sample_audio({.frames = 2}) + sample_tag({.title = title,
                                                     .artist = artist,
                                                     .album = "Album",
                                                     .year = "1999",
                                                     .comment = "Comment",
                                                     .genre = genre});
}

QByteArray tag_with_blanks(const QByteArray& artist, const QByteArray& title, unsigned char genre)
{
    return sample_tag({.title = title.leftJustified(30, ' '),
                       .artist = artist.leftJustified(30, ' '),
                       .album = "Album",
                       .year = "1999",
                       .comment = "Comment",
                       .genre = genre});
}
