#include "convert/genre_controls.h"
#include "core/mod_of_grobal_var.h"
#include "frame/Help_Dlg.h"
#include "frame/QuilmoMain.h"
#include "frame/look.h"
#include "frame/mnemonics.h"
#include "platform/controls/ShellExecute.h"
#include "platform/language.h"
#include "sample_files.h"
#include "test_main.h"

#include <QApplication>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

/// All stops of the Tab key, in their order; a list is called by its own name, whatever view it shows.
const QStringList stops = {u"Add"_s,
                           u"Copy"_s,
                           u"Paste"_s,
                           u"Delete"_s,
                           u"Refresh"_s,
                           u"cmd_select_all"_s,
                           u"cmdRemove"_s,
                           u"Change_all"_s,
                           u"cmdBurn"_s,
                           u"tvTreeView"_s,
                           u"imgSplitter"_s,
                           u"lvListView"_s,
                           u"txtFilename"_s,
                           u"txtArtist"_s,
                           u"txtTitle"_s,
                           u"cboGenre"_s,
                           u"Label_filesize"_s,
                           u"cmdSave"_s,
                           u"Picture_back_play_index"_s,
                           u"ReBtn"_s,
                           u"backBtn"_s,
                           u"PlayBtn"_s,
                           u"StopBtn"_s,
                           u"frontBtn"_s,
                           u"FastBtn"_s,
                           u"muteBtn"_s,
                           u"Picture_back_volume"_s};

QString stop_name(const QWidget& widget)
{
    if (const auto* button = qobject_cast<const QToolButton*>(&widget))
        return button->defaultAction()->objectName();
    if (qobject_cast<const ListView*>(widget.parentWidget()) != nullptr)
        return widget.parentWidget()->objectName();
    return widget.objectName();
}

QString stop_with_focus()
{
    return stop_name(*QApplication::focusWidget());
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QWidget* popup = QApplication::activePopupWidget();
    QTest::keyClick(popup != nullptr ? popup : QApplication::focusWidget(), key, modifiers);
}

QMenu* open_menu()
{
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

QStringList names_of(const QList<QAction*>& entries)
{
    QStringList names;
    for (const QAction* entry : entries) {
        if (!entry->isSeparator())
            names.append(entry->objectName());
    }
    return names;
}

} // namespace

class TestKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void a_caption_takes_a_free_letter();
    void a_caption_takes_a_free_letter_data();
    void entries_of_a_menu_share_no_letter();
    void entries_of_a_menu_share_no_letter_data();
    void arrows_reach_every_entry_of_the_bar();
    void arrows_reach_every_entry_of_the_bar_data();
    void letters_open_and_choose();
    void letters_open_and_choose_data();
    void the_about_box_opens_and_closes();
    void enter_in_the_menu_bar_saves_nothing();

    void ctrl_q_ends();
    void ctrl_shift_n_makes_a_folder();
    void ctrl_shift_n_needs_no_open_menu();
    void shortcuts_are_the_expected_ones();
    void a_key_held_down_acts_once();
    void f2_renames_in_the_pane_used_last();
    void f2_renames_in_the_pane_used_last_data();
    void keys_open_the_menu_of_a_row();
    void keys_open_the_menu_of_a_row_data();

    void tab_goes_round();
    void tab_reaches_the_list_in_either_view();
    void tab_reaches_the_box_for_typed_genres();
    void focus_can_be_seen();
    void toolbar_buttons_are_pressed_by_space();

private:
    void open_window(Language language = english);
    void show_music_folder(Language language = english);
    template<typename Control> Control& control(const QString& name) const
    {
        auto* found = window_->findChild<Control*>(name);
        if (found == nullptr)
            qFatal("no control %s", qPrintable(name));
        return *found;
    }
    QList<QWidget*> all_menus() const;

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<QuilmoMain> window_;
};

void TestKeyboard::initTestCase()
{
    apply_look();
}

void TestKeyboard::init()
{
    disk_ = std::make_unique<TestDisk>();
}

void TestKeyboard::cleanup()
{
    while (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
    window_.reset();
    disk_.reset();
    set_program_language(english);
}

void TestKeyboard::open_window(Language language)
{
    set_program_language(language);
    window_ = std::make_unique<QuilmoMain>();
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void TestKeyboard::show_music_folder(Language language)
{
    for (const QString& name : {u"[Band][One].mp3"_s, u"two.mp3"_s, u"three.mp3"_s})
        disk_->write(u"C:\\Music\\"_s + name, sample_audio());
    open_window(language);
    auto& tree = control<TreeView>(u"tvTreeView"_s);
    tree.set_Selected(tree.Item(u"C:\\Music"_s));
    Q_EMIT tree.NodeClick(tree.SelectedItem());
    QCOMPARE(control<ListView>(u"lvListView"_s).Count(), 3);
}

/// The menu bar with its menus, and the two pop-up menus.
QList<QWidget*> TestKeyboard::all_menus() const
{
    QList<QWidget*> menus = {window_->menuBar(), &control<QMenu>(u"mnufile"_s), &control<QMenu>(u"mnu_ListView"_s)};
    for (const QAction* title : window_->menuBar()->actions())
        menus.append(title->menu());
    return menus;
}

void TestKeyboard::a_caption_takes_a_free_letter_data()
{
    QTest::addColumn<QStringList>("captions");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("its first") << QStringList{u"Copy"_s, u"Paste"_s} << QStringList{u"&Copy"_s, u"&Paste"_s};
    QTest::newRow("its next one when that is taken")
        << QStringList{u"Set"_s, u"Select"_s, u"Sense"_s} << QStringList{u"&Set"_s, u"S&elect"_s, u"Se&nse"_s};
    QTest::newRow("whatever its case") << QStringList{u"Auto"_s, u"aU"_s, u"ua"_s}
                                       << QStringList{u"&Auto"_s, u"a&U"_s, u"ua"_s};
    QTest::newRow("none when all are taken")
        << QStringList{u"A"_s, u"a"_s, u"B"_s} << QStringList{u"&A"_s, u"a"_s, u"&B"_s};
    QTest::newRow("a digit") << QStringList{u"5 s"_s, u"5"_s} << QStringList{u"&5 s"_s, u"5"_s};
    QTest::newRow("neither sign nor space") << QStringList{u"? l"_s} << QStringList{u"? &l"_s};
    QTest::newRow("none beyond A to Z") << QStringList{u"복사"_s, u"\u00c4rger"_s}
                                        << QStringList{u"복사"_s, u"\u00c4&rger"_s};
    QTest::newRow("among other letters") << QStringList{u"장르 FIF"_s} << QStringList{u"장르 &FIF"_s};
    QTest::newRow("its own sign is doubled")
        << QStringList{u"& Co"_s, u"R&B"_s} << QStringList{u"&& &Co"_s, u"&R&&B"_s};
    QTest::newRow("a separator") << QStringList{u"One"_s, QString(), u"On"_s} << QStringList{u"&One"_s, {}, u"O&n"_s};
}

void TestKeyboard::a_caption_takes_a_free_letter()
{
    QFETCH(const QStringList, captions);
    QFETCH(const QStringList, texts);
    QCOMPARE(with_mnemonics(captions), texts);
    for (int i = 0; i < captions.size(); ++i)
        QCOMPARE(without_mnemonic(texts[i]), captions[i]);
}

void TestKeyboard::entries_of_a_menu_share_no_letter_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<int>("letters"); ///< of the titles in the bar
    QTest::newRow("English") << english << 5;
    QTest::newRow("Korean") << korean << 0;
    QTest::newRow("German") << german << 5;
}

void TestKeyboard::entries_of_a_menu_share_no_letter()
{
    QFETCH(const Language, language);
    open_window(language);
    for (const QWidget* menu : all_menus()) {
        QSet<QString> letters;
        for (const QAction* entry : menu->actions()) {
            const QKeySequence letter = QKeySequence::mnemonic(entry->text());
            QVERIFY2(letter.isEmpty() || !letters.contains(letter.toString()), qPrintable(entry->objectName()));
            if (!letter.isEmpty())
                letters.insert(letter.toString());
            if (language != korean)
                QVERIFY2(entry->isSeparator() || !letter.isEmpty(), qPrintable(entry->objectName()));
        }
        if (menu == window_->menuBar())
            QTEST(static_cast<int>(letters.size()), "letters");
    }
}

void TestKeyboard::arrows_reach_every_entry_of_the_bar_data()
{
    QTest::addColumn<Language>("language");
    QTest::newRow("English") << english;
    QTest::newRow("Korean, where the titles have no letters") << korean;
}

// F10 opens the first menu.
void TestKeyboard::arrows_reach_every_entry_of_the_bar()
{
    QFETCH(const Language, language);
    show_music_folder(language);
    const QWidget* before = QApplication::focusWidget();
    press(Qt::Key_F10);
    for (const QAction* title : window_->menuBar()->actions()) {
        QMenu* menu = open_menu();
        QCOMPARE(menu, title->menu());
        QStringList reached;
        while (menu->activeAction() == nullptr || !reached.contains(menu->activeAction()->objectName())) {
            if (menu->activeAction() != nullptr)
                reached.append(menu->activeAction()->objectName());
            press(Qt::Key_Down);
        }
        reached.sort();
        QStringList entries = names_of(menu->actions());
        entries.sort();
        QCOMPARE(reached, entries);
        press(Qt::Key_Right);
    }
    QCOMPARE(open_menu(), window_->menuBar()->actions().first()->menu());
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    QVERIFY(open_menu() == nullptr);
    QCOMPARE(QApplication::focusWidget(), before);
}

void TestKeyboard::letters_open_and_choose_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<int>("menu");
    QTest::addColumn<int>("entry");
    QTest::newRow("View, List") << english << int(Qt::Key_V) << int(Qt::Key_L);
    QTest::newRow("Ansicht, Auflisten") << german << int(Qt::Key_A) << int(Qt::Key_A);
}

void TestKeyboard::letters_open_and_choose()
{
    QFETCH(const Language, language);
    QFETCH(const int, menu);
    QFETCH(const int, entry);
    open_window(language);
    control<QWidget>(u"txtArtist"_s).setFocus();
    press(static_cast<Qt::Key>(menu), Qt::AltModifier);
    QCOMPARE(open_menu(), &control<QMenu>(u"menu_View"_s));
    press(static_cast<Qt::Key>(entry));
    QCOMPARE(control<ListView>(u"lvListView"_s).View(), ListView::ViewMode::list);
    QVERIFY(open_menu() == nullptr);
}

void TestKeyboard::the_about_box_opens_and_closes()
{
    open_window();
    bool was_open = false;
    QTimer::singleShot(0, this, [&] {
        was_open = qobject_cast<Help_Dlg*>(QApplication::activeModalWidget()) != nullptr;
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
    });
    press(Qt::Key_H, Qt::AltModifier);
    press(Qt::Key_A);
    QVERIFY(was_open);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void TestKeyboard::enter_in_the_menu_bar_saves_nothing()
{
    open_window();
    auto& save = control<UsrButton>(u"cmdSave"_s);
    const QSignalSpy clicks(&save, &UsrButton::Click);
    save.setFocus(Qt::TabFocusReason);
    press(Qt::Key_F10);
    press(Qt::Key_Escape); // the bar keeps the keys
    QCOMPARE(QApplication::focusWidget(), window_->menuBar());
    press(Qt::Key_Return);
    QCOMPARE(clicks.size(), 0);
    QCOMPARE(open_menu(), &control<QMenu>(u"menu_File"_s));
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), &save);
    press(Qt::Key_Return);
    QCOMPARE(clicks.size(), 1);
}

void TestKeyboard::ctrl_q_ends()
{
    open_window();
    control<QWidget>(u"txtArtist"_s).setFocus();
    press(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!window_->isVisible());
}

void TestKeyboard::ctrl_shift_n_makes_a_folder()
{
    show_music_folder();
    press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(disk_->exists(u"C:\\Music\\new folder"_s));
    QVERIFY(!control<QAction>(u"menu_File_add_folder"_s).autoRepeat());
}

void TestKeyboard::ctrl_shift_n_needs_no_open_menu()
{
    show_music_folder();
    auto& tree = control<TreeView>(u"tvTreeView"_s);
    TreeNode* const folder = tree.SelectedItem();
    tree.set_Selected(tree.Item(u"MYCOMPUTER"_s));
    press(Qt::Key_F10);
    QVERIFY(!control<QAction>(u"menu_File_add_folder"_s).isEnabled());
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier); // the computer takes no folder
    tree.set_Selected(folder);
    press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(disk_->exists(u"C:\\Music\\new folder"_s));
}

void TestKeyboard::shortcuts_are_the_expected_ones()
{
    open_window();
    QStringList found;
    for (const QAction* entry : window_->findChildren<QAction*>()) {
        if (!entry->shortcut().isEmpty())
            found.append(entry->objectName() + u' ' + entry->shortcut().toString());
    }
    found.sort();
    QCOMPARE(found, (QStringList{u"menu_Edit_copy Ctrl+C"_s, u"menu_Edit_delete Del"_s, u"menu_Edit_paste Ctrl+V"_s,
                                 u"menu_File_Exit Ctrl+Q"_s, u"menu_File_add_folder Ctrl+Shift+N"_s,
                                 u"menu_View_refresh F5"_s}));
}

void TestKeyboard::a_key_held_down_acts_once()
{
    int opened = 0;
    set_address_opener([&opened](const QUrl&) { return ++opened > 0; });
    open_window();
    auto& save = control<UsrButton>(u"cmdSave"_s);
    const QSignalSpy clicks(&save, &UsrButton::Click);
    save.setFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_F1, Qt::Key_Return}) {
        for (const bool repeated : {false, true, true}) {
            QKeyEvent event(QEvent::KeyPress, key, {}, {}, repeated);
            QApplication::sendEvent(&save, &event);
        }
    }
    set_address_opener({});
    QCOMPARE(opened, 1);
    QCOMPARE(clicks.size(), 1);
}

void TestKeyboard::f2_renames_in_the_pane_used_last_data()
{
    QTest::addColumn<int>("focus_pane");
    QTest::addColumn<bool>("in_tree");
    QTest::addColumn<bool>("in_list");
    QTest::newRow("the tree") << int(pane_tree) << true << false;
    QTest::newRow("the list") << int(pane_list) << false << true;
    QTest::newRow("neither") << int(pane_none) << false << false;
    QTest::newRow("a text box") << int(pane_title) << false << false;
}

void TestKeyboard::f2_renames_in_the_pane_used_last()
{
    show_music_folder();
    QFETCH(const int, focus_pane);
    shared.focus_pane = static_cast<i16>(focus_pane);
    QTest::keyClick(&control<QWidget>(u"cmdBurn"_s), Qt::Key_F2);
    QTEST(control<TreeView>(u"tvTreeView"_s).is_editing(), "in_tree");
    QTEST(control<ListView>(u"lvListView"_s).is_editing(), "in_list");
}

void TestKeyboard::keys_open_the_menu_of_a_row_data()
{
    QTest::addColumn<QString>("pane");
    QTest::addColumn<QString>("menu");
    QTest::addColumn<bool>("by_menu_key");
    QTest::newRow("Shift+F10 in the tree") << u"tvTreeView"_s << u"mnufile"_s << false;
    QTest::newRow("Shift+F10 in the list") << u"lvListView"_s << u"mnu_ListView"_s << false;
    QTest::newRow("the menu key in the tree") << u"tvTreeView"_s << u"mnufile"_s << true;
    QTest::newRow("the menu key in the list") << u"lvListView"_s << u"mnu_ListView"_s << true;
}

void TestKeyboard::keys_open_the_menu_of_a_row()
{
    QFETCH(const QString, pane);
    QFETCH(const QString, menu);
    QFETCH(const bool, by_menu_key);
    show_music_folder();
    QCursor::setPos(0, 0);
    const auto& tree = control<TreeView>(u"tvTreeView"_s);
    const auto& list = control<ListView>(u"lvListView"_s);
    control<QWidget>(pane).setFocus(Qt::TabFocusReason);
    if (by_menu_key) {
        QWidget* const with_focus = qobject_cast<QAbstractItemView*>(QApplication::focusWidget())->viewport();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(with_focus, &event);
    } else {
        press(Qt::Key_F10, Qt::ShiftModifier);
    }
    QVERIFY(open_menu() != nullptr);
    QCOMPARE(open_menu()->objectName(), menu);
    const QPoint row = pane == u"tvTreeView"_s
                           ? tree.viewport()->mapToGlobal(tree.node_rect(tree.SelectedItem()).bottomLeft())
                           : list.mapToGlobal(list.row_rect(list.SelectedItem()).bottomLeft());
    QCOMPARE(open_menu()->pos(), row);
    // Every entry is a few presses away, and the first of them is chosen by Enter.
    press(Qt::Key_Down);
    QVERIFY(open_menu()->activeAction() != nullptr);
    press(Qt::Key_Escape);
    QVERIFY(open_menu() == nullptr);
}

// Whatever the toolbar's buttons do is in the menus too.
void TestKeyboard::tab_goes_round()
{
    show_music_folder();
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        control<QWidget>(u"tvTreeView"_s).setFocus(Qt::TabFocusReason);
        const qsizetype first = stops.indexOf(u"tvTreeView"_s);
        const qsizetype step = key == Qt::Key_Tab ? 1 : stops.size() - 1;
        for (qsizetype i = 0; i <= stops.size(); ++i) {
            QCOMPARE(stop_with_focus(), stops[(first + i * step) % stops.size()]);
            press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        }
    }
}

void TestKeyboard::tab_reaches_the_list_in_either_view()
{
    show_music_folder();
    control<QAction>(u"menu_View_list"_s).trigger();
    control<QWidget>(u"imgSplitter"_s).setFocus();
    press(Qt::Key_Tab);
    QCOMPARE(stop_with_focus(), u"lvListView"_s);
    press(Qt::Key_Tab);
    QCOMPARE(stop_with_focus(), u"txtFilename"_s);
}

void TestKeyboard::tab_reaches_the_box_for_typed_genres()
{
    open_window();
    constexpr i16 as_text = 2;
    show_genre_controls(control<ComboBox>(u"cboGenre"_s), control<TextBox>(u"txtGenre"_s), as_text, shared.fif_type);
    control<QWidget>(u"txtTitle"_s).setFocus();
    press(Qt::Key_Tab);
    QCOMPARE(stop_with_focus(), u"txtGenre"_s);
    press(Qt::Key_Tab);
    QCOMPARE(stop_with_focus(), u"Label_filesize"_s);
}

void TestKeyboard::focus_can_be_seen()
{
    show_music_folder();
    control<QWidget>(u"cmdBurn"_s).setFocus(Qt::TabFocusReason);
    for (qsizetype i = 0; i < stops.size(); ++i) {
        press(Qt::Key_Tab);
        QWidget* const stop = QApplication::focusWidget();
        const QImage with_focus = stop->grab().toImage();
        stop->clearFocus();
        QVERIFY2(stop->grab().toImage() != with_focus, qPrintable(stop_name(*stop)));
        stop->setFocus(Qt::TabFocusReason);
    }
}

void TestKeyboard::toolbar_buttons_are_pressed_by_space()
{
    show_music_folder();
    disk_->write(u"C:\\Music\\four.mp3"_s, sample_audio());
    control<QWidget>(u"cmd_select_all"_s).setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(stop_with_focus(), u"Refresh"_s);
    press(Qt::Key_Space);
    QCOMPARE(control<ListView>(u"lvListView"_s).Count(), 4);
}

QUILMO_UI_TEST(TestKeyboard)
#include "test_keyboard.moc"
