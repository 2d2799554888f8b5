#include "platform/controls/ShellExecute.h"

#include <QDesktopServices>

namespace {

AddressOpener& address_opener()
{
    static AddressOpener opener;
    return opener;
}

} // namespace

void ShellExecuteA(const QString& address)
{
    const QUrl url(address);
    if (address_opener())
        address_opener()(url);
    else
        QDesktopServices::openUrl(url);
}

void set_address_opener(AddressOpener opener)
{
    address_opener() = std::move(opener);
}
