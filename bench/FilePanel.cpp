#include "FilePanel.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

FilePanel::FilePanel()
    : picks(list, bar,
            {.selected_tree_key = [] { return u"C:"_s; }, .click_row = [](int) {}, .show_final_list = [] {}}),
      files(list, bar, picks)
{
    list.set_ColumnHeaders(
        {{u"Name"_s, 6700}, {u"Size"_s, 1100}, {u"Type"_s, 1800}, {u"Date"_s, 2200}, {u"Byte"_s, 0}});
    list.set_Checkboxes(true);
    list.set_MultiSelect(true);
    list.resize(800, 600);
    list.show();
    QCoreApplication::processEvents();
}
