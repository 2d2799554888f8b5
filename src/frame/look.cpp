#include "frame/look.h"

#include "platform/controls/Picture.h"
#include "platform/controls/fonts.h"
#include "platform/controls/palette.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QToolButton>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize icon_size(64, 64);
constexpr int small_icon = 24; ///< pixels up to which the icon is drawn with fewer and stronger lines
constexpr QSize box_icon_size(32, 32);
constexpr QSize bar_icon_size(16, 16);
constexpr int row_space = 4;     ///< logical pixels that a row of a list is higher than its text
constexpr int header_space = 6;  ///< likewise of a list's header
constexpr int header_margin = 3; ///< left and right of a header's text, as in the cells below it
constexpr int header_line_inset = 5;

/// The toolkit's plain style made flat and quiet: bars and headers in one colour, more air between rows, clear frames
/// round check boxes, a paler selection in the pane that the keys don't go to, and the program's own signs in boxes.
class ProgramStyle : public QProxyStyle
{
public:
    ProgramStyle() : QProxyStyle(u"Fusion"_s) {}

    QIcon standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override
    {
        switch (which) {
        case SP_MessageBoxInformation:
            return box_icon(u"information"_s);
        case SP_MessageBoxQuestion:
            return box_icon(u"question"_s);
        case SP_MessageBoxWarning:
            return box_icon(u"warning"_s);
        case SP_MessageBoxCritical:
            return box_icon(u"critical"_s);
        case SP_ToolBarHorizontalExtensionButton:
        case SP_ToolBarVerticalExtensionButton:
            // Every bar asks for it at once, and to read the toolkit's, all its plugins for pictures are loaded.
            return icon_of(svg_picture(u":/icons/more.svg"_s, bar_icon_size));
        default:
            return QProxyStyle::standardIcon(which, option, widget);
        }
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override
    {
        switch (hint) {
        case SH_ItemView_ChangeHighlightOnFocus:
            return 1;
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, answer);
        }
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        return metric == PM_HeaderMargin ? header_margin : QProxyStyle::pixelMetric(metric, option, widget);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override
    {
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_ItemViewItem)
            size.rheight() += row_space;
        else if (type == CT_HeaderSection)
            size.rheight() += header_space - header_margin;
        return size;
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        switch (element) {
        case CE_MenuBarEmptyArea:
        case CE_ToolBar:
            draw_bar(*painter, option->rect);
            break;
        case CE_MenuBarItem:
            draw_menu_title(*painter, *qstyleoption_cast<const QStyleOptionMenuItem*>(option));
            break;
        case CE_HeaderSection:
        case CE_HeaderEmptyArea:
            draw_header(*painter, *option, element == CE_HeaderSection);
            break;
        default:
            QProxyStyle::drawControl(element, option, painter, widget);
        }
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element == PE_FrameFocusRect && qobject_cast<const QToolButton*>(widget) != nullptr) {
            draw_focus_ring(*painter, option->rect);
            return;
        }
        if (element == PE_Frame && qobject_cast<const QAbstractScrollArea*>(widget) != nullptr) {
            draw_frame(*painter, option->rect);
            return;
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_IndicatorCheckBox)
            draw_check_frame(*painter, option->rect);
    }

private:
    static void draw_bar(QPainter& painter, const QRect& place) { painter.fillRect(place, palette::panel); }

    void draw_menu_title(QPainter& painter, const QStyleOptionMenuItem& item) const
    {
        const bool open = item.state.testFlag(State_Selected);
        painter.fillRect(item.rect, open ? palette::accent : palette::panel);
        const bool lines = proxy()->styleHint(SH_UnderlineShortcut, &item) != 0;
        drawItemText(&painter, item.rect, Qt::AlignCenter | (lines ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                     item.palette, item.state.testFlag(State_Enabled), item.text,
                     open ? QPalette::HighlightedText : QPalette::WindowText);
    }

    /// A header lies on its list with one line below it, and one behind each section.
    static void draw_header(QPainter& painter, const QStyleOption& option, bool section)
    {
        const bool pressed = section && option.state.testFlag(State_Sunken);
        painter.fillRect(option.rect, pressed ? palette::line : palette::panel_dark);
        painter.fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1), palette::line);
        if (section)
            painter.fillRect(option.rect.right(), option.rect.top() + header_line_inset, 1,
                             option.rect.height() - 2 * header_line_inset, palette::line);
    }

    /// Filled, as the toolkit's thin lines at right and below vanish behind the list where a pixel is no whole number.
    static void draw_frame(QPainter& painter, const QRect& place)
    {
        painter.fillRect(QRect(place.left(), place.top(), place.width(), 1), palette::line);
        painter.fillRect(QRect(place.left(), place.bottom(), place.width(), 1), palette::line);
        painter.fillRect(QRect(place.left(), place.top(), 1, place.height()), palette::line);
        painter.fillRect(QRect(place.right(), place.top(), 1, place.height()), palette::line);
    }

    /// The toolkit's own frame of a check box is too faint on paper.
    static void draw_check_frame(QPainter& painter, const QRect& place)
    {
        painter.save();
        painter.setPen(QPen(palette::soft_ink, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(place.adjusted(0, 0, -1, -1));
        painter.restore();
    }

    /// The toolkit's own sign of the focus is too faint in a bar.
    static void draw_focus_ring(QPainter& painter, const QRect& place)
    {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette::accent, palette::stroke));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(place), palette::corner_radius, palette::corner_radius);
        painter.restore();
    }

    static QIcon box_icon(const QString& name)
    {
        return icon_of(svg_picture(u":/icons/box_%1.svg"_s.arg(name), box_icon_size));
    }
};

QPalette program_palette()
{
    QPalette colours(palette::ink, palette::panel, palette::paper, palette::line, palette::soft_ink, palette::ink,
                     palette::on_accent, palette::paper, palette::panel);
    colours.setColor(QPalette::AlternateBase, palette::panel);
    colours.setColor(QPalette::Midlight, palette::panel_dark);
    colours.setColor(QPalette::Highlight, palette::accent);
    colours.setColor(QPalette::HighlightedText, palette::on_accent);
    colours.setColor(QPalette::Inactive, QPalette::Highlight, palette::line);
    colours.setColor(QPalette::Inactive, QPalette::HighlightedText, palette::ink);
    colours.setColor(QPalette::Link, palette::accent);
    colours.setColor(QPalette::LinkVisited, palette::accent_dark);
    colours.setColor(QPalette::PlaceholderText, palette::soft_ink);
    colours.setColor(QPalette::ToolTipBase, palette::ink);
    colours.setColor(QPalette::ToolTipText, palette::paper);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, palette::soft_ink);
    colours.setColor(QPalette::Disabled, QPalette::Base, palette::disabled_paper);
    colours.setColor(QPalette::Disabled, QPalette::Highlight, palette::line);
    return colours;
}

Picture program_icon()
{
    const Picture large = svg_picture(u":/quilmo.svg"_s, icon_size);
    const Picture small = svg_picture(u":/quilmo_small.svg"_s, icon_size);
    return {icon_size, [large, small](QPainter& painter, const QRectF& rect) {
                (rect.width() <= small_icon ? small : large).draw(painter, rect);
            }};
}

} // namespace

void apply_look()
{
    QApplication::setStyle(new ProgramStyle);
    QApplication::setPalette(program_palette());
    QToolTip::setPalette(program_palette());
    QApplication::setFont(form_font());
    // By this name desktops find the entry of the menu, and its icon, that belong to a window.
    QApplication::setDesktopFileName(u"example.quilmo.Quilmo"_s);
}

void apply_icon()
{
    QApplication::setWindowIcon(icon_of(program_icon()));
}
