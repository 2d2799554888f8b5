#pragma once

#include <QString>
#include <QUrl>

#include <functional>

/// Hands a web address to the user's browser. Whether there is one is not looked at.
void ShellExecuteA(const QString& address);

/// What opens an address; gives whether something did. Tests put a double in place of the desktop's; an empty opener
/// brings that back.
using AddressOpener = std::function<bool(const QUrl& address)>;
void set_address_opener(AddressOpener opener);
