#include "platform/settings.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// As long as it lives, whatever the program makes on the disk is for nobody but the user, what the toolkit makes on
/// the way included.
class MadeForUserAlone
{
public:
    MadeForUserAlone() : mask_before_(umask(S_IRWXG | S_IRWXO)) {}
    ~MadeForUserAlone() { umask(mask_before_); }
    MadeForUserAlone(const MadeForUserAlone&) = delete;
    MadeForUserAlone& operator=(const MadeForUserAlone&) = delete;

private:
    mode_t mask_before_;
};

QString full_key(const QString& section, const QString& key)
{
    return section + u'/' + key;
}

/// How many texts stand in the file of a store, each on a line of its own; none when it can't be read or breaks off.
qsizetype texts_in(const QString& path)
{
    QFile file(path);
    const QByteArray content = file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    return content.endsWith('\n')
               ? std::ranges::count_if(content.split('\n'), [](const QByteArray& line) { return line.contains('='); })
               : 0;
}

/// Whether there are really no settings in a store in which the toolkit sees none: to it, a store that the disk does
/// not show at once is none, and stays none. A copy of it, made at `copy_path`, tells.
bool has_no_settings(const QString& path, const QString& copy_path)
{
    return QFile::copy(path, copy_path) && QSettings(copy_path, QSettings::IniFormat).allKeys().isEmpty();
}

} // namespace

QString GetSetting(const QString& application, const QString& section, const QString& key, const QString& default_value)
{
    QSettings store(QSettings::IniFormat, QSettings::UserScope, application);
    // Otherwise a file of the same name for the whole machine would stand in for what the user has not stored.
    store.setFallbacksEnabled(false);
    return store.value(full_key(section, key), default_value).toString();
}

void SaveSetting(const QString& application, const QString& section, const QString& key, const QString& value)
{
    const MadeForUserAlone rights;
    QSettings store(QSettings::IniFormat, QSettings::UserScope, application);
    store.setFallbacksEnabled(false);
    const QStringList keys = store.allKeys();
    if (store.status() == QSettings::AccessError)
        return;
    // It also puts what it could not write in the place of the old store, so that is made and looked at beside it.
    const QFileInfo present(store.fileName());
    const QString path = present.exists() ? present.canonicalFilePath() : present.filePath();
    const QString new_path = path + u".new"_s;
    QFile::remove(new_path);
    const bool may_be_hidden = store.status() == QSettings::NoError && keys.isEmpty() && texts_in(path) > 0;
    const bool is_hidden = may_be_hidden && !has_no_settings(path, new_path);
    QFile::remove(new_path);
    if (is_hidden)
        return;
    QSettings new_store(new_path, QSettings::IniFormat);
    for (const QString& stored : keys)
        new_store.setValue(stored, store.value(stored));
    new_store.setValue(full_key(section, key), value);
    new_store.sync();
    const bool is_whole = texts_in(new_path) == new_store.allKeys().size();
    if (!is_whole || std::rename(QFile::encodeName(new_path).constData(), QFile::encodeName(path).constData()) != 0)
        QFile::remove(new_path);
}
