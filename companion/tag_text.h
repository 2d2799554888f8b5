#pragma once

#include <QByteArray>
#include <QJsonObject>

/// What a tag that takes the place of the last 128 bytes `before` changes, as a line of output says it, such as
/// artist "Ann" -> "Bob".
QByteArray tag_change_text(const QByteArray& before, const QByteArray& after);

/// All fields of a tag of 128 bytes as a line of output says them.
QByteArray tag_fields_text(const QByteArray& block);

/// The fields of a tag of 128 bytes up to their first NULs; empty for bytes that are no tag.
QJsonObject tag_object(const QByteArray& block);
