#pragma once

#include <QWidget>

/// The invisible strip between two panes that a person grabs. It can be reached by the tab key and shows then; the
/// Left and Right keys move it.
class SplitterGrip : public QWidget
{
    Q_OBJECT

public:
    explicit SplitterGrip(QWidget* parent);

Q_SIGNALS:
    void MouseDown();
    void MouseMove(float x); ///< twips from the strip's left edge, also while the mouse is held outside of it
    void MouseUp();
    void KeyDown(int direction); ///< -1 to the left, 1 to the right

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};
