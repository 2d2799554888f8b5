#include "platform/controls/drag.h"

#include "platform/controls/palette.h"

#include <QDrag>
#include <QIcon>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QWidget>

#include <utility>

namespace {

constexpr int longest_text = 240; ///< logical pixels
constexpr int icon_side = 16;
constexpr int margin = 5;
constexpr int hot_spot = -12; ///< the picture stands beside the mouse, so that the target stays in sight

DragRunner& drag_runner()
{
    static DragRunner runner;
    return runner;
}

} // namespace

void run_drag(QWidget& source, std::unique_ptr<QMimeData> data, const QPixmap& picture)
{
    const QPointer<QDrag> drag = new QDrag(&source);
    drag->setMimeData(data.release());
    drag->setPixmap(picture);
    drag->setHotSpot(QPoint(hot_spot, hot_spot));
    if (!drag_runner()) {
        // The toolkit deletes it in its time: another program fetches the data after the drop.
        drag->exec(Qt::CopyAction);
        return;
    }
    drag_runner()(*drag);
    if (!drag.isNull())
        drag->deleteLater();
}

QPixmap drag_picture(const QWidget& source, const QIcon& icon, const QString& text)
{
    const QFontMetrics metrics = source.fontMetrics();
    const QString shown = metrics.elidedText(text, Qt::ElideMiddle, longest_text);
    const int text_left = icon.isNull() ? margin : margin + icon_side + margin;
    const QSize size(text_left + metrics.horizontalAdvance(shown) + margin,
                     std::max(icon_side, metrics.height()) + 2 * margin);

    const qreal ratio = source.devicePixelRatioF();
    QPixmap picture((QSizeF(size) * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette::accent, palette::stroke));
    painter.setBrush(palette::paper);
    painter.drawRoundedRect(QRectF(QPointF(), size).adjusted(1, 1, -1, -1), palette::corner_radius,
                            palette::corner_radius);
    icon.paint(&painter, margin, (size.height() - icon_side) / 2, icon_side, icon_side);
    painter.setFont(source.font());
    painter.setPen(palette::ink);
    painter.drawText(QRect(text_left, 0, size.width() - text_left, size.height()),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
    return picture;
}

void set_drag_runner(DragRunner runner)
{
    drag_runner() = std::move(runner);
}
