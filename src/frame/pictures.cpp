#include "frame/pictures.h"

#include "platform/controls/palette.h"

#include <QPainter>

namespace {

constexpr double half_line = 0.5;
constexpr double groove_height = 4;
constexpr double knob_margin = 1.5;

void draw_rounded(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QPen& pen)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(pen);
    painter.drawRoundedRect(rect, radius, radius);
}

} // namespace

Picture panel_picture(double left_space, double right_space)
{
    return {{}, [left_space, right_space](QPainter& painter, const QRectF& rect) {
                const QRectF body =
                    rect.adjusted(left_space + half_line, half_line, -right_space - half_line, -half_line);
                draw_rounded(painter, body, palette::corner_radius, palette::panel_dark, QPen(palette::line, 1));
            }};
}

Picture groove_picture()
{
    return {{}, [](QPainter& painter, const QRectF& rect) {
                const QRectF groove(rect.left() + half_line, rect.center().y() - groove_height / 2,
                                    rect.width() - 2 * half_line, groove_height);
                draw_rounded(painter, groove, groove_height / 2, palette::paper, QPen(palette::line, 1));
            }};
}

Picture knob_picture()
{
    return {{}, [](QPainter& painter, const QRectF& rect) {
                const double side = qMin(rect.width(), rect.height()) - 2 * knob_margin;
                QRectF disc(0, 0, side, side);
                disc.moveCenter(rect.center());
                draw_rounded(painter, disc, side / 2, palette::paper, QPen(palette::accent, 2));
            }};
}

Picture splitter_picture()
{
    return {{}, [](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, palette::accent); }};
}
