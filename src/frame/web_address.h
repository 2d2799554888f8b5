#pragma once

#include <QString>

/// Address of the maker's page on the web, as the build was given it.
QString web_address();
