#include "ui_commands.h"

#include "core/mod_of_grobal_var.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;

CommandedPanes::CommandedPanes()
{
    for (const QString& name : {u"one.mp3"_s, u"two.mp3"_s, u"three.mp3"_s})
        write(u"C:\\Pop\\"_s + name);
    disk.make_folder(u"C:\\Rock"_s);
    tree.init_main_tree();
    click_folder(u"C:\\Pop"_s);
}

QStringList CommandedPanes::on_disk(const QString& folder) const
{
    const QDir directory(QFile::decodeName(disk.native(folder)));
    QStringList names = directory.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    names.sort();
    return names;
}

void CommandedPanes::select_rows(const QStringList& names)
{
    list_view.clear_selection();
    for (const QString& name : names)
        list_view.set_Selected(row_of(name), true);
}

void CommandedPanes::show()
{
    tree_view.resize(300, 400);
    tree_view.show();
    list_view.resize(700, 400);
    list_view.show();
    if (!QTest::qWaitForWindowExposed(&tree_view) || !QTest::qWaitForWindowExposed(&list_view))
        qFatal("the panes are not on the screen");
}

void CommandedPanes::type_label(const QString& text, Qt::Key end)
{
    QLineEdit* editor = nullptr;
    for (const QWidget* control : {static_cast<QWidget*>(&tree_view), static_cast<QWidget*>(&list_view)}) {
        for (auto* found : control->findChildren<QLineEdit*>(u"label_editor"_s)) {
            if (found->isVisible())
                editor = found;
        }
    }
    if (editor == nullptr)
        qFatal("no label is being edited");
    editor->selectAll();
    if (text.isEmpty())
        QTest::keyClick(editor, Qt::Key_Delete);
    else
        QTest::keyClicks(editor, text);
    QTest::keyClick(editor, end);
}
