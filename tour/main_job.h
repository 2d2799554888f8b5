#pragma once

#include "Album.h"

#include <QWidget>

/// Drives the main job in the main window by input events and takes a picture after each step. Every form is on one of
/// them.
void play_main_job(QWidget& form, Album& album);
