#include "platform/settings.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>

#include <sys/stat.h>

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

/// A store sees nothing of a file for the whole machine that has the same name.
class UserStore : public QSettings
{
public:
    explicit UserStore(const QString& application) : QSettings(IniFormat, UserScope, application)
    {
        setFallbacksEnabled(false);
    }

    /// Where the file of the store is or would be, behind all links.
    QString path() const
    {
        const QFileInfo file(fileName());
        return file.exists() ? file.canonicalFilePath() : file.filePath();
    }
};

/// Puts what stands in the file at `path`, if there is one, into `copy`; false when that can't be done whole.
bool copy_content(const QString& path, QFile& copy)
{
    QFile file(path);
    if (!file.exists())
        return true;
    const QByteArray content = file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    return file.error() == QFile::NoError && copy.write(content) == content.size() && copy.flush();
}

/// Sets one text in the store at `path`; gives whether that store held `keys` before and is whole after it. The toolkit
/// takes a file that the disk does not show for an empty store, and leaves a part of the file when the disk is full.
bool set_text(const QString& path, const QStringList& keys, const QString& key, const QString& text)
{
    QSettings store(path, QSettings::IniFormat);
    if (store.allKeys() != keys)
        return false;
    store.setValue(key, text);
    store.sync();
    QFile file(path);
    return file.open(QFile::ReadOnly) && file.readAll().endsWith('\n');
}

/// Gives the file at `path` a time after `time` if it has none; false when that can't be done. The toolkit takes a file
/// of the same length and time for the one that it has read.
bool make_later(const QString& path, const QDateTime& time)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) && (file.fileTime(QFile::FileModificationTime) > time ||
                                          file.setFileTime(time.addMSecs(1), QFile::FileModificationTime));
}

} // namespace

QString GetSetting(const QString& application, const QString& section, const QString& key, const QString& default_value)
{
    const UserStore store(application);
    return store.value(full_key(section, key), default_value).toString();
}

QString settings_file(const QString& application)
{
    return UserStore(application).path();
}

void SaveSetting(const QString& application, const QString& section, const QString& key, const QString& value)
{
    const MadeForUserAlone rights;
    const UserStore store(application);
    const QString path = store.path();
    QDir().mkpath(QFileInfo(path).path());
    // What can't be saved whole must not take the place of what is stored, so the change is made beside it.
    QTemporaryFile new_file(path + u".XXXXXX"_s);
    const bool is_saved =
        new_file.open() && copy_content(path, new_file) &&
        set_text(new_file.fileName(), store.allKeys(), full_key(section, key), value) &&
        make_later(new_file.fileName(), QFileInfo(path).lastModified()) &&
        std::rename(QFile::encodeName(new_file.fileName()).constData(), QFile::encodeName(path).constData()) == 0;
    new_file.setAutoRemove(!is_saved);
}
