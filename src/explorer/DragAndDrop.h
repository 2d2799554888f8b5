#pragma once

#include "explorer/Panes.h"

#include <QMimeData>
#include <QObject>
#include <QPoint>
#include <QPointer>

/// Moves on disk what is dragged onto a folder of the tree: a folder of the tree, or the selected rows of the file
/// list. The list takes no drops, and what comes from other programs has no effect. Other programs are offered the
/// files for copying.
class DragAndDrop : public QObject
{
    Q_OBJECT

public:
    /// Answers the drag events of both panes.
    explicit DragAndDrop(const Panes& panes, QObject* parent = nullptr);

private:
    void tree_MouseDown(QPoint point) const;
    void tree_OLEStartDrag(QMimeData& data);
    void list_OLEStartDrag(QMimeData& data);
    void OLEDragOver(const QMimeData& data, QPoint point) const;
    void OLEDragDrop(const QMimeData& data, QPoint point);
    void drop_on(TreeNode* target, const QMimeData& data);
    void move_folder() const;
    void move_files(const QMimeData& data) const;

    Panes panes_;
    QPointer<const QMimeData> dragged_; ///< what the program's own drag carries; null once it is dropped here
};
