#include "platform/controls/Picture.h"

#include "platform/controls/palette.h"

#include <QIconEngine>
#include <QPixmap>
#include <QSvgRenderer>

#include <cmath>
#include <map>
#include <memory>
#include <tuple>
#include <utility>

// Outside any namespace, as the resource macro asks for.
static void load_resources()
{
    Q_INIT_RESOURCE(quilmo);
}

namespace {

constexpr double disabled_opacity = 0.4;
constexpr double plate_radius = 0.2; ///< share of the plate's width

/// The ground of an icon in a selected row, where the colour of the selection would swallow it.
void draw_plate(QPainter& painter, const QRectF& rect)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette::paper);
    painter.drawRoundedRect(rect, rect.width() * plate_radius, rect.width() * plate_radius);
}

/// An SVG drawing that is read when it is drawn first.
class SvgDrawing
{
public:
    explicit SvgDrawing(QString resource) : resource_(std::move(resource)) {}

    void draw(QPainter& painter, const QRectF& rect)
    {
        if (!renderer_) {
            renderer_ = std::make_unique<QSvgRenderer>(resource_);
            renderer_->setAspectRatioMode(Qt::KeepAspectRatio);
        }
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        renderer_->render(&painter, rect);
        painter.restore();
    }

private:
    QString resource_;
    std::unique_ptr<QSvgRenderer> renderer_;
};

/// Draws a picture at any size; keeps what it has drawn, since lists ask for the same icon in every row.
class PictureIconEngine : public QIconEngine
{
public:
    explicit PictureIconEngine(Picture picture) : picture_(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const double ratio = painter->device()->devicePixelRatioF();
        const QSize pixels(static_cast<int>(std::lround(rect.width() * ratio)),
                           static_cast<int>(std::lround(rect.height() * ratio)));
        painter->drawPixmap(rect, drawn(pixels, mode));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override { return drawn(size, mode); }

    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return picture_.size.scaled(size, Qt::KeepAspectRatio);
    }

    QIconEngine* clone() const override { return new PictureIconEngine(picture_); }
    QString key() const override { return QStringLiteral("quilmo"); }
    bool isNull() override { return picture_.is_empty(); }

private:
    QPixmap drawn(const QSize& pixels, QIcon::Mode mode)
    {
        QPixmap& kept = drawn_[{pixels.width(), pixels.height(), mode}];
        if (kept.isNull() && !pixels.isEmpty()) {
            kept = QPixmap(pixels);
            kept.fill(Qt::transparent);
            QPainter painter(&kept);
            draw(painter, QRectF(QPointF(), pixels), mode);
        }
        return kept;
    }

    void draw(QPainter& painter, const QRectF& rect, QIcon::Mode mode) const
    {
        if (picture_.is_empty())
            return;
        QRectF place(QPointF(), QSizeF(picture_.size).scaled(rect.size(), Qt::KeepAspectRatio));
        place.moveCenter(rect.center());
        if (mode == QIcon::Selected)
            draw_plate(painter, place);
        painter.setOpacity(mode == QIcon::Disabled ? disabled_opacity : 1.0);
        picture_.draw(painter, place);
    }

    Picture picture_;
    std::map<std::tuple<int, int, QIcon::Mode>, QPixmap> drawn_;
};

} // namespace

Picture svg_picture(const QString& resource, QSize size)
{
    load_resources();
    const auto drawing = std::make_shared<SvgDrawing>(resource);
    return {size, [drawing](QPainter& painter, const QRectF& rect) { drawing->draw(painter, rect); }};
}

QIcon icon_of(const Picture& picture)
{
    return QIcon(new PictureIconEngine(picture));
}

Picture picture_of(const QIcon& icon, QSize size)
{
    return {size, [icon](QPainter& painter, const QRectF& rect) { icon.paint(&painter, rect.toAlignedRect()); }};
}
