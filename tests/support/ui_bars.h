#pragma once

#include "platform/controls/PictureBox.h"
#include "platform/controls/Placed.h"
#include "platform/twips.h"

#include <QTest>
#include <QWindow>

/// A window with a bar on it: a track of 216 pixels and a knob of 16, so that a pixel of the knob's way is half a
/// percent. The track shows below the knob, and can be pressed there. The mouse is moved by hand, in pixels from the
/// track's left end.
class Bar
{
public:
    Bar()
    {
        window.setFixedSize(400, 100);
        window.show();
    }

    void press(int x, Qt::MouseButton button = Qt::LeftButton, int y = 5)
    {
        QTest::mousePress(window.windowHandle(), button, {}, origin + QPoint(x, y));
    }
    void move(int x, int y = 5) { QTest::mouseMove(window.windowHandle(), origin + QPoint(x, y)); }
    void release(int x, Qt::MouseButton button = Qt::LeftButton, int y = 5)
    {
        QTest::mouseRelease(window.windowHandle(), button, {}, origin + QPoint(x, y));
    }

    static constexpr int way = 3000;          ///< of the knob, twips
    static constexpr int below_the_knob = 13; ///< a height where the track shows at all of its length

    const QPoint origin{20, 30};
    QWidget window;
    PictureBox* const track_box = new PictureBox({}, &window);
    PictureBox* const knob_box = new PictureBox({}, track_box);
    Placed<PictureBox> track{*track_box, Place(*track_box, 300, 450, way + 240, 240)};
    Placed<PictureBox> knob{*knob_box, Place(*knob_box, 0, 0, 240, 150)};
};
