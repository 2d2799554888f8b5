#include "platform/settings.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <sys/stat.h>

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
    // What is written takes over the rights of the store that it replaces.
    if (QFileInfo(store.fileName()).isFile())
        QFile::setPermissions(store.fileName(), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    store.setValue(full_key(section, key), value);
    store.sync();
}
