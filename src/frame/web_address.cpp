#include "frame/web_address.h"

QString web_address()
{
    return QStringLiteral(QUILMO_WEB_ADDRESS);
}
