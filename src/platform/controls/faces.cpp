#include "platform/controls/faces.h"

#include "platform/controls/palette.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int caption_pixels = 12;     ///< font size of a caption that fits
constexpr int smallest_pixels = 8;     ///< below it a caption is squeezed as a picture
constexpr double caption_margin = 5.0; ///< logical pixels left and right of a caption
constexpr double sign_share = 0.76;    ///< of the lesser side of the face
constexpr double largest_sign = 20.0;  ///< logical pixels

QColor ground(FaceState state)
{
    switch (state) {
    case FaceState::down:
        return palette::accent_dark;
    case FaceState::hover:
        return palette::accent_light;
    case FaceState::up:
        break;
    }
    return palette::accent;
}

/// How far a face's content is moved: a pressed button gives way by one pixel.
double shift(FaceState state)
{
    return state == FaceState::down ? 1.0 : 0.0;
}

void draw_ground(QPainter& painter, const QRectF& rect, FaceState state)
{
    const QRectF body = rect.adjusted(0.5, 0.5, -0.5, -0.5);
    const QColor colour = ground(state);
    QLinearGradient light(body.topLeft(), body.bottomLeft());
    light.setColorAt(0, state == FaceState::down ? colour.darker(112) : colour);
    light.setColorAt(1, state == FaceState::down ? colour : colour.darker(112));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour.darker(130), 1));
    painter.setBrush(light);
    painter.drawRoundedRect(body, palette::corner_radius, palette::corner_radius);
    if (state == FaceState::down)
        return;
    const double reach = palette::corner_radius - 1;
    painter.setPen(QPen(QColor(255, 255, 255, 70), 1));
    painter.drawLine(QPointF(body.left() + reach, body.top() + 1), QPointF(body.right() - reach, body.top() + 1));
}

/// Draws a word in the painter's font, made small enough for the whole of it.
void draw_word(QPainter& painter, const QRectF& rect, const QString& word, QFont::Weight weight,
               Qt::Alignment alignment)
{
    QFont font = painter.font();
    font.setWeight(weight);
    font.setPixelSize(caption_pixels);
    while (font.pixelSize() > smallest_pixels && QFontMetricsF(font).horizontalAdvance(word) > rect.width())
        font.setPixelSize(font.pixelSize() - 1);
    painter.setFont(font);
    const double width = QFontMetricsF(font).horizontalAdvance(word);
    if (width <= rect.width()) {
        painter.drawText(rect, static_cast<int>(alignment | Qt::TextSingleLine), word);
        return;
    }
    // Letters squeezed more in width than in height stay readable longest.
    const double across = rect.width() / width;
    const double down = std::sqrt(across);
    painter.translate(rect.topLeft());
    painter.scale(across, down);
    painter.drawText(QRectF(0, 0, width, rect.height() / down), static_cast<int>(alignment | Qt::TextSingleLine), word);
}

} // namespace

Picture button_face(const QString& caption, FaceState state, QSize size)
{
    return {size, [caption, state](QPainter& painter, const QRectF& rect) {
                painter.save();
                draw_ground(painter, rect, state);
                painter.setPen(palette::on_accent);
                const QRectF room = rect.adjusted(caption_margin, 1, -caption_margin, -1);
                draw_word(painter, room.translated(0, shift(state)), caption, QFont::Bold, Qt::AlignCenter);
                painter.restore();
            }};
}

Picture sign_face(const QString& resource, FaceState state, QSize size)
{
    const Picture sign = svg_picture(resource, size);
    return {size, [sign, state](QPainter& painter, const QRectF& rect) {
                painter.save();
                draw_ground(painter, rect, state);
                painter.restore();
                const double room = std::min(rect.width(), rect.height());
                const double side = std::min(std::floor(room * sign_share), largest_sign);
                QRectF place(0, 0, side, side);
                place.moveCenter(rect.center() + QPointF(0, shift(state)));
                sign.draw(painter, place);
            }};
}

Picture label_face(const QString& caption, QSize size)
{
    return {size, [caption](QPainter& painter, const QRectF& rect) {
                painter.save();
                painter.setPen(palette::soft_ink);
                draw_word(painter, rect, caption, QFont::Normal, Qt::AlignLeft | Qt::AlignVCenter);
                painter.restore();
            }};
}
