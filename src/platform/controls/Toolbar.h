#pragma once

#include "platform/controls/ImageList.h"

#include <QToolBar>

/// A toolbar whose buttons have a key and an index from 1; separators take an index as well.
class Toolbar : public QToolBar
{
    Q_OBJECT

public:
    explicit Toolbar(QWidget* parent = nullptr);

    void Add(const QString& key, const QIcon& icon, const QString& tip);
    void AddSeparator();
    /// The action of a key; nullptr for none.
    QAction* button(const QString& key) const;
    /// The action at an index from 1, separators counted; nullptr for none.
    QAction* button(int index) const;

Q_SIGNALS:
    void ButtonClick(const QString& key);
    void MouseMove();

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
};
