#pragma once

#include <QIcon>
#include <QPainter>
#include <QSize>
#include <QString>

#include <functional>

/// A picture that is drawn anew at whatever pixel ratio it is shown, so that it is crisp on every screen.
struct Picture
{
    QSize size;                                         ///< natural size, logical pixels
    std::function<void(QPainter&, const QRectF&)> draw; ///< fills the rectangle; empty for no picture

    bool is_empty() const { return !draw; }
};

/// The SVG drawing at `resource` (such as ":/icons/folder.svg").
Picture svg_picture(const QString& resource, QSize size);

/// A picture as an icon, drawn at the size and pixel ratio that a view asks for.
QIcon icon_of(const Picture& picture);

/// An icon as a picture of that natural size.
Picture picture_of(const QIcon& icon, QSize size);
