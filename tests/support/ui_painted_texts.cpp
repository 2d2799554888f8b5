#include "ui_painted_texts.h"

#include <QFontInfo>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace {

bool is_one(double factor)
{
    return std::abs(factor - 1) < 0.001;
}

/// Notes the texts that are painted with it and nothing else.
class TextNotes : public QPaintEngine
{
public:
    TextNotes() : QPaintEngine(AllFeatures) {}

    QList<PaintedText> texts;

    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    Type type() const override { return User; }
    void drawPath(const QPainterPath& /*path*/) override {}
    void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
    void drawPolygon(const QPoint* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
    void drawPixmap(const QRectF& /*place*/, const QPixmap& /*pixmap*/, const QRectF& /*part*/) override {}
    void drawTiledPixmap(const QRectF& /*place*/, const QPixmap& /*pixmap*/, const QPointF& /*start*/) override {}
    void drawImage(const QRectF& /*place*/, const QImage& /*image*/, const QRectF& /*part*/,
                   Qt::ImageConversionFlags /*flags*/) override
    {
    }

    void drawTextItem(const QPointF& start, const QTextItem& item) override
    {
        const QTransform place = state->transform();
        const QRectF box(start.x(), start.y() - item.ascent(), item.width(), item.ascent() + item.descent());
        const QPainter& painter = *this->painter();
        const PaintedText text = {.text = item.text(),
                                  .box = place.mapRect(box),
                                  .room = painter.hasClipping() ? place.mapRect(painter.clipBoundingRect()) : QRectF(),
                                  .pixels = QFontInfo(item.font()).pixelSize(),
                                  .squeezed = !is_one(place.m11()) || !is_one(place.m22()),
                                  .colour = state->pen().color()};
        const double base_line = place.map(start).y();
        if (!texts.isEmpty() && is_one(1 + base_line - last_base_line_) && goes_on(texts.last(), text))
            join(texts.last(), text);
        else
            texts.append(text);
        last_base_line_ = base_line;
    }

private:
    /// Whether a text follows another without a gap: it changes its font or its script, or it underlines a letter.
    static bool goes_on(const PaintedText& one, const PaintedText& next)
    {
        return std::abs(next.box.left() - one.box.right()) < 1 && next.room == one.room && next.colour == one.colour;
    }

    static void join(PaintedText& one, const PaintedText& next)
    {
        one.text += next.text;
        one.box |= next.box;
        one.pixels = std::min(one.pixels, next.pixels);
        one.squeezed = one.squeezed || next.squeezed;
    }

    double last_base_line_ = 0;
};

/// A sheet of which only the texts are noted.
class TextSheet : public QPaintDevice
{
public:
    explicit TextSheet(QSize size) : size_(size) {}

    QPaintEngine* paintEngine() const override { return &notes_; }
    const QList<PaintedText>& texts() const { return notes_.texts; }

protected:
    int metric(PaintDeviceMetric which) const override
    {
        constexpr int dots_per_inch = 96;
        switch (which) {
        case PdmWidth:
            return size_.width();
        case PdmHeight:
            return size_.height();
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return dots_per_inch;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return 0;
        }
    }

private:
    QSize size_;
    mutable TextNotes notes_;
};

} // namespace

QList<PaintedText> painted_texts(QWidget& control)
{
    TextSheet sheet(control.size());
    control.render(&sheet, {}, {}, {});
    return sheet.texts();
}
