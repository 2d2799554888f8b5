#include "convert/FIF_convert.h"

#include "convert/form_captions.h"
#include "core/mod_of_grobal_var.h"
#include "platform/controls/LongWork.h"
#include "platform/controls/column_sort.h"
#include "platform/controls/faces.h"
#include "platform/controls/message_window.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "selection/final_list.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize picture_size(180, 24);

enum SmallIcon
{
    fif_icon = 1,
    other_icon = 2
};

} // namespace

FIF_convert::FIF_convert(Transport& transport, Surroundings surroundings, QWidget* parent)
    : ButtonDialog(u"FIF_convert"_s, own_word(Word::title_final_list), parent),
      surroundings_(std::move(surroundings)),
      batch_(transport)
{
    create_group(possible_, {u"Possible_ListView"_s, u"Label_Changeable"_s, u"Pic_auto"_s,
                             Word::picture_list_auto_convert, Word::list_auto_convert});
    create_group(fif_, {u"FIF_ListView"_s, u"Label_FIF"_s, u"Pic_fif"_s, Word::picture_list_fif, Word::list_fif});
    create_group(impossible_, {u"Impossible_ListView"_s, u"Label_UnChangeable"_s, u"Pic_manual"_s,
                               Word::picture_list_manual_convert, Word::list_manual_convert});
    set_columns();
    create_buttons();
    status_bar_ = new StatusBar({3000, 6000}, this);
    status_bar_->setObjectName(u"StatusBar1"_s);
    lay_out();

    connect_list(fif_, shared.fif_sort_toggles, {0, 2});
    connect_list(possible_, shared.possible_sort_toggles, {0, 1, 2});
    connect_list(impossible_, shared.impossible_sort_toggles, {0, 2});
    connect_buttons();

    apply_language_fif_convert();
    Fill_list();
    shared.fif_sort_toggles = {};
    shared.impossible_sort_toggles = {};
    // The third toggle of Possible_ListView keeps its value, on purpose: it outlives the dialog.
    shared.possible_sort_toggles[0] = shared.possible_sort_toggles[1] = 0;
}

void FIF_convert::create_group(Group& group, const GroupNames& names)
{
    group.picture = new PictureBox(label_face(own_word(names.in_picture), picture_size), this);
    group.picture->setObjectName(names.picture);
    group.picture->setAccessibleName(own_word(names.in_picture));
    group.label = new QLabel(this);
    group.label->setObjectName(names.label);
    group.label->setTextFormat(Qt::PlainText);
    group.label->setMouseTracking(true);
    group.list = new ListView(this);
    group.list->setObjectName(names.list);
    group.list->setAccessibleName(own_word(names.of_list));
    group.list->set_SmallIcons(surroundings_.small_icons);
    group.list->set_View(ListView::ViewMode::report);
}

void FIF_convert::set_columns()
{
    const std::vector<ColumnHeader> columns = {
        {u"Name"_s, 3750}, {u"Location"_s, 1500}, {u"Size"_s, 1020, Qt::AlignRight}};
    fif_.list->set_ColumnHeaders(columns);
    impossible_.list->set_ColumnHeaders(columns);
    possible_.list->set_ColumnHeaders(
        {{u"Name"_s, 4350}, {u"FIF"_s, 5200}, {u"Location"_s, 2450}, {u"Size"_s, 1020, Qt::AlignRight}});
    possible_.list->set_Checkboxes(true);
}

void FIF_convert::create_buttons()
{
    change_fif_ = add_button(u"Change_FIF"_s, own_word(Word::button_change_to_fif),
                             u"Change all the files that are in the Auto Convert List into FIF format"_s);
    cmd_transfer_ = add_button(u"cmd_transfer"_s, own_word(Word::button_copy_to_folder),
                               u"Save all the MP3 files in the certain folder"_s);
    cancel_ = add_button(u"Cancel"_s, own_word(Word::button_close_list), u"Cancel"_s);
}

/// Tool tips and headers in the language of the run, and the font of Korean. The two headers of names are the same in
/// Korean, on purpose.
void FIF_convert::apply_language_fif_convert()
{
    apply_captions(*this, Form::FIF_convert);
    apply_korean_font({fif_.label, impossible_.label, possible_.label, fif_.list, impossible_.list, possible_.list});
}

void FIF_convert::lay_out()
{
    const auto caption_row = [](const Group& group) {
        auto* row = new QHBoxLayout;
        row->addWidget(group.picture);
        row->addStretch();
        row->addWidget(group.label);
        return row;
    };
    auto* lists = new QGridLayout;
    lists->setHorizontalSpacing(16);
    lists->setVerticalSpacing(8);
    lists->addLayout(caption_row(possible_), 0, 0, 1, 2);
    lists->addWidget(possible_.list, 1, 0, 1, 2);
    lists->addLayout(caption_row(fif_), 2, 0);
    lists->addWidget(fif_.list, 3, 0);
    lists->addLayout(caption_row(impossible_), 2, 1);
    lists->addWidget(impossible_.list, 3, 1);
    lists->setRowStretch(1, 3);
    lists->setRowStretch(3, 2);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    for (UsrButton* button : {change_fif_, cmd_transfer_, cancel_}) {
        buttons->addWidget(button);
    }

    auto* content = new QVBoxLayout;
    content->setContentsMargins(16, 12, 16, 12);
    content->setSpacing(12);
    content->addLayout(lists);
    content->addLayout(buttons);

    auto* form = new QVBoxLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->setSpacing(0);
    form->addLayout(content);
    form->addWidget(status_bar_);
    possible_.list->setMinimumSize(688, 160);
    for (const Group& group : {fif_, impossible_})
        group.list->setMinimumSize(336, 130);
    resize(920, 640);
}

void FIF_convert::connect_list(const Group& group, std::span<i16> toggles, const std::vector<int>& sortable_columns)
{
    ListView* list = group.list;
    connect(list, &ListView::ItemClick, this,
            guarded([list](int index) { shared.edit_file_name = list->Item(index).Text; }));
    connect(list, &ListView::MouseDown, this,
            guarded([list](i16, QPoint point) { shared.list_drag_active = list->HitTest(point) != 0 ? 1 : 0; }));
    connect(list, &ListView::DblClick, this, guarded([this, list] {
                if (shared.list_drag_active == 1)
                    edit_selected(*list);
            }));
    connect(list, &ListView::ColumnClick, this, guarded([list, toggles, sortable_columns](int column) {
                sort_by_toggle(*list, column, sortable_columns, toggles);
            }));
}

void FIF_convert::connect_buttons()
{
    connect(possible_.list, &ListView::MouseMove, this, [this] { put_out_buttons(); });
    connect(possible_.list, &ListView::ItemCheck, this, guarded([this](int index) {
                const ListRow& row = possible_.list->Item(index);
                set_convert_mark(row.Text, row.Checked ? 1 : 0);
            }));
    connect(change_fif_, &UsrButton::Click, this, guarded([this] { Change_FIF_Click(); }));
    connect(cmd_transfer_, &UsrButton::Click, this, &FIF_convert::copy_wanted);
    connect(cancel_, &UsrButton::Click, this, &QDialog::close);
}

void FIF_convert::Change_FIF_Click()
{
    LongWork work;
    batch_.Change_FIF([&work] { work.step(); });
    Fill_list();
    surroundings_.refresh_all();
}

void FIF_convert::edit_selected(const ListView& list)
{
    if (list.SelectedItem() == 0)
        return;
    shared.edit_file_name = list.Item(list.SelectedItem()).Text;
    Q_EMIT edit_wanted();
}

void FIF_convert::Fill_list()
{
    const ListView::Update updates[] = {ListView::Update(*fif_.list), ListView::Update(*possible_.list),
                                        ListView::Update(*impossible_.list)};
    for (Group* group : {&fif_, &possible_, &impossible_}) {
        group->list->Clear();
        group->files = 0;
        group->bytes = 0;
    }
    for (const FinalListEntry& record : final_list_slots()) {
        if (record.in_use == 1 && !shared.fso.FileExists(record.full_path))
            remove_from_final_list_by_path(record.full_path);
    }
    for (FinalListEntry& record : final_list_slots()) {
        if (record.in_use == 1)
            add_record(record);
    }
    display_selected_file_info();
    show_final_total_in_dialog();
}

void FIF_convert::add_record(FinalListEntry& record)
{
    Group& group = record.kind == 2 ? possible_ : record.kind == 1 ? fif_ : impossible_;
    ListView& list = *group.list;
    const int index = list.Add(record.name, record.name);
    int column = 1;
    if (record.kind == 2) {
        list.set_Checked(index, true);
        record.convert = 1;
        list.set_SubItem(index, column++, batch_.rename_to_fif(record.folder, record.name, 0));
    }
    list.set_SmallIcon(index, record.kind == 1 ? fif_icon : other_icon);
    list.set_SubItem(index, column++, record.folder);
    list.set_SubItem(index, column, kilobytes_text(record.size));
    group.files = checked<i16>(group.files + 1);
    group.bytes = checked<i32>(std::int64_t{group.bytes} + record.size);
}

void FIF_convert::display_selected_file_info()
{
    for (const Group* group : {&fif_, &possible_, &impossible_})
        group->label->setText(u"[%1 File/%2MB]"_s.arg(group->files).arg(megabytes(group->bytes)));
}

void FIF_convert::show_final_total_in_dialog()
{
    status_bar_->set_panel_text(2, final_total_text());
}

void FIF_convert::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    for (const Group* group : {&fif_, &possible_, &impossible_}) {
        if (enter && group->list->isAncestorOf(focusWidget())) {
            guarded([&] { edit_selected(*group->list); })();
            return;
        }
    }
    ButtonDialog::keyPressEvent(event);
}
