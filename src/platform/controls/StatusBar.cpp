#include "platform/controls/StatusBar.h"

#include "platform/controls/palette.h"
#include "platform/twips.h"

#include <QPainter>

#include <utility>

namespace {

constexpr int bar_height = 22;
constexpr int text_margin = 8;

/// A label that shows a text too long for it with an ellipsis in the middle.
class PanelLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        const QRect room = rect().adjusted(text_margin, 0, -text_margin, 0);
        painter.setPen(palette::ink);
        painter.drawText(room, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine),
                         fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width()));
    }
};

} // namespace

StatusBar::StatusBar(std::vector<int> widths, QWidget* parent) : QWidget(parent), widths_(std::move(widths))
{
    setMouseTracking(true);
    for (std::size_t i = 0; i < widths_.size(); ++i) {
        auto* label = new PanelLabel(this);
        label->setTextFormat(Qt::PlainText);
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        panels_.push_back(label);
    }
    resize(StatusBar::sizeHint());
}

QString StatusBar::panel_text(int index) const
{
    return panel(index)->text();
}

void StatusBar::set_panel_text(int index, const QString& text)
{
    panel(index)->setText(text);
    panel(index)->setAccessibleName(text);
}

int StatusBar::panel_width(int index) const
{
    return widths_.at(static_cast<std::size_t>(index) - 1);
}

void StatusBar::set_panel_width(int index, int twips)
{
    widths_.at(static_cast<std::size_t>(index) - 1) = twips;
    place_panels();
}

QSize StatusBar::sizeHint() const
{
    int twips = 0;
    for (const int width : widths_)
        twips += width;
    return {to_pixels(twips), bar_height};
}

void StatusBar::mouseMoveEvent(QMouseEvent* /*event*/)
{
    Q_EMIT MouseMove();
}

void StatusBar::resizeEvent(QResizeEvent* /*event*/)
{
    place_panels();
}

void StatusBar::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette::panel_dark);
    painter.fillRect(QRect(0, 0, width(), 1), palette::line);
    for (std::size_t i = 1; i < panels_.size(); ++i)
        painter.fillRect(QRect(panels_[i]->x() - 1, 4, 1, height() - 7), palette::line);
}

QLabel* StatusBar::panel(int index) const
{
    return panels_.at(static_cast<std::size_t>(index) - 1);
}

void StatusBar::place_panels()
{
    int twips = 0;
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        const int left = to_pixels(twips);
        twips += widths_[i];
        const int right = i + 1 == panels_.size() ? width() : to_pixels(twips) - 1;
        panels_[i]->setGeometry(left, 1, qMax(0, right - left), height() - 1);
    }
    update();
}
