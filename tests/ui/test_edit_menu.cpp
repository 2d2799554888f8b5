#include "core/mod_of_grobal_var.h"
#include "explorer/EditMenu.h"
#include "platform/controls/TextBox.h"
#include "ui_commands.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Answer = ScriptedPrompts::Answer;

/// The Edit menu on real panes and four text boxes, of which each holds its own name.
struct Desk
{
    Desk()
    {
        txtArtist.set_Text(u"artist"_s);
        txtFilename.set_Text(u"filename"_s);
        txtTitle.set_Text(u"title"_s);
        txtGenre.set_Text(u"genre"_s);
    }

    QStringList texts() const { return {txtArtist.Text(), txtFilename.Text(), txtTitle.Text(), txtGenre.Text()}; }

    CommandedPanes panes;
    TextBox txtArtist;
    TextBox txtFilename;
    TextBox txtTitle;
    TextBox txtGenre;
    EditMenu menu{panes.files,
                  {.txtArtist = txtArtist, .txtFilename = txtFilename, .txtTitle = txtTitle, .txtGenre = txtGenre}};
};

const QStringList as_it_was = {u"artist"_s, u"filename"_s, u"title"_s, u"genre"_s};

QClipboard& clipboard()
{
    return *QGuiApplication::clipboard();
}

/// The boxes in which text can be edited, by pane.
void editable_boxes()
{
    QTest::addColumn<int>("pane");
    QTest::newRow("the artist") << 3;
    QTest::newRow("the title") << 5;
    QTest::newRow("the genre") << 6;
}

} // namespace

class TestEditMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void in_the_tree();
    void in_the_list();
    void elsewhere_nothing_happens_data();
    void elsewhere_nothing_happens();

    void copy_takes_the_marked_text_data();
    void copy_takes_the_marked_text();
    void copy_of_no_text_empties_the_clipboard();
    void paste_replaces_the_marked_text_data() { editable_boxes(); }
    void paste_replaces_the_marked_text();
    void paste_without_text_only_removes_the_marked_one();
    void delete_removes_the_marked_text_data() { editable_boxes(); }
    void delete_removes_the_marked_text();
    void delete_removes_one_character_behind_the_caret_data();
    void delete_removes_one_character_behind_the_caret();
    void the_file_name_box_is_emptied();

private:
    TextBox& box() const { return *desk_->menu.box(); }

    std::unique_ptr<Desk> desk_;
};

void TestEditMenu::init()
{
    desk_ = std::make_unique<Desk>();
    clipboard().setText(u"from elsewhere"_s);
}

void TestEditMenu::cleanup()
{
    desk_.reset();
}

void TestEditMenu::in_the_tree()
{
    shared.focus_pane = pane_tree;
    QCOMPARE(desk_->menu.box(), nullptr);
    desk_->menu.menu_Edit_copy_Click();
    QCOMPARE(shared.copy_source_kind, i16(1));
    QCOMPARE(shared.copied_folder_path, u"C:\\Pop"_s);
    desk_->panes.click_folder(u"C:\\Rock"_s);
    desk_->menu.menu_Edit_paste_Click();
    QVERIFY(desk_->panes.disk.exists(u"C:\\Rock\\Pop\\one.mp3"_s));
    shared.focus_pane = pane_tree;
    desk_->panes.prompts.answers = {Answer::no};
    desk_->menu.menu_Edit_delete_Click();
    QCOMPARE(desk_->panes.prompts.take(), QStringList{u"trash C:\\Rock"_s});
    QCOMPARE(clipboard().text(), u"from elsewhere"_s);
}

void TestEditMenu::in_the_list()
{
    desk_->panes.select_rows({u"one.mp3"_s});
    shared.focus_pane = pane_list;
    QCOMPARE(desk_->menu.box(), nullptr);
    desk_->menu.menu_Edit_copy_Click();
    QCOMPARE(shared.copy_source_kind, i16(2));
    QCOMPARE(shared.copy_list_count, i16(1));
    desk_->panes.click_folder(u"C:\\Rock"_s);
    shared.focus_pane = pane_list;
    desk_->menu.menu_Edit_paste_Click();
    QVERIFY(desk_->panes.disk.exists(u"C:\\Rock\\one.mp3"_s));
    shared.focus_pane = pane_list;
    desk_->panes.prompts.answers = {Answer::no};
    desk_->menu.menu_Edit_delete_Click();
    QCOMPARE(desk_->panes.prompts.take(), QStringList{u"trash C:\\Rock\\one.mp3"_s});
    QCOMPARE(clipboard().text(), u"from elsewhere"_s);
}

void TestEditMenu::elsewhere_nothing_happens_data()
{
    QTest::addColumn<int>("pane");
    for (const int pane : {0, 7, 11, 22})
        QTest::addRow("pane %d", pane) << pane;
}

void TestEditMenu::elsewhere_nothing_happens()
{
    QFETCH(const int, pane);
    desk_->panes.files.mnu_tree_copy_Click();
    desk_->panes.click_folder(u"C:\\Rock"_s);
    shared.focus_pane = static_cast<i16>(pane);
    QCOMPARE(desk_->menu.box(), nullptr);
    desk_->menu.menu_Edit_copy_Click();
    desk_->menu.menu_Edit_paste_Click();
    desk_->menu.menu_Edit_delete_Click();
    QCOMPARE(shared.copied_folder_path, u"C:\\Pop"_s);
    QCOMPARE(desk_->panes.on_disk(u"C:\\Rock"_s), QStringList());
    QCOMPARE(desk_->panes.prompts.take(), QStringList());
    QCOMPARE(clipboard().text(), u"from elsewhere"_s);
    QCOMPARE(desk_->texts(), as_it_was);
}

void TestEditMenu::copy_takes_the_marked_text_data()
{
    editable_boxes();
    QTest::newRow("the file name") << 4;
}

void TestEditMenu::copy_takes_the_marked_text()
{
    QFETCH(const int, pane);
    shared.focus_pane = static_cast<i16>(pane);
    box().setSelection(1, 3);
    const QString marked = box().Text().mid(1, 3);
    desk_->menu.menu_Edit_copy_Click();
    QCOMPARE(clipboard().text(), marked);
    QCOMPARE(desk_->texts(), as_it_was);
    QCOMPARE(shared.copy_source_kind, i16(0));
}

void TestEditMenu::copy_of_no_text_empties_the_clipboard()
{
    auto* image = new QMimeData;
    image->setText(u"text"_s);
    image->setData(u"image/png"_s, "picture");
    clipboard().setMimeData(image);
    shared.focus_pane = pane_title;
    desk_->menu.menu_Edit_copy_Click();
    QCOMPARE(clipboard().text(), QString());
    QVERIFY(!clipboard().mimeData()->hasFormat(u"image/png"_s));
}

void TestEditMenu::paste_replaces_the_marked_text()
{
    QFETCH(const int, pane);
    shared.focus_pane = static_cast<i16>(pane);
    const QString text = box().Text();
    box().setSelection(1, 3);
    desk_->menu.menu_Edit_paste_Click();
    QCOMPARE(box().Text(), QString(text.left(1) + u"from elsewhere"_s + text.mid(4)));
    desk_->menu.menu_Edit_paste_Click();
    QCOMPARE(box().Text(), QString(text.left(1) + u"from elsewherefrom elsewhere"_s + text.mid(4)));
}

void TestEditMenu::paste_without_text_only_removes_the_marked_one()
{
    clipboard().clear();
    shared.focus_pane = pane_artist;
    box().setSelection(0, 2);
    desk_->menu.menu_Edit_paste_Click();
    QCOMPARE(box().Text(), u"tist"_s);
}

void TestEditMenu::delete_removes_the_marked_text()
{
    QFETCH(const int, pane);
    shared.focus_pane = static_cast<i16>(pane);
    const QString text = box().Text();
    box().setSelection(1, 3);
    desk_->menu.menu_Edit_delete_Click();
    QCOMPARE(box().Text(), QString(text.left(1) + text.mid(4)));
    QCOMPARE(clipboard().text(), u"from elsewhere"_s);
}

void TestEditMenu::delete_removes_one_character_behind_the_caret_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("caret");
    QTest::addColumn<QString>("left");
    QTest::newRow("at the start") << u"artist"_s << 0 << u"rtist"_s;
    QTest::newRow("in the middle") << u"artist"_s << 3 << u"artst"_s;
    QTest::newRow("at the end") << u"artist"_s << 6 << u"artist"_s;
    QTest::newRow("in no text") << QString() << 0 << QString();
    QTest::newRow("of two code units") << u"a\U0001F3B5b"_s << 1 << u"ab"_s;
    QTest::newRow("that stands for a stray byte") << QString(u"a"_s + QChar(0xDCE4) + u"b"_s) << 1 << u"ab"_s;
}

void TestEditMenu::delete_removes_one_character_behind_the_caret()
{
    QFETCH(const QString, text);
    QFETCH(const int, caret);
    shared.focus_pane = pane_artist;
    box().set_Text(text);
    box().setCursorPosition(caret);
    desk_->menu.menu_Edit_delete_Click();
    QTEST(box().Text(), "left");
    QCOMPARE(box().cursorPosition(), caret);
}

void TestEditMenu::the_file_name_box_is_emptied()
{
    shared.focus_pane = pane_filename;
    desk_->menu.menu_Edit_paste_Click();
    QCOMPARE(box().Text(), QString());
    box().set_Text(u"filename"_s);
    box().setSelection(1, 3);
    desk_->menu.menu_Edit_delete_Click();
    QCOMPARE(desk_->texts(), (QStringList{u"artist"_s, QString(), u"title"_s, u"genre"_s}));
}

QUILMO_UI_TEST(TestEditMenu)
#include "test_edit_menu.moc"
