#include "platform/controls/CommonDialog.h"

#include "platform/own_words.h"
#include "platform/paths.h"

#include <QApplication>
#include <QChildEvent>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

FileChooser& file_chooser()
{
    static FileChooser chooser;
    return chooser;
}

/// The toolkit's own filter: the text as it is, and the patterns in brackets behind it, which are not shown.
QString shown_filter(const QString& filter)
{
    const QString patterns = filter.section(u'|', 1).replace(u';', u' ');
    return filter.section(u'|', 0, 0) + u" ("_s + patterns + u')';
}

/// Has the boxes that the toolkit's chooser opens show names as they are.
class PlainBoxes : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ChildPolished) {
            if (auto* const box = qobject_cast<QMessageBox*>(static_cast<QChildEvent*>(event)->child()))
                box->setTextFormat(Qt::PlainText);
        }
        return QObject::eventFilter(watched, event);
    }
};

QString choose(const CommonDialog& dialog)
{
    QFileDialog chooser(QApplication::activeWindow(), dialog.DialogTitle, u"/usr/bin"_s);
    chooser.installEventFilter(new PlainBoxes(&chooser));
    chooser.setFileMode(QFileDialog::ExistingFile);
    chooser.setOption(QFileDialog::HideNameFilterDetails);
    chooser.setNameFilters({shown_filter(dialog.Filter), own_word(Word::all_files) + u" (*)"_s});
    if (chooser.exec() != QDialog::Accepted || chooser.selectedFiles().isEmpty())
        return {};
    return program_path(QFile::encodeName(chooser.selectedFiles().constFirst()));
}

} // namespace

void CommonDialog::ShowOpen()
{
    FileName = file_chooser() ? file_chooser()(*this) : choose(*this);
}

void set_file_chooser(FileChooser chooser)
{
    file_chooser() = std::move(chooser);
}
