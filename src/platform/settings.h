#pragma once

#include <QString>

// Per-user texts by application, section and key.

/// The stored text, or `default_value` where there is none or the store can't be read.
QString GetSetting(const QString& application, const QString& section, const QString& key,
                   const QString& default_value);

/// Where the texts of an application are stored or would be.
QString settings_file(const QString& application);

/// Stores a text, where only the user can read it. A store that can't be written is passed over in silence.
void SaveSetting(const QString& application, const QString& section, const QString& key, const QString& value);
