#include "platform/controls/StatusBar.h"

#include "platform/controls/palette.h"
#include "platform/twips.h"

#include <QAccessible>
#include <QPainter>

#include <utility>

namespace {

constexpr int bar_height = 22;
constexpr int text_margin = 8;
constexpr int notice_milliseconds = 8000;

/// A label of plain text that shows one too long for it with an ellipsis in the middle, on a ground of its own if it
/// fills its background. The mouse over it is over what lies below.
class PanelLabel : public QLabel
{
public:
    explicit PanelLabel(QWidget* parent) : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

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

void set_text(QLabel& label, const QString& text)
{
    label.setText(text);
    label.setAccessibleName(text);
}

} // namespace

StatusBar::StatusBar(std::vector<int> widths, QWidget* parent) : QWidget(parent), widths_(std::move(widths))
{
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    for (std::size_t i = 0; i < widths_.size(); ++i)
        panels_.push_back(new PanelLabel(this));
    notice_ = new PanelLabel(this);
    notice_->setAutoFillBackground(true);
    QPalette colours = notice_->palette();
    colours.setColor(QPalette::Window, palette::paper);
    notice_->setPalette(colours);
    notice_->hide();
    notice_time_ = new QTimer(this);
    notice_time_->setSingleShot(true);
    notice_time_->setInterval(notice_milliseconds);
    connect(notice_time_, &QTimer::timeout, notice_, &QWidget::hide);
    resize(StatusBar::sizeHint());
}

QString StatusBar::panel_text(int index) const
{
    return panel(index)->text();
}

void StatusBar::set_panel_text(int index, const QString& text)
{
    set_text(*panel(index), text);
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

void StatusBar::show_notice(const QString& text)
{
    set_text(*notice_, text);
    notice_->show();
    notice_time_->start();
    QAccessibleEvent alert(notice_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QString StatusBar::notice() const
{
    return notice_->isHidden() ? QString() : notice_->text();
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
    notice_->setGeometry(0, 1, width(), height() - 1);
    update();
}
