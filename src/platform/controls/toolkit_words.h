#pragma once

#include <QLibraryInfo>
#include <QString>

/// Gives the toolkit's own texts, such as those of its file dialog, in the program's language, or in English where
/// `folder` holds no translation.
void translate_toolkit(const QString& folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath));
