#include "platform/controls/OverwriteDialog.h"

#include "platform/controls/palette.h"
#include "platform/display_text.h"
#include "platform/language.h"
#include "platform/own_words.h"

#include <QDateTime>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {

constexpr int facts_width = 200; ///< logical pixels
constexpr int gap = 12;          ///< logical pixels between icon, question, facts and buttons

QLabel* new_label(const QString& name, const QString& text, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

void set_text_colour(QLabel* label, const QColor& colour)
{
    QPalette colours = label->palette();
    colours.setColor(label->foregroundRole(), colour);
    label->setPalette(colours);
}

QString folder_of(const QString& path)
{
    return path.left(path.lastIndexOf(u'\\'));
}

/// A sheet with the facts of one of the two files; `name` is that of its controls.
QFrame* new_facts(const QString& name, Word head, const FileFacts& facts, bool is_newer, QWidget* parent)
{
    auto* sheet = new QFrame(parent);
    sheet->setObjectName(name);
    sheet->setFrameShape(QFrame::StyledPanel);
    sheet->setBackgroundRole(QPalette::Base);
    sheet->setAutoFillBackground(true);

    const QLocale locale = program_locale();
    const QString folder = display_text(folder_of(facts.path));
    auto* head_label = new_label(name + u"_head"_s, own_word(head), sheet);
    QFont bold = head_label->font();
    bold.setBold(true);
    head_label->setFont(bold);
    auto* newer = new_label(name + u"_newer"_s, is_newer ? own_word(Word::replace_newer) : QString(), sheet);
    newer->setFont(bold);
    set_text_colour(newer, palette::accent);
    auto* place =
        new_label(name + u"_folder"_s, sheet->fontMetrics().elidedText(folder, Qt::ElideMiddle, facts_width), sheet);
    place->setToolTip(tool_tip_text(folder));
    set_text_colour(place, palette::soft_ink);
    auto* size = new_label(name + u"_size"_s,
                           locale.formattedDataSize(facts.size, 2, QLocale::DataSizeTraditionalFormat), sheet);
    const QDateTime modified = QDateTime::fromSecsSinceEpoch(facts.modified_seconds);
    auto* date = new_label(name + u"_date"_s, locale.toString(modified, QLocale::ShortFormat), sheet);

    auto* rows = new QGridLayout(sheet);
    rows->setColumnMinimumWidth(0, facts_width);
    int row = 0;
    for (QLabel* label : {head_label, place, size, date, newer})
        rows->addWidget(label, row++, 0);
    return sheet;
}

} // namespace

OverwriteDialog::OverwriteDialog(const FileFacts& source, const FileFacts& target, QWidget* parent) : QDialog(parent)
{
    setObjectName(u"OverwriteDialog"_s);
    setWindowTitle(own_word(Word::title_replace));

    auto* icon = new QLabel(this);
    const int icon_size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()
                        ->standardIcon(QStyle::SP_MessageBoxQuestion, nullptr, this)
                        .pixmap(QSize(icon_size, icon_size), devicePixelRatioF()));
    const QString name = display_text(target.path.sliced(target.path.lastIndexOf(u'\\') + 1));
    auto* question = new_label(u"Label_question"_s, breakable_text(own_word(Word::ask_replace).arg(name)), this);
    question->setWordWrap(true);

    auto* grid = new QGridLayout(this);
    grid->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);
    grid->addWidget(question, 0, 1, 1, 2);
    const bool source_is_newer = source.modified_seconds > target.modified_seconds;
    const bool target_is_newer = target.modified_seconds > source.modified_seconds;
    grid->addWidget(new_facts(u"Facts_target"_s, Word::replace_here, target, target_is_newer, this), 1, 1);
    grid->addWidget(new_facts(u"Facts_source"_s, Word::replace_with, source, source_is_newer, this), 1, 2);
    grid->addWidget(new_buttons(), 2, 0, 1, 3);
    grid->setSpacing(gap);
    grid->setSizeConstraint(QLayout::SetFixedSize);
}

QDialogButtonBox* OverwriteDialog::new_buttons()
{
    auto* buttons = new QDialogButtonBox(this);
    const auto add = [buttons](QDialogButtonBox::StandardButton which, Word caption) {
        QPushButton* const button = buttons->addButton(which);
        button->setText(own_word(caption));
        return button;
    };
    add(QDialogButtonBox::Yes, Word::button_yes);
    add(QDialogButtonBox::YesToAll, Word::button_yes_to_all);
    QPushButton* const no = add(QDialogButtonBox::No, Word::button_no);
    add(QDialogButtonBox::NoToAll, Word::button_no_to_all);
    add(QDialogButtonBox::Cancel, Word::button_cancel);
    no->setDefault(true);
    no->setFocus();
    connect(buttons, &QDialogButtonBox::clicked, this,
            [this, buttons](QAbstractButton* button) { done(buttons->standardButton(button)); });
    return buttons;
}
