#pragma once

#include "platform/controls/Picture.h"
#include "platform/numbers.h"

#include <QAbstractButton>

/// The one button of all forms: it shows one of three pictures. It never lights itself under the mouse: the forms tell
/// it by SetMoveImg and DelMoveImg. A press that slides off and ends elsewhere leaves the pressed picture until the
/// next event that changes it. Its size is that of the picture at rest. Without an accessible name of its own it takes
/// its tool tip for one.
class UsrButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit UsrButton(QWidget* parent = nullptr);

    const Picture& PictureUp() const { return up_; }
    void set_PictureUp(const Picture& picture); ///< also gives the button its size, unless the picture is empty
    const Picture& PictureDn() const { return down_; }
    void set_PictureDn(const Picture& picture);
    const Picture& PictureMove() const { return move_; }
    void set_PictureMove(const Picture& picture);
    /// The three faces of a caption or of a sign at once.
    void set_faces(const Picture& up, const Picture& down, const Picture& move);

    void SetMoveImg(); ///< shows the mouse-over picture
    void DelMoveImg(); ///< shows the picture at rest

    /// The picture shown now.
    enum class Shown
    {
        up,
        down,
        move
    };
    Shown shown() const { return shown_; }

    /// Whether a mouse press that began on the button lasts, by whatever button of the mouse; also after it slid off. A
    /// button that is hidden, disabled or behind a dialog is not held.
    bool is_held() const { return held_ != Qt::NoButton; }

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The left button was pressed and released inside, or the space bar pressed. The pressed picture is on the screen
    /// until all handlers have returned.
    void Click();
    /// The second press of a double click, in place of its MouseDown and Click; the picture is as with Click.
    void DblClick();
    /// Numbers as in mouse.h; x and y in twips from the button's upper left corner. Only what happens inside is told.
    void MouseDown(i16 button, i16 shift, float x, float y);
    void MouseMove(i16 button, i16 shift, float x, float y);
    void MouseUp(i16 button, i16 shift, float x, float y);
    /// The focus came from or went to another control. A window or menu that opens, such as a message box of the Click
    /// handler, only borrows it, and the picture stays as it is.
    void GotFocus();
    void LostFocus();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void show_picture(Shown which);
    const Picture& shown_picture() const;
    void run_click();
    void run_pressed(void (UsrButton::*handlers)());
    void follow_tool_tip();

    Picture up_;
    Picture down_;
    Picture move_;
    Shown shown_ = Shown::up;
    Qt::MouseButtons held_;   ///< the mouse buttons whose press began here and lasts
    bool left_press_ = false; ///< a press of the left button that may become a Click
    QString told_tip_;        ///< the tool tip last taken for the accessible name
};
