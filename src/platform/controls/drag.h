#pragma once

#include <QPixmap>
#include <QString>

#include <functional>
#include <memory>

class QDrag;
class QIcon;
class QMimeData;
class QWidget;

/// Drags `data` from `source` until it is dropped or given up. Copying is all that is offered: a file dropped on
/// another program stays where it is.
void run_drag(QWidget& source, std::unique_ptr<QMimeData> data, const QPixmap& picture);

/// What is shown at the mouse meanwhile: a picture, if there is one, and a short text, as crisp as `source` is.
QPixmap drag_picture(const QWidget& source, const QIcon& icon, const QString& text);

/// Tests put a double in place of the platform's drag; an empty runner brings that back.
using DragRunner = std::function<void(QDrag& drag)>;
void set_drag_runner(DragRunner runner);
