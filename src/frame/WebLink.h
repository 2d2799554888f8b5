#pragma once

#include <QAbstractButton>

/// A link that is lit under the mouse and while the keys go to it. It never puts itself out under the mouse: the form
/// does that. The space bar, Enter and a click press it, which raises `clicked`; a click leaves the focus where it is.
class WebLink : public QAbstractButton
{
    Q_OBJECT

public:
    WebLink(const QString& text, QWidget* parent);

    void light();
    void put_out();
    bool is_lit() const { return lit_; }
    /// The colour of the text, by whether the link is lit.
    QColor ForeColor() const;
    /// What the text stands on, by whether the link is lit: the colour at rest goes with paper, the other with a dark
    /// ground of its own.
    QColor BackColor() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void set_lit(bool lit);

    bool lit_ = false;
};
