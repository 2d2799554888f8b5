#pragma once

#include "explorer/FileList.h"
#include "platform/controls/ListView.h"
#include "platform/controls/StatusBar.h"
#include "selection/Picks.h"

/// The file list with what stands round it, on the screen.
class FilePanel
{
public:
    FilePanel();

    ListView list;
    StatusBar bar{{1000, 1000, 1000}};
    Picks picks;
    FileList files;
};
