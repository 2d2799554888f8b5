#include "ui_soak_tree.h"

#include "platform/drives.h"
#include "sample_files.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

constexpr int number_offset = 40; ///< behind header and side information of the first frame
constexpr QByteArrayView number_mark = "SOAK";
constexpr int number_bytes = 12;
constexpr int tag_bytes = 128;

QByteArray next_number()
{
    static int last = 0;
    return number_mark.toByteArray() + QByteArray::number(++last).rightJustified(number_bytes - 4, '0');
}

/// `content` with a number of its own.
QByteArray numbered(QByteArray content)
{
    const QByteArray number = next_number();
    const qsizetype place = content.size() >= number_offset + number_bytes + tag_bytes ? number_offset : 0;
    return content.replace(place, number.size(), number);
}

QByteArray audio(int frames = 3)
{
    return sample_audio({.frames = frames});
}

QByteArray tagged(const QByteArray& artist, const QByteArray& title, unsigned char genre = 17)
{
    return audio() + sample_tag({.title = title, .artist = artist, .album = "Album", .genre = genre});
}

/// A file and its content without its number.
struct SoakFile
{
    QString path;
    QByteArray content;
};

std::vector<SoakFile> files_of_pop()
{
    return {{u"C:\\Pop\\track 1.mp3"_s, tagged("Ann", "Sea")},
            {u"C:\\Pop\\track 2.mp3"_s, tagged("Ann", "Sea")}, // the same FIF name
            {u"C:\\Pop\\track 3.mp3"_s, tagged("Bob", "Sky", 7)},
            {u"C:\\Pop\\[Ann][Lake].mp3"_s, tagged("Ann", "Other")},
            {u"C:\\Pop\\(Cid)(Moon)(Jazz).mp3"_s, audio(40)},
            {u"C:\\Pop\\Dan-Sun-Rock.mp3"_s, audio()},
            {u"C:\\Pop\\noise.mp3"_s, audio(40)},
            {u"C:\\Pop\\half a tag.mp3"_s, audio() + "TAG"},
            {u"C:\\Pop\\long.mp3"_s, tagged(QByteArray(30, 'L'), QByteArray(30, 'T'))},
            {u"C:\\Pop\\too long.mp3"_s, tagged(korean_bytes(QString(15, u'가')), "T")},
            {u"C:\\Pop\\blanks.mp3"_s, tagged("   ", "   ")},
            {u"C:\\Pop\\cover.jpg"_s, QByteArray(500, 'j')},
            {u"C:\\Pop\\Deep\\one.mp3"_s, tagged("Deep", "One")},
            {u"C:\\Pop\\Deep\\Deeper\\two.mp3"_s, tagged("Deep", "Two")}};
}

std::vector<SoakFile> files_of_other_folders()
{
    return {{u"C:\\Rock\\track 1.mp3"_s, tagged("Eve", "Rain")}, // a name that Pop holds too
            {u"C:\\Rock\\[Ann][Sea][Rock].mp3"_s, tagged("Ann", "Sea")},
            {u"C:\\Rock\\read only.mp3"_s, tagged("Fay", "Wind")},
            {u"C:\\Rock\\[Fay][Fog].mp3"_s, audio()},
            {u"C:\\Rock\\damaged.mp3"_s, QByteArray(3000, '\xff')},
            {u"C:\\Rock\\tag alone.mp3"_s, QByteArray(60, '\0') + sample_tag({.title = "T", .artist = "A"})},
            {u"C:\\Rock\\Hard\\hard 1.mp3"_s, tagged("A/B", "What?")},
            {u"C:\\Rock\\Hard\\hard 2.MP3"_s, tagged("[x]", "(y)-z")},
            {u"C:\\한국 음악\\노래 1.mp3"_s, tagged(korean_bytes(u"가수"_s), korean_bytes(u"바다"_s))},
            {u"C:\\한국 음악\\가수-바다.mp3"_s, audio()},
            {u"C:\\한국 음악\\été.mp3"_s, tagged(western_bytes(u"Müller"_s), western_bytes(u"Café"_s))},
            {u"C:\\Tools\\burner.ico"_s, QByteArray(300, 'i')},
            {u"D:\\Disc\\track 1.mp3"_s, tagged("Gus", "Snow")},
            {u"D:\\Disc\\track 9.mp3"_s, tagged("Gus", "Ice")},
            {u"D:\\Disc\\[Gus][Hail].mp3"_s, audio(40)},
            {u"D:\\Pop\\noise.mp3"_s, audio()}};
}

std::vector<SoakFile> files_with_odd_names()
{
    const QStringList names = {u"<b>bold<br> %s %1 & co.mp3"_s,
                               u"line\nbreak.mp3"_s,
                               u"\u202Egnp.mp3"_s,
                               u"bad"_s + QChar(0xDC80) + u"byte.mp3"_s,
                               u"back"_s + QChar(0xF05C) + u"slash.mp3"_s,
                               u"  blanks  .mp3"_s,
                               u".mp3"_s,
                               u"[][].mp3"_s,
                               u"-.mp3"_s,
                               u"mp3"_s,
                               u"a.mp3.mp3"_s,
                               u"[a][b][c][d].mp3"_s,
                               u"who? *me*: \"yes\".mp3"_s,
                               QString(240, u'n') + u".mp3"_s,
                               u"\U0001F3B5 song.MP3"_s};
    std::vector<SoakFile> files;
    for (const QString& name : names)
        files.push_back({u"C:\\Odd\\"_s + name, tagged("Odd", "Name")});
    return files;
}

std::vector<SoakFile> tiny_files()
{
    return {{u"C:\\Odd\\tiny.mp3"_s, QByteArray(100, 't')}, {u"C:\\Pop\\tiny.mp3"_s, QByteArray(127, 't')}};
}

std::vector<SoakFile> many_files()
{
    constexpr int count = 320;
    std::vector<SoakFile> files;
    files.reserve(count);
    for (int number = 0; number < count; ++number)
        files.push_back({u"C:\\Many\\%1.mp3"_s.arg(number, 3, 10, QChar(u'0')), tagged("M", "N")});
    return files;
}

QByteArray first_bytes(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::array<char, number_offset + number_bytes> bytes{};
    file.read(bytes.data(), bytes.size());
    return {bytes.data(), static_cast<qsizetype>(file.gcount())};
}

QByteArray last_bytes(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const auto length = static_cast<std::streamoff>(file.tellg());
    file.seekg(std::max(std::streamoff{0}, length - tag_bytes));
    std::array<char, tag_bytes> bytes{};
    file.read(bytes.data(), bytes.size());
    return {bytes.data(), static_cast<qsizetype>(file.gcount())};
}

/// The number that a content bears; empty for none.
QByteArray number_in(const QByteArray& start)
{
    for (const qsizetype place : {qsizetype{0}, qsizetype{number_offset}}) {
        const QByteArray found = start.mid(place, number_bytes);
        if (found.size() == number_bytes && found.startsWith(number_mark))
            return found;
    }
    return {};
}

QByteArray folder_of(const QByteArray& path)
{
    return path.left(path.lastIndexOf('/'));
}

/// Also what lies in folders that take no changes.
void remove_all(const QByteArray& root)
{
    std::error_code error;
    fs::permissions(root.toStdString(), fs::perms::owner_all, error);
    const auto options = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator entry(root.toStdString(), options, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        if (fs::is_directory(entry->symlink_status(unknown)))
            fs::permissions(entry->path(), fs::perms::owner_all, unknown);
    }
    fs::remove_all(root.toStdString(), error);
}

Drive drive(char16_t letter, DriveType type, const QByteArray& root)
{
    return {.DriveLetter = QString(QChar(letter)),
            .Type = type,
            .VolumeName = u"Drive "_s + QChar(letter),
            .IsReady = !root.isEmpty(),
            .mount_point = root,
            .device = {}};
}

} // namespace

SoakTree::SoakTree(const SoakTreeKind& kind, const QByteArray& home)
    : other_volume_(u"/dev/shm/quilmo-soak-XXXXXX"_s), trash_(home + "/.local/share/Trash")
{
    if (!other_volume_.isValid()) // a machine without a second file system
        other_volume_ = QTemporaryDir();
    const auto native = [](const QTemporaryDir& folder) { return QFile::encodeName(folder.path()); };
    set_drives({drive(u'C', DriveType::fixed, disk_.root()), drive(u'D', DriveType::fixed, native(other_volume_)),
                drive(u'E', DriveType::cd, native(cd_)), drive(u'F', DriveType::cd, {}),
                drive(u'G', DriveType::removable, native(stick_)), drive(u'I', DriveType::remote, {})});
    fs::create_directories((trash_ + "/files").toStdString());
    if (!kind.has_trash)
        std::ofstream((trash_ + "/info").toStdString()) << "in the way of a folder";
    write_files(kind);
    write_discs();
    seen_ = account();
}

SoakTree::~SoakTree()
{
    for (const QByteArray& root : roots())
        remove_all(root);
}

/// Where contents may be, each a path on disk.
QByteArrayList SoakTree::roots() const
{
    QByteArrayList roots = {disk_.root(), trash_};
    for (const QTemporaryDir* folder : {&other_volume_, &cd_, &stick_})
        roots.append(QFile::encodeName(folder->path()));
    return roots;
}

void SoakTree::write_files(const SoakTreeKind& kind) const
{
    for (const auto& files : {files_of_pop(), files_of_other_folders(), files_with_odd_names(),
                              kind.has_tiny_files ? tiny_files() : std::vector<SoakFile>(),
                              kind.has_many_files ? many_files() : std::vector<SoakFile>()}) {
        for (const SoakFile& file : files)
            disk_.write(file.path, numbered(file.content));
    }
    disk_.write(u"C:\\Odd\\empty.mp3"_s, {});
    for (const QString& folder : {u"C:\\Empty"_s, u"C:\\Pop\\new folder"_s, u"C:\\<i>MYCOMPUTER"_s})
        disk_.make_folder(folder);
    chmod(disk_.native(u"C:\\Rock\\read only.mp3"_s).constData(), 0444);
    std::error_code error;
    fs::create_symlink("track 3.mp3", disk_.native(u"C:\\Pop\\link.mp3"_s).toStdString(), error);
    fs::create_symlink("nowhere", disk_.native(u"C:\\Pop\\dangling.mp3"_s).toStdString(), error);
    fs::create_symlink(".", disk_.native(u"C:\\Odd\\loop"_s).toStdString(), error);
}

void SoakTree::write_discs() const
{
    for (const QString& name : {u"[CD][One].mp3"_s, u"track 2.mp3"_s, u"track 3.mp3"_s})
        disk_.write(u"E:\\Album\\"_s + name, numbered(tagged("CD", "Song")));
    for (const QString& folder : {u"E:\\Album"_s, u"E:"_s})
        chmod(disk_.native(folder).constData(), 0555);
    disk_.write(u"G:\\stick.mp3"_s, numbered(tagged("Stick", "Song")));
}

SoakTree::Account SoakTree::account() const
{
    Account found;
    for (const QByteArray& root : roots())
        add_to_account(found, root);
    return found;
}

void SoakTree::add_to_account(Account& account, const QByteArray& root) const
{
    std::error_code error;
    const auto options = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator entry(root.toStdString(), options, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        if (!fs::is_regular_file(entry->symlink_status(unknown)))
            continue;
        const QByteArray number = number_in(first_bytes(entry->path()));
        if (!number.isEmpty())
            account[number].emplace(QByteArray::fromStdString(entry->path().native()), last_bytes(entry->path()));
    }
}

QStringList SoakTree::look(SoakCounts& counts)
{
    Account now = account();
    QStringList lost;
    for (const auto& [number, places] : seen_) {
        const Places& places_now = now[number];
        if (places_now != places)
            count_changes(places, places_now, counts);
        if (places_now.empty() && !places.empty() && !given_up_.contains(number))
            lost.append(u"lost, last seen at "_s + QFile::decodeName(places.begin()->first));
    }
    seen_ = std::move(now);
    return lost;
}

void SoakTree::count_changes(const Places& before, const Places& now, SoakCounts& counts) const
{
    std::vector<QByteArray> gone;
    for (const auto& [path, end] : before) {
        if (!now.contains(path))
            gone.push_back(path);
    }
    for (const auto& [path, end] : now) {
        if (const auto old = before.find(path); old != before.end()) {
            if (old->second != end)
                ++counts[u"tagged"_s];
            continue;
        }
        if (std::ranges::none_of(before, [&, last = end](const auto& old) { return old.second == last; }))
            ++counts[u"tagged"_s];
        if (is_in_trash(path)) {
            ++counts[u"thrown away"_s];
        } else if (gone.empty()) {
            ++counts[u"copied"_s];
        } else {
            const bool stayed = std::ranges::any_of(
                gone, [&, place = path](const QByteArray& one) { return folder_of(one) == folder_of(place); });
            ++counts[stayed ? u"renamed"_s : u"moved"_s];
        }
        if (!gone.empty())
            gone.pop_back();
    }
}

void SoakTree::give_up(const QString& path)
{
    const QByteArray native = disk_.native(path);
    for (const auto& [number, places] : account()) {
        for (const auto& [place, end] : places) {
            if (place == native || place.startsWith(native + '/'))
                given_up_.insert(number);
        }
    }
}

int SoakTree::given_up_and_gone() const
{
    return static_cast<int>(std::ranges::count_if(given_up_, [this](const Number& number) {
        const auto found = seen_.find(number);
        return found == seen_.end() || found->second.empty();
    }));
}

bool SoakTree::is_on_other_volume(const QString& path)
{
    return path.startsWith(u"D:"_s);
}
