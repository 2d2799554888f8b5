#pragma once

#include "platform/controls/Placed.h"
#include "platform/controls/TextBox.h"

#include <QObject>
#include <QTimer>

/// The title of the track, `shared.scroll_title`, in its text box: one that fits stands in the middle, a longer one
/// turns through the box, a character at a time, until a title that fits is laid out.
class TitleScroller : public QObject
{
    Q_OBJECT

public:
    /// Box, timer and form live as long as the scroller. Lengths of text are those of the form's font.
    TitleScroller(Placed<TextBox>& box, QTimer& timer, const QWidget& form, QObject* parent = nullptr);

    /// Sets the timer, which stays off, and gives the box the height of a line.
    void prepare();
    /// Shows a new title, or begins to turn it with a lead of blanks. The fit is not worked out again until the next
    /// call, even if the box changes its size.
    void lay_out();

private:
    void turn();

    Placed<TextBox>& box_;
    QTimer& timer_;
    const QWidget& form_;
};
