#include "frame/look.h"

#include "platform/controls/Picture.h"
#include "platform/controls/fonts.h"
#include "platform/controls/palette.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize icon_size(64, 64);
constexpr QSize box_icon_size(32, 32);

/// The toolkit's plain style with the program's own signs in message boxes, with clear frames round check boxes, and
/// with a quieter selection in the pane that the keys don't go to.
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
        default:
            return QProxyStyle::standardIcon(which, option, widget);
        }
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override
    {
        if (hint == SH_ItemView_ChangeHighlightOnFocus)
            return 1;
        return QProxyStyle::styleHint(hint, option, widget, answer);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_IndicatorCheckBox)
            draw_check_frame(*painter, option->rect);
    }

private:
    /// The toolkit's own frame of a check box is too faint on paper.
    static void draw_check_frame(QPainter& painter, const QRect& place)
    {
        painter.save();
        painter.setPen(QPen(palette::soft_ink, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(place.adjusted(0, 0, -1, -1));
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

} // namespace

void apply_look()
{
    QApplication::setStyle(new ProgramStyle);
    QApplication::setPalette(program_palette());
    QToolTip::setPalette(program_palette());
    QApplication::setFont(form_font());
    QApplication::setWindowIcon(icon_of(svg_picture(u":/quilmo.svg"_s, icon_size)));
}
