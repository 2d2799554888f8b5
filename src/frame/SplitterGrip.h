#pragma once

#include <QWidget>

/// The invisible strip between two panes that a person grabs.
class SplitterGrip : public QWidget
{
    Q_OBJECT

public:
    explicit SplitterGrip(QWidget* parent);

Q_SIGNALS:
    void MouseDown();
    void MouseMove(float x); ///< twips from the strip's left edge, also while the mouse is held outside of it
    void MouseUp();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};
