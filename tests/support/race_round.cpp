#include "race_round.h"

#include "race_files.h"

#include <QFile>

#include <filesystem>
#include <fstream>
#include <sstream>

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

fs::path trash()
{
    return qgetenv("XDG_DATA_HOME").toStdString() + "/Trash";
}

} // namespace

RacePerson::Overwrite RacePerson::ask_overwrite(const FileFacts& /*source*/, const FileFacts& target)
{
    if (random_() % 2 == 0)
        return Overwrite::no;
    given_up.insert(static_cast<int>(target.size - race_file_size(0)));
    ++overwritten;
    return Overwrite::yes;
}

RacePerson::OnError RacePerson::ask_error(const QString& /*path*/, const QString& /*reason*/, bool /*more_follow*/)
{
    ++errors;
    return OnError::skip;
}

bool RacePerson::ask_trash(const QStringList& /*paths*/)
{
    return true;
}

bool RacePerson::ask_delete(const QStringList& /*paths*/)
{
    return false;
}

void RacePerson::progress(const FileProgress& /*progress*/) {}

RaceRound::RaceRound(const Field& field, unsigned seed)
    : person(seed), field_(field), random_(seed), racer_(job(field, seed))
{
}

RacerJob RaceRound::job(const Field& field, unsigned seed)
{
    fs::remove_all(trash());
    RacerJob racing = {.acts = field.acts, .folders = {}, .names = {}, .seed = seed + 1};
    for (const QString& folder : field.folders) {
        disks.make_folder(folder);
        racing.folders.append(disks.native(folder));
    }
    for (const QString& name : field.names) {
        const int number = static_cast<int>(racing.names.size());
        racing.names.append(name.toUtf8());
        if (number >= field.names.size() - field.free_names)
            continue;
        numbers_.insert(number);
        disks.write(field.folders.first() + u'\\' + name, race_file(number));
    }
    return racing;
}

QStringList RaceRound::end()
{
    if (!racer_.stop())
        faults_.append(u"the racer did not end in order"_s);
    numbers_.insert(racer_.made().begin(), racer_.made().end());
    look_below(disks.root());
    look_below(disks.native(u"D:\\"_s));
    look_below(QByteArray::fromStdString((trash() / "files").string()));
    for (const int number : numbers_) {
        const bool may_be_lost = racer_.destroyed().contains(number) || person.given_up.contains(number);
        if (!may_be_lost && !whole_.contains(number))
            faults_.append(u"file %1 is lost"_s.arg(number));
    }
    return faults_;
}

void RaceRound::look_below(const QByteArray& native)
{
    if (!fs::exists(native.toStdString()))
        return;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(native.toStdString())) {
        const fs::file_type type = entry.symlink_status().type();
        if (type == fs::file_type::regular || type == fs::file_type::directory)
            fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add);
        if (type == fs::file_type::regular)
            look_at(QByteArray::fromStdString(entry.path().string()));
    }
}

void RaceRound::look_at(const QByteArray& native)
{
    std::ifstream file(native.toStdString(), std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    const QByteArray content = QByteArray::fromStdString(bytes.str());
    const int number = race_number(std::string_view(content.constData(), static_cast<std::size_t>(content.size())));
    const bool is_cut = number < 0 ? content.size() < race_head : racer_.destroyed().contains(number);
    if (is_cut)
        return;
    QByteArray fault = number < 0 ? QByteArray("is no race file") : race_fault(number, content);
    if (tags_of_racer_stay && racer_.made().contains(number) && content != race_file(number))
        fault = "has another tag";
    if (fault.isEmpty())
        whole_.insert(number);
    else
        faults_.append(QFile::decodeName(native) + u' ' + QString::fromLatin1(fault));
}

int open_descriptors()
{
    int count = 0;
    for ([[maybe_unused]] const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}
