#include "platform/settings.h"

#include <QFile>
#include <QSettings>

namespace {

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
    QSettings store(QSettings::IniFormat, QSettings::UserScope, application);
    store.setValue(full_key(section, key), value);
    store.sync();
    if (store.status() == QSettings::NoError)
        QFile::setPermissions(store.fileName(), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}
