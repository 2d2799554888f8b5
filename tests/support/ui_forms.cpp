#include "ui_forms.h"

#include "Driver.h"
#include "convert/Chang_FIF.h"
#include "convert/FIF_Auto_Convert.h"
#include "convert/FIF_convert.h"
#include "convert/Select_FIF_Format.h"
#include "convert/Set_genre_type.h"
#include "convert/genre_controls.h"
#include "core/Mod_of_nation.h"
#include "explorer/File_copy_Dlg.h"
#include "frame/Help_Dlg.h"
#include "frame/QuilmoMain.h"
#include "frame/Splash_Dlg.h"
#include "platform/MsgBox.h"
#include "platform/controls/FileProgressWindow.h"
#include "platform/controls/OverwriteDialog.h"
#include "platform/controls/PromptBoxes.h"
#include "platform/controls/message_window.h"
#include "platform/controls/toolkit_words.h"
#include "platform/own_words.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "ui_convert.h"

#include <QApplication>
#include <QTest>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

using Visit = AllForms::Visit;

const QString folder = u"C:\\7\\"_s;
const QString fif_name = u"[1][2].mp3"_s;
const QString tagged_name = u"3.mp3"_s;
const QString bare_name = u"4.mp3"_s;

constexpr qint64 megabyte = qint64{1024} * 1024;

void visit_shown(QWidget& form, const Visit& visit)
{
    form.show();
    if (!QTest::qWaitForWindowExposed(&form))
        qFatal("%s was not shown", qPrintable(form.objectName()));
    QCoreApplication::processEvents();
    visit(form);
}

/// Visits the modal box that `ask` shows.
template<typename Ask> void visit_box(const Visit& visit, Ask ask)
{
    Driver::in_next_dialog([&visit](QDialog& box) {
        visit(box);
        box.reject();
    });
    ask();
}

/// Visits the main window after `prepare`, with the test's folder listed and a row selected.
template<typename Prepare> void visit_main(const Visit& visit, Prepare prepare)
{
    QuilmoMain form;
    form.show();
    if (!QTest::qWaitForWindowActive(&form))
        qFatal("the main window was not shown");
    const Driver driver(form);
    driver.open_node(u"C:"_s);
    driver.click_node(folder.chopped(1));
    auto& list = driver.control<ListView>(u"lvListView"_s);
    driver.click_check_box(list, 1);
    driver.click_row(list, Driver::row_of(list, fif_name));
    for (const QString& time : {u"CurrentTime"_s, u"TotalTime"_s})
        driver.control<QLabel>(time).setText(u"999:59"_s);
    prepare(driver);
    visit_shown(form, visit);
}

void show_main(const Visit& visit)
{
    visit_main(visit, [](const Driver& /*driver*/) {});
}

void show_main_with_genre_as_text(const Visit& visit)
{
    visit_main(visit, [](const Driver& driver) {
        show_genre_controls(driver.control<ComboBox>(u"cboGenre"_s), driver.control<TextBox>(u"txtGenre"_s),
                            genre_as_text, 1);
    });
}

void show_main_without_sound(const Visit& visit)
{
    visit_main(visit, [](const Driver& driver) {
        QTest::mouseClick(&driver.control<PictureBox>(u"muteBtn"_s), Qt::LeftButton);
        driver.control<StatusBar>(u"StatusBar1"_s).show_notice(own_word(Word::no_audio_device));
    });
}

void show_splash(const Visit& visit)
{
    Splash_Dlg splash([] {});
    visit_shown(splash, visit);
}

void show_about_box(const Visit& visit)
{
    Help_Dlg form(nullptr);
    visit_shown(form, visit);
}

void show_final_list(const Visit& visit)
{
    NotedTransport transport;
    FIF_convert form(transport, {.refresh_all = [] {}, .small_icons = {}}, nullptr);
    visit_shown(form, visit);
}

void show_single_edit(const Visit& visit, GenreType genre_type)
{
    shared.genre_type = genre_type;
    shared.edit_file_name = fif_name;
    NotedTransport transport;
    Chang_FIF form(transport, {.refresh_all = [] {}, .Fill_list = [] {}}, nullptr);
    visit_shown(form, visit);
}

void show_single_edit_with_list(const Visit& visit)
{
    show_single_edit(visit, genre_from_list);
}

void show_single_edit_with_text(const Visit& visit)
{
    show_single_edit(visit, genre_as_text);
}

void show_auto_convert(const Visit& visit)
{
    NotedTransport transport;
    ListView main_list;
    for (const QString& name : {fif_name, tagged_name, bare_name}) {
        main_list.Add(name, name);
        main_list.set_Selected(main_list.Count(), true);
    }
    FIF_Auto_Convert form(transport, {.lvListView = main_list, .small_icons = {}, .refresh_all = [] {}}, nullptr);
    form.show();
    Driver(form).click(u"freeview"_s);
    visit_shown(form, visit);
}

template<typename Choice> void show_choice(const Visit& visit)
{
    ComboBox list;
    TextBox text;
    Choice form(list, text, nullptr);
    visit_shown(form, visit);
}

void show_destination(const Visit& visit)
{
    const ImageList images;
    File_copy_Dlg form({.refresh_all = [] {}, .images = images}, nullptr);
    visit_shown(form, visit);
}

void show_overwrite(const Visit& visit)
{
    const FileFacts source = {.path = u"C:\\8\\3.mp3"_s, .size = 3 * megabyte, .modified_seconds = 1'000'000'000};
    const FileFacts target = {.path = folder + tagged_name, .size = 1000, .modified_seconds = 1'100'000'000};
    OverwriteDialog form(source, target, nullptr);
    visit_shown(form, visit);
}

void show_last_error(const Visit& visit)
{
    visit_box(visit, [] { PromptBoxes().ask_error(bare_name, own_word(Word::reason_changed_later), false); });
}

void show_error_before_others(const Visit& visit)
{
    visit_box(visit, [] { PromptBoxes().ask_error(bare_name, own_word(Word::reason_drive), true); });
}

void show_trash_of_one(const Visit& visit)
{
    visit_box(visit, [] { PromptBoxes().ask_trash({folder + bare_name}); });
}

void show_trash_of_several(const Visit& visit)
{
    visit_box(visit, [] { PromptBoxes().ask_trash({folder + bare_name, folder + tagged_name}); });
}

void show_deletion_of_one(const Visit& visit)
{
    visit_box(visit, [] { PromptBoxes().ask_delete({folder + bare_name}); });
}

void show_deletion_of_several(const Visit& visit)
{
    visit_box(visit, [] { PromptBoxes().ask_delete({folder + bare_name, folder + tagged_name}); });
}

template<FileAction action> void show_progress(const Visit& visit)
{
    FileProgressWindow form(action, nullptr);
    form.show_progress({.name = bare_name, .bytes_done = 700 * megabyte, .bytes_all = 1000 * megabyte});
    visit_shown(form, visit);
}

void show_cancelled_work(const Visit& visit)
{
    FileProgressWindow form(FileAction::copy, nullptr);
    form.reject();
    visit_shown(form, visit);
}

void show_told_message(const Visit& visit)
{
    visit_box(visit, [] { show_message(msg_tag_write_failed); });
}

void show_message_with_name(const Visit& visit)
{
    visit_box(visit, [] { show_name_message(msg_exists_in_list, fif_name.repeated(3)); });
}

void show_fatal_error(const Visit& visit)
{
    visit_box(visit, [] { show_run_time_error(RunTimeError(RunTimeError::overflow)); });
}

struct Entry
{
    const char16_t* name;
    void (*show)(const Visit& visit);
};

constexpr auto entries = std::to_array<Entry>({
    {u"main window", show_main},
    {u"main window, genre as text", show_main_with_genre_as_text},
    {u"main window without sound", show_main_without_sound},
    {u"splash", show_splash},
    {u"about box", show_about_box},
    {u"final list", show_final_list},
    {u"single edit", show_single_edit_with_list},
    {u"single edit, genre as text", show_single_edit_with_text},
    {u"auto convert", show_auto_convert},
    {u"choice of the shape of names", show_choice<Select_FIF_Format>},
    {u"choice of the way of entering genres", show_choice<Set_genre_type>},
    {u"choice of the destination", show_destination},
    {u"overwrite prompt", show_overwrite},
    {u"last error", show_last_error},
    {u"error before other files", show_error_before_others},
    {u"trash of one file", show_trash_of_one},
    {u"trash of several files", show_trash_of_several},
    {u"deletion of one file", show_deletion_of_one},
    {u"deletion of several files", show_deletion_of_several},
    {u"progress of copying", show_progress<FileAction::copy>},
    {u"progress of moving", show_progress<FileAction::move>},
    {u"progress of deleting", show_progress<FileAction::remove>},
    {u"progress of renaming", show_progress<FileAction::rename>},
    {u"work being cancelled", show_cancelled_work},
    {u"message", show_told_message},
    {u"message with a name", show_message_with_name},
    {u"run-time error", show_fatal_error},
});

void speak(Language language)
{
    set_program_language(language);
    shared.language_id = language;
    translate_toolkit();
}

} // namespace

AllForms::AllForms(Language language)
{
    speak(language);
    install_message_window(application_title());
    const QByteArray audio = sample_audio({.frames = 3});
    disk_.write(folder + fif_name, audio);
    disk_.write(folder + tagged_name, audio + sample_tag({.title = "5", .artist = "6", .genre = 17}));
    disk_.write(folder + bare_name, audio);
    fill_final_list();
}

AllForms::~AllForms()
{
    set_message_box({});
    speak(english);
}

void AllForms::fill_final_list() const
{
    shared.current_folder = folder;
    for (const QString& name : {fif_name, tagged_name, bare_name})
        add_to_final_list(name, folder, folder + name, 3 * megabyte, {}, {});
    shared.final_list_count = 999; // as long as the totals get
    shared.final_list_bytes = 2'000'000'000;
}

QStringList AllForms::names()
{
    QStringList names;
    for (const Entry& entry : entries)
        names.append(QString::fromUtf16(entry.name));
    return names;
}

void AllForms::show(const QString& name, const Visit& visit) const
{
    const auto entry = std::ranges::find(entries, name, [](const Entry& one) { return QString::fromUtf16(one.name); });
    if (entry == entries.end())
        qFatal("no form %s", qPrintable(name));
    entry->show(visit);
}
