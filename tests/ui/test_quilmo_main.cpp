#include "Driver.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/File_copy_Dlg.h"
#include "frame/QuilmoMain.h"
#include "frame/Splash_Dlg.h"
#include "frame/mnemonics.h"
#include "platform/controls/CommonDialog.h"
#include "platform/controls/ShellExecute.h"
#include "platform/controls/drag.h"
#include "platform/language.h"
#include "platform/settings.h"
#include "sample_files.h"
#include "test_main.h"

#include <QApplication>
#include <QDir>
#include <QDrag>
#include <QDragEnterEvent>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

#include <map>

using namespace Qt::StringLiterals;

namespace {

QString store_path()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, u"Quilmo"_s).fileName();
}

QByteArray store_bytes()
{
    QFile file(store_path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString stored(const QString& section)
{
    return GetSetting(u"Quilmo"_s, section, u"location"_s, u"(none)"_s);
}

void store(const QString& section, const QString& text)
{
    SaveSetting(u"Quilmo"_s, section, u"location"_s, text);
}

} // namespace

class TestQuilmoMain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void first_start();
    void load_sets_the_shared_state();
    void load_prepares_the_controls();
    void genre_controls_follow_the_settings();
    void genre_controls_follow_the_settings_data();
    void volume_knob_follows_the_setting();
    void volume_knob_follows_the_setting_data();
    void a_setting_that_is_no_number_ends_the_load();
    void a_setting_that_is_no_number_ends_the_load_data();
    void splash_stays_until_the_main_form_has_loaded();

    void exit_writes_the_settings();
    void exit_without_burning_program_leaves_the_stored_one();
    void exit_entry_closes();
    void detail_fields_live_as_long_as_the_form();

    void every_control_has_its_names();
    void every_control_has_its_names_data();
    void tool_tips();
    void tool_tips_data();
    void menus();
    void menus_data();
    void every_command_works();
    void list_menu_follows_the_press();
    void view_entries();

    void a_folder_is_shown();
    void file_name_box_cannot_be_changed();
    void refresh();
    void refresh_data();
    void buttons_and_entries_pick();
    void buttons_and_entries_pick_data();
    void final_list_dialog_opens_and_goes();
    void the_total_follows_while_the_final_list_is_open();
    void final_list_is_copied_into_a_chosen_folder();
    void a_file_behind_an_unticked_one_is_left_out_of_the_copy();
    void burning_starts_from_button_and_entries_data();
    void burning_starts_from_button_and_entries();
    void rows_are_dragged_onto_the_tree();
    void closing_ends_the_open_dialogs();

    void focus_is_noted();
    void focus_is_noted_data();
    void enter_runs_the_save_button();
    void enter_elsewhere_is_the_controls_own();
    void f1_opens_the_web_address();
    void f1_without_a_browser_shows_nothing();
    void tab_reaches_the_controls();

private:
    void open_window();
    template<typename Control> Control& control(const QString& name) const
    {
        auto* found = window_->findChild<Control*>(name);
        if (found == nullptr)
            qFatal("no control %s", qPrintable(name));
        return *found;
    }
    QAction& entry(const QString& name) const { return control<QAction>(name); }
    void show_music_folder();
    QStringList copy_final_list_into(const QString& folder);
    void press(Qt::Key key) const { QTest::keyClick(QApplication::focusWidget(), key); }

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    std::unique_ptr<QuilmoMain> window_;
};

void TestQuilmoMain::init()
{
    QFile::remove(store_path());
    disk_ = std::make_unique<TestDisk>();
    shared = {};
    messages_ = std::make_unique<NotedMessages>();
}

void TestQuilmoMain::cleanup()
{
    window_.reset();
    messages_.reset();
    disk_.reset();
    set_address_opener({});
}

void TestQuilmoMain::open_window()
{
    window_ = std::make_unique<QuilmoMain>();
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void TestQuilmoMain::show_music_folder()
{
    for (const QString& name : {u"[Band][One].mp3"_s, u"two.mp3"_s, u"three.mp3"_s})
        disk_->write(u"C:\\Music\\"_s + name, sample_audio());
    open_window();
    auto& tree = control<TreeView>(u"tvTreeView"_s);
    TreeNode* const folder = tree.Item(u"C:\\Music"_s);
    QVERIFY(folder != nullptr);
    tree.set_Selected(folder);
    Q_EMIT tree.NodeClick(folder);
    QCOMPARE(control<ListView>(u"lvListView"_s).Count(), 3);
}

void TestQuilmoMain::first_start()
{
    open_window();
    QCOMPARE(shared.fif_type, i16(1));
    QCOMPARE(shared.genre_type, i16(1));
    QCOMPARE(shared.vol_type, i16(35));
    QCOMPARE(shared.burn_program_path, QString());
    const auto& list = control<ComboBox>(u"cboGenre"_s);
    QVERIFY(list.isVisible());
    QVERIFY(list.isEnabled());
    QVERIFY(!control<TextBox>(u"txtGenre"_s).isVisible());
    QCOMPARE(store_bytes(), QByteArray());
}

void TestQuilmoMain::load_sets_the_shared_state()
{
    shared.is_muted = shared.is_playing = shared.copy_source_kind = shared.enter_saves = 1;
    shared.focus_pane = pane_list;
    shared.main_sort_toggles = {1, 1, 1};
    window_ = std::make_unique<QuilmoMain>();
    QCOMPARE(shared.language_id, i16(english));
    QCOMPARE(shared.last_open_node_index, i16(-1));
    QCOMPARE(shared.cd_capacity_mb, i32(650));
    QCOMPARE(shared.is_muted, i16(0));
    QCOMPARE(shared.is_playing, i16(0));
    QCOMPARE(shared.copy_source_kind, i16(0));
    QCOMPARE(shared.enter_saves, i16(0));
    QCOMPARE(shared.focus_pane, i16(pane_none));
    QCOMPARE(shared.main_sort_toggles, (std::array<i16, 3>{}));
    QCOMPARE(shared.min_form_width, i16(design_form_width));
    QCOMPARE(shared.min_form_height, i16(design_form_height));
    QCOMPARE(shared.drive_table.at(0).letter, u"C"_s);
}

void TestQuilmoMain::load_prepares_the_controls()
{
    window_ = std::make_unique<QuilmoMain>();
    QCOMPARE(window_->windowTitle(), u"Vurlo Utility Ver 1.0"_s);
    QCOMPARE(control<TreeView>(u"tvTreeView"_s).SelectedItem()->Key(), u"MYCOMPUTER"_s);
    QCOMPARE(control<ListView>(u"lvListView"_s).View(), ListView::ViewMode::report);
    QCOMPARE(control<ListView>(u"lvListView"_s).Count(), 0);
    QVERIFY(entry(u"menu_View_details"_s).isChecked());
    QVERIFY(!entry(u"menu_View_list"_s).isChecked());
    QCOMPARE(control<ComboBox>(u"cboGenre"_s).count(), 149);
    QCOMPARE(control<ComboBox>(u"cboGenre"_s).ListIndex(), -1);
    const auto& timer = control<QTimer>(u"Timer_of_text_scroll"_s);
    QCOMPARE(timer.interval(), 350);
    QVERIFY(!timer.isActive());
    for (const QString& name : {u"UpdatePos"_s, u"Timer_mp3_back"_s, u"Timer_mp3_front"_s})
        QVERIFY(!control<QTimer>(name).isActive());
    QCOMPARE(control<QWidget>(u"label_title_of_player"_s).height(), window_->fontMetrics().height());
    QCOMPARE(control<StatusBar>(u"StatusBar1"_s).panel_text(3), u"0 files/0MB"_s);
    QCOMPARE(control<QWidget>(u"volume_button"_s).height(), control<QWidget>(u"Picture_back_volume"_s).height());
    QCOMPARE(control<QWidget>(u"volume_button"_s).y(), 0);
    QVERIFY(control<QWidget>(u"play_index_button"_s).isHidden());
    QCOMPARE(control<QLabel>(u"CurrentTime"_s).text(), u"00:00"_s);
    QCOMPARE(control<QLabel>(u"TotalTime"_s).text(), u"00:00"_s);
    const QStringList headers = {u"Name"_s, u"Size"_s, u"Type"_s, u"Date"_s, u"Byte"_s};
    const std::vector<int> widths = {6700, 1100, 1800, 2200, 0};
    const auto& columns = control<ListView>(u"lvListView"_s).ColumnHeaders();
    QCOMPARE(columns.size(), widths.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        QCOMPARE(columns[i].Text, headers[static_cast<int>(i)]);
        QCOMPARE(columns[i].Width, widths[i]);
    }
}

void TestQuilmoMain::genre_controls_follow_the_settings_data()
{
    QTest::addColumn<QString>("genre_type");
    QTest::addColumn<QString>("fif_type");
    QTest::addColumn<bool>("list_shown");
    QTest::addColumn<bool>("list_enabled");
    QTest::addColumn<bool>("text_shown");
    QTest::addColumn<bool>("text_enabled");
    QTest::addColumn<QColor>("text_ground");
    const QColor window_ground = QApplication::palette().color(QPalette::Base);
    const QColor grey(0xE0, 0xE0, 0xE0);
    for (const QString& odd : {u"1"_s, u"3"_s, u"5"_s}) {
        QTest::newRow(qPrintable(u"list, shape "_s + odd))
            << u"1"_s << odd << true << true << false << true << window_ground;
        QTest::newRow(qPrintable(u"text, shape "_s + odd))
            << u"2"_s << odd << false << true << true << true << window_ground;
    }
    for (const QString& even : {u"2"_s, u"4"_s, u"6"_s}) {
        QTest::newRow(qPrintable(u"list, shape "_s + even))
            << u"1"_s << even << true << false << false << true << window_ground;
        QTest::newRow(qPrintable(u"text, shape "_s + even)) << u"2"_s << even << false << true << true << false << grey;
    }
    for (const QString& other : {u"0"_s, u"7"_s, u"-2"_s}) {
        QTest::newRow(qPrintable(u"list, shape "_s + other))
            << u"1"_s << other << true << true << false << true << window_ground;
        QTest::newRow(qPrintable(u"text, shape "_s + other))
            << u"2"_s << other << false << true << true << true << window_ground;
    }
    for (const QString& other : {u"0"_s, u"3"_s})
        QTest::newRow(qPrintable(u"genre type "_s + other))
            << other << u"2"_s << true << true << false << true << window_ground;
}

void TestQuilmoMain::genre_controls_follow_the_settings()
{
    QFETCH(const QString, genre_type);
    QFETCH(const QString, fif_type);
    store(u"genre_type"_s, genre_type);
    store(u"fif_type"_s, fif_type);
    open_window();
    QCOMPARE(QString::number(shared.genre_type), genre_type);
    QCOMPARE(QString::number(shared.fif_type), fif_type);
    const auto& list = control<ComboBox>(u"cboGenre"_s);
    const auto& text = control<TextBox>(u"txtGenre"_s);
    QTEST(list.isVisible(), "list_shown");
    QTEST(list.isEnabled(), "list_enabled");
    QCOMPARE((list.focusPolicy() & Qt::TabFocus) != 0, list.isVisible());
    QTEST(text.isVisible(), "text_shown");
    QTEST(text.isEnabled(), "text_enabled");
    QTEST(text.palette().color(text.isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Base),
          "text_ground");
    if (text.isVisible())
        QVERIFY((text.focusPolicy() & Qt::TabFocus) != 0);
    QCOMPARE(text.pos(), list.pos());
}

void TestQuilmoMain::volume_knob_follows_the_setting_data()
{
    QTest::addColumn<QString>("vol_type");
    QTest::addColumn<double>("share");
    QTest::newRow("silent") << u"0"_s << 0.0;
    QTest::newRow("a third or so") << u"35"_s << 0.35;
    QTest::newRow("full") << u"100"_s << 1.0;
}

void TestQuilmoMain::volume_knob_follows_the_setting()
{
    QFETCH(const QString, vol_type);
    QFETCH(const double, share);
    store(u"vol_type"_s, vol_type);
    window_ = std::make_unique<QuilmoMain>();
    const auto& knob = control<QWidget>(u"volume_button"_s);
    const int room = control<QWidget>(u"Picture_back_volume"_s).width() - knob.width();
    QVERIFY(room > 40);
    QVERIFY(qAbs(knob.x() - room * share) <= 0.5);
    QCOMPARE(QString::number(shared.vol_type), vol_type);
}

void TestQuilmoMain::a_setting_that_is_no_number_ends_the_load_data()
{
    QTest::addColumn<QString>("section");
    QTest::newRow("shape") << u"fif_type"_s;
    QTest::newRow("genre") << u"genre_type"_s;
    QTest::newRow("volume") << u"vol_type"_s;
}

void TestQuilmoMain::a_setting_that_is_no_number_ends_the_load()
{
    QFETCH(const QString, section);
    store(section, u"loud"_s);
    const QByteArray before = store_bytes();
    int number = 0;
    try {
        window_ = std::make_unique<QuilmoMain>();
    } catch (const RunTimeError& error) {
        number = error.number();
    }
    QCOMPARE(number, 13);
    QVERIFY(window_ == nullptr);
    QVERIFY(shared.detail_fields == nullptr);
    QCOMPARE(store_bytes(), before);
}

void TestQuilmoMain::splash_stays_until_the_main_form_has_loaded()
{
    bool splash_was_visible = false;
    QPointer<Splash_Dlg> splash;
    splash = new Splash_Dlg([&] {
        window_ = std::make_unique<QuilmoMain>();
        window_->show();
        splash_was_visible = splash->isVisible();
    });
    splash->show();
    auto* timer = splash->findChild<QTimer*>(u"Timer_splash"_s);
    QCOMPARE(timer->interval(), 1000);
    timer->start(0);
    QTRY_VERIFY(splash.isNull());
    QVERIFY(splash_was_visible);
    QVERIFY(window_->isVisible());
}

void TestQuilmoMain::exit_writes_the_settings()
{
    open_window();
    shared.burn_program_path = u"C:\\usr\\bin\\k3b"_s;
    shared.fif_type = 4;
    shared.genre_type = 2;
    shared.vol_type = 80;
    window_->close();
    QCOMPARE(stored(u"location_burn"_s), u"C:\\usr\\bin\\k3b"_s);
    QCOMPARE(stored(u"fif_type"_s), u"4"_s);
    QCOMPARE(stored(u"genre_type"_s), u"2"_s);
    QCOMPARE(stored(u"vol_type"_s), u"80"_s);
}

void TestQuilmoMain::exit_without_burning_program_leaves_the_stored_one()
{
    store(u"location_burn"_s, u"C:\\old"_s);
    open_window();
    QCOMPARE(shared.burn_program_path, u"C:\\old"_s);
    shared.burn_program_path.clear();
    window_->close();
    QCOMPARE(stored(u"location_burn"_s), u"C:\\old"_s);
    QCOMPARE(stored(u"vol_type"_s), u"35"_s);
}

void TestQuilmoMain::exit_entry_closes()
{
    open_window();
    shared.vol_type = 12;
    entry(u"menu_File_Exit"_s).trigger();
    QVERIFY(!window_->isVisible());
    QCOMPARE(stored(u"vol_type"_s), u"12"_s);
    QCOMPARE(stored(u"location_burn"_s), u"(none)"_s);
}

void TestQuilmoMain::detail_fields_live_as_long_as_the_form()
{
    QVERIFY(shared.detail_fields == nullptr);
    window_ = std::make_unique<QuilmoMain>();
    QVERIFY(shared.detail_fields != nullptr);
    window_.reset();
    QVERIFY(shared.detail_fields == nullptr);
}

void TestQuilmoMain::every_control_has_its_names_data()
{
    QTest::addColumn<QString>("name");
    const QString names = u"PlayBtn StopBtn ReBtn FastBtn backBtn frontBtn cmd_select_all cmdRemove Change_all cmdBurn "
                          "cmdSave tvTreeView lvListView main_toolbar StatusBar1 txtFilename txtArtist txtTitle "
                          "txtGenre Label_filesize label_title_of_player cboGenre Label1 Label2 Label3 CurrentTime "
                          "TotalTime Picture1 picSplitter Picture_mp3_back Picture_back_volume volume_button "
                          "Picture_back_play_index play_index_button muteBtn Picture_filename Picture_artist "
                          "Picture_title Picture_genre Picture_length imgSplitter Picture_top_back"_s;
    for (const QString& name : names.split(u' '))
        QTest::newRow(qPrintable(name)) << name;
}

void TestQuilmoMain::every_control_has_its_names()
{
    QFETCH(const QString, name);
    static const QStringList ornaments = {u"Picture1"_s, u"picSplitter"_s, u"Picture_top_back"_s};
    window_ = std::make_unique<QuilmoMain>();
    const QList<QWidget*> found = window_->findChildren<QWidget*>(name);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first()->accessibleName().isEmpty(), ornaments.contains(name));
}

void TestQuilmoMain::tool_tips_data()
{
    QTest::addColumn<QString>("tip");
    QTest::newRow("cmd_select_all") << u"Select all the files in the current folder"_s;
    QTest::newRow("cmdRemove") << u"Cancel all selections made in the current folder"_s;
    QTest::newRow("Change_all") << u"You can see the list of all the selected MP3 files"_s;
    QTest::newRow("cmdBurn") << u"Run the burning program"_s;
    QTest::newRow("cmdSave") << u"Change the filename into FIF format"_s;
    QTest::newRow("muteBtn") << u"Mute"_s;
}

void TestQuilmoMain::tool_tips()
{
    window_ = std::make_unique<QuilmoMain>();
    QTEST(control<QWidget>(QString::fromUtf8(QTest::currentDataTag())).toolTip(), "tip");
    const auto& bar = control<Toolbar>(u"main_toolbar"_s);
    const std::map<int, std::pair<QString, QString>> buttons = {{1, {u"Add"_s, u"New Folder"_s}},
                                                                {2, {u"Copy"_s, u"Copy"_s}},
                                                                {4, {u"Paste"_s, u"Paste"_s}},
                                                                {5, {u"Delete"_s, u"Delete"_s}},
                                                                {7, {u"Refresh"_s, u"Refresh"_s}}};
    QCOMPARE(bar.actions().size(), 7);
    for (const auto& [index, button] : buttons) {
        QCOMPARE(bar.button(index), bar.button(button.first));
        QCOMPARE(bar.button(index)->toolTip(), button.second);
    }
}

void TestQuilmoMain::menus_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QStringList>("entries"); ///< name, caption and shortcut; a separator has a name only
    QTest::newRow("mnufile") << QString() << QStringList{u"mnu_tree_add_folder|New Folder"_s,
                                                         u"mnufile_line_1"_s,
                                                         u"mnu_tree_copy|Copy"_s,
                                                         u"mnu_tree_paste|Paste"_s,
                                                         u"mnufile_line_2"_s,
                                                         u"mnu_tree_delete|Delete"_s,
                                                         u"mnu_tree_rename|Rename"_s};
    QTest::newRow("mnu_ListView") << QString() << QStringList{u"mnu_ListView_auto|Auto Convert"_s,
                                                              u"mnu_ListView_select_all|Select All"_s,
                                                              u"mnu_ListView_line_1"_s,
                                                              u"mnu_ListView_copy|Copy"_s,
                                                              u"mnu_ListView_paste|Paste"_s,
                                                              u"mnu_ListView_line_2"_s,
                                                              u"mnu_ListView_delete|Delete"_s,
                                                              u"mnu_ListView_rename|Rename"_s};
    QTest::newRow("menu_File") << u"File"_s
                               << QStringList{u"menu_File_add_folder|New Folder|Ctrl+Shift+N"_s,
                                              u"menu_File_Exit|Exit|Ctrl+Q"_s};
    QTest::newRow("menu_Edit") << u"Edit"_s
                               << QStringList{u"menu_Edit_copy|Copy|Ctrl+C"_s, u"menu_Edit_paste|Paste|Ctrl+V"_s,
                                              u"menu_Edit_delete|Delete|Del"_s};
    QTest::newRow("menu_View") << u"View"_s
                               << QStringList{u"menu_View_list|List"_s, u"menu_View_details|Details"_s,
                                              u"menu_View_refresh|Refresh|F5"_s};
    QTest::newRow("menu_Tool") << u"Tools"_s
                               << QStringList{u"menu_Tool_Select_all|Select All"_s,
                                              u"menu_Tool_clear_all|Clear All"_s,
                                              u"menu_Tool_line_1"_s,
                                              u"menu_Tool_Select_FIF_Format|Set FIF Type"_s,
                                              u"menu_Tool_Set_Genre_Type|Set Genre Type"_s,
                                              u"menu_Tool_display_final_list|Display Final List"_s,
                                              u"menu_Tool_line_2"_s,
                                              u"menu_Tool_Burn|Burn"_s,
                                              u"menu_Tool_Select_Burning_Program|Select Burning Program"_s};
    QTest::newRow("menu_Help") << u"Help"_s << QStringList{u"menu_Help_about|About..."_s};
}

void TestQuilmoMain::menus()
{
    QFETCH(const QString, caption);
    QFETCH(const QStringList, entries);
    window_ = std::make_unique<QuilmoMain>();
    const auto& menu = control<QMenu>(QString::fromUtf8(QTest::currentDataTag()));
    QCOMPARE(without_mnemonic(menu.title()), caption);
    QStringList found;
    for (const QAction* action : menu.actions()) {
        QStringList words = {action->objectName(), without_mnemonic(action->text()), action->shortcut().toString()};
        QCOMPARE(action->isSeparator(), action->text().isEmpty());
        while (words.last().isEmpty())
            words.removeLast();
        found.append(words.join(u'|'));
    }
    QCOMPARE(found, entries);
}

void TestQuilmoMain::every_command_works()
{
    window_ = std::make_unique<QuilmoMain>();
    for (const QMenu* menu : window_->findChildren<QMenu*>()) {
        for (const QAction* command : menu->actions())
            QVERIFY2(command->isSeparator() || command->isEnabled(), qPrintable(command->objectName()));
    }
    for (const QAction* button : control<Toolbar>(u"main_toolbar"_s).actions())
        QVERIFY(button->isEnabled());
}

void TestQuilmoMain::list_menu_follows_the_press()
{
    show_music_folder();
    auto& list = control<ListView>(u"lvListView"_s);
    auto& menu = control<QMenu>(u"mnu_ListView"_s);
    const auto right_click = [&](QPoint place) {
        QWidget* viewport = list.view()->viewport();
        QTest::mouseClick(viewport, Qt::RightButton, {}, viewport->mapFrom(&list, place));
        QVERIFY(menu.isVisible());
        menu.close();
    };
    right_click(list.rect().center());
    QVERIFY(!entry(u"mnu_ListView_select_all"_s).isEnabled());
    right_click(list.row_rect(2).center());
    QVERIFY(entry(u"mnu_ListView_select_all"_s).isEnabled());
    QVERIFY(entry(u"mnu_ListView_rename"_s).isEnabled());
    entry(u"mnu_ListView_select_all"_s).trigger();
    QCOMPARE(shared.final_list_count, i32(3));
}

void TestQuilmoMain::view_entries()
{
    open_window();
    const auto& list = control<ListView>(u"lvListView"_s);
    entry(u"menu_View_list"_s).trigger();
    QCOMPARE(list.View(), ListView::ViewMode::list);
    QVERIFY(entry(u"menu_View_list"_s).isChecked());
    QVERIFY(!entry(u"menu_View_details"_s).isChecked());
    entry(u"menu_View_list"_s).trigger();
    QVERIFY(entry(u"menu_View_list"_s).isChecked());
    entry(u"menu_View_details"_s).trigger();
    QCOMPARE(list.View(), ListView::ViewMode::report);
    QVERIFY(!entry(u"menu_View_list"_s).isChecked());
    QVERIFY(entry(u"menu_View_details"_s).isChecked());
}

void TestQuilmoMain::a_folder_is_shown()
{
    show_music_folder();
    const auto& bar = control<StatusBar>(u"StatusBar1"_s);
    QCOMPARE(bar.panel_text(1), u"3 File"_s);
    QCOMPARE(bar.panel_text(2), u"0 MB"_s);
    auto& list = control<ListView>(u"lvListView"_s);
    int row = 1;
    while (list.Item(row).Text != u"[Band][One].mp3"_s)
        ++row;
    Q_EMIT list.ItemClick(row);
    QCOMPARE(control<TextBox>(u"txtFilename"_s).Text(), u"[Band][One].mp3"_s);
    QCOMPARE(control<TextBox>(u"txtArtist"_s).Text(), u"Band"_s);
    QCOMPARE(control<TextBox>(u"txtTitle"_s).Text(), u"One"_s);

    // The computer's node empties the rows and leaves all else.
    auto& tree = control<TreeView>(u"tvTreeView"_s);
    Q_EMIT tree.NodeClick(tree.Item(u"MYCOMPUTER"_s));
    QCOMPARE(list.Count(), 0);
    QCOMPARE(bar.panel_text(1), u"3 File"_s);
    QCOMPARE(control<TextBox>(u"txtArtist"_s).Text(), u"Band"_s);
}

void TestQuilmoMain::file_name_box_cannot_be_changed()
{
    show_music_folder();
    auto& box = control<TextBox>(u"txtFilename"_s);
    const auto& list = control<ListView>(u"lvListView"_s);
    const QString key = list.Item(list.SelectedItem()).Key;
    QCOMPARE(box.Text(), key);
    QVERIFY(box.isReadOnly());
    box.set_Text(u"other.mp3"_s);
    QCOMPARE(box.Text(), key);
    box.set_Text({});
    QCOMPARE(box.Text(), key);
    control<ListView>(u"lvListView"_s).Clear();
    box.set_Text(u"other.mp3"_s);
    QCOMPARE(box.Text(), QString());
}

void TestQuilmoMain::refresh_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("F5") << u"F5"_s;
    QTest::newRow("the toolbar") << u"toolbar"_s;
    QTest::newRow("the menu") << u"menu"_s;
}

void TestQuilmoMain::refresh()
{
    QFETCH(const QString, way);
    show_music_folder();
    disk_->write(u"C:\\Music\\four.mp3"_s, sample_audio());
    if (way == u"F5"_s)
        press(Qt::Key_F5);
    else if (way == u"toolbar"_s)
        control<Toolbar>(u"main_toolbar"_s).button(u"Refresh"_s)->trigger();
    else
        entry(u"menu_View_refresh"_s).trigger();
    QCOMPARE(control<ListView>(u"lvListView"_s).Count(), 4);
}

void TestQuilmoMain::buttons_and_entries_pick_data()
{
    QTest::addColumn<bool>("by_menu");
    QTest::newRow("by buttons") << false;
    QTest::newRow("by menu entries") << true;
}

void TestQuilmoMain::buttons_and_entries_pick()
{
    QFETCH(const bool, by_menu);
    show_music_folder();
    const auto run = [&](const QString& button, const QString& menu_entry) {
        if (by_menu)
            entry(menu_entry).trigger();
        else
            QTest::mouseClick(&control<UsrButton>(button), Qt::LeftButton);
    };
    run(u"Change_all"_s, u"menu_Tool_display_final_list"_s);
    QCOMPARE(messages_->take(), QStringList{u"Select MP3 File"_s});
    run(u"cmd_select_all"_s, u"menu_Tool_Select_all"_s);
    QCOMPARE(shared.final_list_count, i32(3));
    QCOMPARE(control<StatusBar>(u"StatusBar1"_s).panel_text(3), u"3 files/0MB"_s);
    run(u"cmdRemove"_s, u"menu_Tool_clear_all"_s);
    QCOMPARE(shared.final_list_count, i32(0));
    QCOMPARE(control<StatusBar>(u"StatusBar1"_s).panel_text(3), u"0 files/0MB"_s);
}

void TestQuilmoMain::final_list_dialog_opens_and_goes()
{
    show_music_folder();
    entry(u"menu_Tool_Select_all"_s).trigger();
    QFile::remove(QFile::decodeName(disk_->native(u"C:\\Music\\two.mp3"_s)));
    int seen = 0;
    QTimer::singleShot(0, this, [&] {
        auto* dialog = window_->findChild<FIF_convert*>(u"FIF_convert"_s);
        QVERIFY(dialog != nullptr);
        QVERIFY(dialog->isModal());
        ++seen;
        dialog->close();
    });
    QTest::mouseClick(&control<UsrButton>(u"Change_all"_s), Qt::LeftButton);
    QCOMPARE(seen, 1);
    QVERIFY(window_->findChild<FIF_convert*>(u"FIF_convert"_s) == nullptr);
    // The dialog drops what has vanished; the main window's total follows.
    QCOMPARE(control<StatusBar>(u"StatusBar1"_s).panel_text(3), u"2 files/0MB"_s);
}

void TestQuilmoMain::the_total_follows_while_the_final_list_is_open()
{
    show_music_folder();
    entry(u"menu_Tool_Select_all"_s).trigger();
    const auto total = [this] { return control<StatusBar>(u"StatusBar1"_s).panel_text(3); };
    QString before;
    QString after;
    QTimer::singleShot(0, this, [&] {
        auto* dialog = window_->findChild<FIF_convert*>(u"FIF_convert"_s);
        QFile::remove(QFile::decodeName(disk_->native(u"C:\\Music\\two.mp3"_s)));
        before = total();
        QTest::mouseClick(dialog->findChild<UsrButton*>(u"Change_FIF"_s), Qt::LeftButton);
        after = total();
        dialog->close();
    });
    QTest::mouseClick(&control<UsrButton>(u"Change_all"_s), Qt::LeftButton);
    QCOMPARE(before, u"3 files/0MB"_s);
    QCOMPARE(after, u"2 files/0MB"_s);
}

/// Copies the final list by the dialogs; gives the names that are in the folder then.
QStringList TestQuilmoMain::copy_final_list_into(const QString& folder)
{
    QStringList copied;
    QTimer::singleShot(0, this, [&] {
        QTimer::singleShot(0, this, [&] {
            auto* dialog = window_->findChild<File_copy_Dlg*>(u"File_copy_Dlg"_s);
            QVERIFY(dialog != nullptr);
            QVERIFY(dialog->isModal());
            auto* folders = dialog->findChild<TreeView*>(u"FileCopyTreeView"_s);
            QVERIFY(!folders->Item(1)->children().empty());
            folders->set_Selected(folders->Item(folder));
            Q_EMIT folders->NodeClick(folders->SelectedItem());
            QTest::mouseClick(dialog->findChild<UsrButton*>(u"cmd_ok"_s), Qt::LeftButton);
            copied = QDir(QFile::decodeName(disk_->native(folder))).entryList(QDir::Files, QDir::Name);
        });
        auto* dialog = window_->findChild<FIF_convert*>(u"FIF_convert"_s);
        QTest::mouseClick(dialog->findChild<UsrButton*>(u"cmd_transfer"_s), Qt::LeftButton);
        dialog->close();
    });
    QTest::mouseClick(&control<UsrButton>(u"Change_all"_s), Qt::LeftButton);
    return copied;
}

void TestQuilmoMain::final_list_is_copied_into_a_chosen_folder()
{
    show_music_folder();
    disk_->make_folder(u"C:\\Disc"_s);
    entry(u"menu_Tool_Select_all"_s).trigger();
    QCOMPARE(copy_final_list_into(u"C:\\Disc"_s), (QStringList{u"[Band][One].mp3"_s, u"three.mp3"_s, u"two.mp3"_s}));
    QVERIFY(disk_->exists(u"C:\\Music\\three.mp3"_s));
}

void TestQuilmoMain::a_file_behind_an_unticked_one_is_left_out_of_the_copy()
{
    show_music_folder();
    disk_->make_folder(u"C:\\Disc"_s);
    entry(u"menu_Tool_Select_all"_s).trigger();
    auto& list = control<ListView>(u"lvListView"_s);
    Driver(*window_).click_check_box(list, 1);
    const QString second = list.Item(2).Text;
    QCOMPARE(copy_final_list_into(u"C:\\Disc"_s), QStringList{second});
    QCOMPARE(control<StatusBar>(u"StatusBar1"_s).panel_text(3), u"2 files/0MB"_s);
}

void TestQuilmoMain::burning_starts_from_button_and_entries_data()
{
    QTest::addColumn<bool>("chooses");
    QTest::newRow("cmdBurn") << false;
    QTest::newRow("menu_Tool_Burn") << false;
    QTest::newRow("menu_Tool_Select_Burning_Program") << true;
}

void TestQuilmoMain::burning_starts_from_button_and_entries()
{
    open_window();
    shared.burn_program_path = u"C:\\gone.exe"_s;
    int choices = 0;
    set_file_chooser([&choices](const CommonDialog& /*dialog*/) {
        ++choices;
        return QString();
    });
    const QString name = QString::fromUtf8(QTest::currentDataTag());
    if (auto* button = window_->findChild<UsrButton*>(name))
        QTest::mouseClick(button, Qt::LeftButton);
    else
        entry(name).trigger();
    set_file_chooser({});
    QFETCH(const bool, chooses);
    QCOMPARE(choices, chooses ? 1 : 0);
    QCOMPARE(messages_->take().size(), chooses ? 0 : 1);
}

void TestQuilmoMain::rows_are_dragged_onto_the_tree()
{
    show_music_folder();
    disk_->make_folder(u"C:\\Music\\Old"_s);
    entry(u"menu_View_refresh"_s).trigger();
    auto& tree = control<TreeView>(u"tvTreeView"_s);
    auto& list = control<ListView>(u"lvListView"_s);
    tree.set_Expanded(tree.Item(u"C:\\Music"_s), true);
    const QString name = list.Item(1).Text;
    set_drag_runner([&tree](QDrag& drag) {
        const QPoint target = tree.node_rect(tree.Item(u"C:\\Music\\Old"_s)).center();
        QDragEnterEvent enter(target, Qt::CopyAction, drag.mimeData(), Qt::LeftButton, {});
        QApplication::sendEvent(tree.viewport(), &enter);
        QDropEvent drop(target, Qt::CopyAction, drag.mimeData(), Qt::LeftButton, {});
        QApplication::sendEvent(tree.viewport(), &drop);
    });
    QWidget* const rows = list.view()->viewport();
    const QPoint from = rows->mapFrom(&list, list.row_rect(1).center());
    const QPoint to = from + QPoint(QApplication::startDragDistance(), 0);
    QTest::mousePress(rows, Qt::LeftButton, {}, from);
    QMouseEvent pull(QEvent::MouseMove, to, rows->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(rows, &pull);
    QTest::mouseRelease(rows, Qt::LeftButton, {}, to);
    set_drag_runner({});
    QVERIFY(disk_->exists(u"C:\\Music\\Old\\"_s + name));
    QVERIFY(!disk_->exists(u"C:\\Music\\"_s + name));
    QCOMPARE(list.Count(), 1);
    QCOMPARE(tree.SelectedItem()->Key(), u"C:\\Music\\Old"_s);
}

void TestQuilmoMain::closing_ends_the_open_dialogs()
{
    show_music_folder();
    entry(u"menu_Tool_Select_all"_s).trigger();
    int open_dialogs = 0;
    QTimer::singleShot(0, this, [&] {
        auto* final_list = window_->findChild<FIF_convert*>(u"FIF_convert"_s);
        QVERIFY(final_list != nullptr);
        QTimer::singleShot(0, this, [&] {
            open_dialogs = static_cast<int>(window_->findChildren<QDialog*>().size());
            window_->close();
        });
        Q_EMIT final_list->edit_wanted();
    });
    QTest::mouseClick(&control<UsrButton>(u"Change_all"_s), Qt::LeftButton);
    QCOMPARE(open_dialogs, 2);
    QVERIFY(window_->findChildren<QDialog*>().isEmpty());
    QVERIFY(!window_->isVisible());
    QCOMPARE(stored(u"fif_type"_s), u"1"_s);
}

void TestQuilmoMain::focus_is_noted_data()
{
    QTest::addColumn<int>("pane");
    QTest::addColumn<int>("enter_saves"); ///< after 1
    QTest::newRow("tvTreeView") << 1 << 1;
    QTest::newRow("lvListView") << 2 << 1;
    QTest::newRow("txtArtist") << 3 << 0;
    QTest::newRow("txtFilename") << 4 << 0;
    QTest::newRow("txtTitle") << 5 << 0;
    QTest::newRow("txtGenre") << 6 << 0;
    QTest::newRow("label_title_of_player") << 7 << 1;
    QTest::newRow("cboGenre") << 0 << 0;
    QTest::newRow("cmdSave") << 9 << 1;
}

void TestQuilmoMain::focus_is_noted()
{
    const QString name = QString::fromUtf8(QTest::currentDataTag());
    if (name == u"txtGenre"_s)
        store(u"genre_type"_s, u"2"_s);
    open_window();
    control<QWidget>(u"cmdBurn"_s).setFocus();
    shared.focus_pane = 9;
    shared.enter_saves = 1;
    auto* widget = &control<QWidget>(name);
    if (const auto* list = qobject_cast<ListView*>(widget))
        widget = list->view();
    widget->setFocus(Qt::TabFocusReason);
    QTEST(int(shared.focus_pane), "pane");
    QTEST(int(shared.enter_saves), "enter_saves");
}

void TestQuilmoMain::enter_runs_the_save_button()
{
    open_window();
    auto& button = control<UsrButton>(u"cmdSave"_s);
    const QSignalSpy clicks(&button, &UsrButton::Click);
    button.setFocus(Qt::TabFocusReason);
    QCOMPARE(button.shown(), UsrButton::Shown::move);
    press(Qt::Key_Return);
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(button.shown(), UsrButton::Shown::up);
    press(Qt::Key_Enter);
    QCOMPARE(clicks.size(), 2);

    // The pointer over the button is enough.
    control<QWidget>(u"txtArtist"_s).setFocus(Qt::TabFocusReason);
    QTest::mouseMove(&button, QPoint(5, 5));
    press(Qt::Key_Return);
    QCOMPARE(clicks.size(), 3);
}

void TestQuilmoMain::enter_elsewhere_is_the_controls_own()
{
    open_window();
    const QSignalSpy clicks(&control<UsrButton>(u"cmdSave"_s), &UsrButton::Click);
    auto& box = control<TextBox>(u"txtArtist"_s);
    const QSignalSpy returns(&box, &QLineEdit::returnPressed);
    box.setFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    QCOMPARE(clicks.size(), 0);
    QCOMPARE(returns.size(), 1);
}

void TestQuilmoMain::f1_opens_the_web_address()
{
    QList<QUrl> opened;
    set_address_opener([&](const QUrl& address) {
        opened.append(address);
        return true;
    });
    open_window();
    press(Qt::Key_F1);
    QCOMPARE(opened, QList<QUrl>{QUrl(u"https://quilmo.example/"_s)});
}

void TestQuilmoMain::f1_without_a_browser_shows_nothing()
{
    set_address_opener([](const QUrl&) { return false; });
    open_window();
    press(Qt::Key_F1);
    QCOMPARE(messages_->take(), QStringList());
    QCOMPARE(QApplication::activeWindow(), window_.get());
}

void TestQuilmoMain::tab_reaches_the_controls()
{
    open_window();
    QStringList reached;
    control<QWidget>(u"cmd_select_all"_s).setFocus();
    for (int i = 0; i < 40 && !reached.contains(QApplication::focusWidget()->objectName()); ++i) {
        reached.append(QApplication::focusWidget()->objectName());
        press(Qt::Key_Tab);
    }
    for (const QString& name : {u"cmdRemove"_s, u"Change_all"_s, u"cmdBurn"_s, u"tvTreeView"_s, u"txtArtist"_s,
                                u"txtTitle"_s, u"cboGenre"_s, u"cmdSave"_s, u"PlayBtn"_s, u"FastBtn"_s, u"muteBtn"_s})
        QVERIFY2(reached.contains(name), qPrintable(name));
    QVERIFY(!reached.contains(u"txtGenre"_s));
}

QUILMO_UI_TEST(TestQuilmoMain)
#include "test_quilmo_main.moc"
