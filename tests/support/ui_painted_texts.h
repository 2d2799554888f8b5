#pragma once

#include <QColor>
#include <QList>
#include <QRectF>
#include <QString>

class QWidget;

/// A text as a control paints it. Lengths are logical pixels from the control's upper left corner.
struct PaintedText
{
    QString text;
    QRectF box;            ///< what its letters need: the advance wide, ascent and descent high
    QRectF room;           ///< where the control lets them show; null for no limit of its own
    int pixels = 0;        ///< size of its font
    bool squeezed = false; ///< painted smaller or larger than its font
    QColor colour;
};

/// The texts that a control itself paints, without its children. It is painted for that, but not on the screen.
QList<PaintedText> painted_texts(QWidget& control);
