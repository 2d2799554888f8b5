#include "frame/Help_Dlg.h"

#include "frame/web_address.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/ShellExecute.h"
#include "platform/controls/palette.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize sign_size(64, 64);
constexpr int heading_pixels = 18;
constexpr int least_text_width = 280;
constexpr QMargins notice_margins(24, 24, 24, 20);
constexpr QMargins button_margins(16, 12, 16, 12);
constexpr int sign_gap = 20;
constexpr int line_gap = 4;

/// The address as a person reads it: without its scheme.
QString readable(const QString& address)
{
    const QUrl url(address);
    QString text = url.host() + url.path();
    if (text.endsWith(u'/'))
        text.chop(1);
    return text;
}

/// A line of text. To the mouse it is the form's ground.
QLabel* label(const QString& name, const QString& text, const QColor& colour)
{
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText, colour);
    label->setPalette(colours);
    return label;
}

} // namespace

Help_Dlg::Help_Dlg(QWidget* parent)
    : ButtonDialog(u"Help_Dlg"_s, u"About"_s, parent),
      Label_ylm_link(new WebLink(readable(web_address()), this)),
      cmd_ok(add_button(u"cmd_ok"_s, u"OK"_s, u"OK"_s))
{
    Label_ylm_link->setObjectName(u"Label_ylm_link"_s);
    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(button_margins);
    buttons->addWidget(cmd_ok, 0, Qt::AlignRight);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    rows->addLayout(notice());
    rows->addLayout(buttons);

    connect(Label_ylm_link, &WebLink::clicked, this, [] { ShellExecuteA(web_address()); });
    connect(cmd_ok, &UsrButton::Click, this, &QDialog::close);
    set_default_button(cmd_ok);
    cmd_ok->setFocus();
}

QLayout* Help_Dlg::notice()
{
    auto* sign = new PictureBox(svg_picture(u":/quilmo.svg"_s, sign_size));
    sign->setObjectName(u"Picture_sign"_s);
    sign->setAccessibleName(u"Vurlo"_s);
    auto* Label1 = label(u"Label1"_s, u"Vurlo Utility Ver 1.0"_s, palette::ink);
    QFont heading = Label1->font();
    heading.setPixelSize(heading_pixels);
    heading.setBold(true);
    Label1->setFont(heading);

    auto* visit = new QHBoxLayout;
    visit->setSpacing(0);
    visit->addWidget(label(u"Label4"_s, u"Visit : "_s, palette::soft_ink));
    visit->addWidget(Label_ylm_link);
    visit->addStretch();
    auto* texts = new QVBoxLayout;
    texts->setSpacing(line_gap);
    texts->addStrut(least_text_width);
    texts->addWidget(Label1);
    texts->addWidget(label(u"Label2"_s, u"MP3 names for your discs"_s, palette::ink));
    texts->addSpacing(sign_gap);
    texts->addWidget(label(u"Label3"_s, u"for more information"_s, palette::soft_ink));
    texts->addLayout(visit);

    auto* notice = new QHBoxLayout;
    notice->setContentsMargins(notice_margins);
    notice->setSpacing(sign_gap);
    notice->addWidget(sign, 0, Qt::AlignTop);
    notice->addLayout(texts);
    return notice;
}

void Help_Dlg::paintEvent(QPaintEvent* event)
{
    ButtonDialog::paintEvent(event);
    QPainter painter(this);
    const int edge = cmd_ok->y() - button_margins.top();
    painter.fillRect(0, 0, width(), edge, palette::paper);
    painter.fillRect(0, edge - 1, width(), 1, palette::line);
}

void Help_Dlg::mouseMoveEvent(QMouseEvent* event)
{
    Label_ylm_link->put_out();
    ButtonDialog::mouseMoveEvent(event);
}
