#include "platform/controls/FileProgressWindow.h"

#include "platform/controls/palette.h"
#include "platform/display_text.h"
#include "platform/language.h"
#include "platform/own_words.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int content_width = 380; ///< logical pixels
constexpr int bar_steps = 1000;

Word title_of(FileAction action)
{
    switch (action) {
    case FileAction::move:
        return Word::title_moving;
    case FileAction::copy:
        return Word::title_copying;
    case FileAction::remove:
        return Word::title_deleting;
    case FileAction::rename:
        break;
    }
    return Word::title_renaming;
}

QLabel* new_label(const QString& name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setFixedWidth(content_width);
    return label;
}

QString amount_text(const FileProgress& progress)
{
    if (progress.bytes_all == 0)
        return {};
    const QLocale locale = program_locale();
    const auto text = [&](qint64 bytes) {
        return locale.formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
    };
    return own_word(Word::progress_amount).arg(text(progress.bytes_done), text(progress.bytes_all));
}

} // namespace

FileProgressWindow::FileProgressWindow(FileAction action, QWidget* parent)
    : QDialog(parent),
      name_(new_label(u"Label_name"_s, this)),
      amount_(new_label(u"Label_amount"_s, this)),
      bar_(new QProgressBar(this))
{
    setObjectName(u"FileProgressWindow"_s);
    setWindowTitle(own_word(title_of(action)));
    setWindowModality(Qt::ApplicationModal);

    bar_->setObjectName(u"Bar_progress"_s);
    bar_->setAccessibleName(windowTitle());
    bar_->setTextVisible(false);
    bar_->setRange(0, 0);
    QPalette soft = amount_->palette();
    soft.setColor(QPalette::WindowText, palette::soft_ink);
    amount_->setPalette(soft);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    cancel_ = buttons->button(QDialogButtonBox::Cancel);
    cancel_->setObjectName(u"cmd_cancel"_s);
    cancel_->setText(own_word(Word::button_cancel));
    // Enter, perhaps typed for a window that has just gone, cancels nothing.
    cancel_->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &FileProgressWindow::reject);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(name_);
    rows->addWidget(bar_);
    rows->addWidget(amount_);
    rows->addWidget(buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void FileProgressWindow::show_progress(const FileProgress& progress)
{
    if (progress.name != shown_name_)
        show_name(progress.name);
    if (!is_cancelled_)
        amount_->setText(amount_text(progress));
    bar_->setRange(0, progress.bytes_all == 0 ? 0 : bar_steps);
    if (progress.bytes_all != 0) {
        const double part = static_cast<double>(progress.bytes_done) / static_cast<double>(progress.bytes_all);
        bar_->setValue(static_cast<int>(std::clamp(part, 0.0, 1.0) * bar_steps));
    }
}

void FileProgressWindow::show_name(const QString& name)
{
    shown_name_ = name;
    name_->setText(name_->fontMetrics().elidedText(display_text(name), Qt::ElideMiddle, content_width));
}

void FileProgressWindow::reject()
{
    if (is_cancelled_)
        return;
    is_cancelled_ = true;
    cancel_->setEnabled(false);
    amount_->setText(own_word(Word::progress_cancelling));
    Q_EMIT Cancel();
}
