#include "frame/WebLink.h"

#include "platform/controls/fonts.h"
#include "platform/controls/palette.h"
#include "platform/numbers.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

// Colours are 24-bit numbers in blue-green-red order.
constexpr i32 colour_at_rest = 0xF24A38;
constexpr i32 colour_under_mouse = 0xFF8000;

constexpr QRgb dark_ground = 0xFF0A0D14;
constexpr QMargins margins(6, 3, 6, 3);

constexpr QRgb rgb_of(i32 colour)
{
    return qRgb(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16);
}

QFont link_font()
{
    QFont font = form_font();
    font.setFamilies(QStringList{u"Trebuchet MS"_s, u"Fira Sans"_s, u"Ubuntu"_s} + font.families());
    font.setUnderline(true);
    return font;
}

/// What assistive programs see of a link: its text, and that it can be pressed.
class AccessibleLink : public QAccessibleWidget
{
public:
    explicit AccessibleLink(WebLink& link) : QAccessibleWidget(&link, QAccessible::Link), link_(link) {}

    QString text(QAccessible::Text which) const override
    {
        const QString text = QAccessibleWidget::text(which);
        return text.isEmpty() && which == QAccessible::Name ? link_.text() : text;
    }

    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }

    void doAction(const QString& action) override
    {
        if (action == pressAction())
            link_.click();
        else
            QAccessibleWidget::doAction(action);
    }

private:
    WebLink& link_;
};

QAccessibleInterface* make_accessible_link(const QString& /*class_name*/, QObject* object)
{
    auto* const link = qobject_cast<WebLink*>(object);
    return link != nullptr ? new AccessibleLink(*link) : nullptr;
}

} // namespace

WebLink::WebLink(const QString& text, QWidget* parent) : QAbstractButton(parent)
{
    QAccessible::installFactory(make_accessible_link); // once; more calls change nothing
    setText(text);
    setFont(link_font());
    setMouseTracking(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void WebLink::light()
{
    set_lit(true);
}

void WebLink::put_out()
{
    set_lit(false);
}

QColor WebLink::ForeColor() const
{
    return {rgb_of(lit_ ? colour_under_mouse : colour_at_rest)};
}

QColor WebLink::BackColor() const
{
    return lit_ ? QColor(dark_ground) : palette::paper;
}

QSize WebLink::sizeHint() const
{
    const QFontMetrics metrics(font());
    return QSize(metrics.horizontalAdvance(text()), metrics.height()).grownBy(margins);
}

void WebLink::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(BackColor());
    painter.setPen(QPen(hasFocus() ? palette::accent : BackColor(), palette::stroke));
    constexpr double inset = palette::stroke / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), palette::corner_radius,
                            palette::corner_radius);
    painter.setPen(ForeColor());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
}

// The toolkit goes on sending the mouse here while a button is held. Outside, the link doesn't see it.
void WebLink::mouseMoveEvent(QMouseEvent* event)
{
    if (rect().contains(event->position().toPoint()))
        light();
    QAbstractButton::mouseMoveEvent(event);
    event->accept();
}

// A double click is one press: its second half opens nothing.
void WebLink::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
}

void WebLink::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QAbstractButton::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        click();
}

void WebLink::focusInEvent(QFocusEvent* event)
{
    QAbstractButton::focusInEvent(event);
    light();
}

void WebLink::focusOutEvent(QFocusEvent* event)
{
    QAbstractButton::focusOutEvent(event);
    put_out();
}

void WebLink::set_lit(bool lit)
{
    lit_ = lit;
    update();
}
