#include "Driver.h"
#include "convert/Chang_FIF.h"
#include "convert/FIF_Auto_Convert.h"
#include "convert/FIF_convert.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/File_copy_Dlg.h"
#include "frame/QuilmoMain.h"
#include "platform/controls/FilePrompts.h"
#include "platform/controls/TextBox.h"
#include "selection/final_list.h"

#include "file_operations.h"
#include "tagged_files.h"
#include "test_main.h"
#include "ui_convert.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

#include <functional>
#include <memory>

// A name that somebody types, or that stands in a tag, never leads out of the folder that it is given in.

using namespace Qt::StringLiterals;

namespace {

const QString folder = u"C:\\Up\\In\\"_s;

/// Says yes to whatever can be lost, and goes on.
class BoldPrompts : public FilePrompts
{
public:
    BoldPrompts() { set_file_prompts(this); }
    ~BoldPrompts() override { set_file_prompts(nullptr); }
    BoldPrompts(const BoldPrompts&) = delete;
    BoldPrompts& operator=(const BoldPrompts&) = delete;

    Overwrite ask_overwrite(const FileFacts& /*source*/, const FileFacts& /*target*/) override
    {
        return Overwrite::yes;
    }
    OnError ask_error(const QString& /*path*/, const QString& /*reason*/, bool /*more_follow*/) override
    {
        return OnError::skip;
    }
    bool ask_trash(const QStringList& /*paths*/) override { return true; }
    bool ask_delete(const QStringList& /*paths*/) override { return true; }
};

/// A way of giving the file one.mp3, or the folder Sub beside it, a name made of a text.
using Way = void (*)(const QString& text);

struct NamedWay
{
    const char* what;
    Way give;
};

void list_file()
{
    shared.current_folder = folder;
    QCOMPARE(add_to_final_list(u"one.mp3"_s, folder, folder + u"one.mp3"_s, 1000, {}, {}), i16(added));
}

/// The main window with the folder shown and its first row chosen.
class ShownFolder
{
public:
    ShownFolder()
    {
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("the window is not on the screen");
        for (const QString& key : {u"C:"_s, u"C:\\Up"_s, u"C:\\Up\\In"_s})
            driver.open_node(key);
        driver.click_node(u"C:\\Up\\In"_s);
        driver.click_row(list(), 1);
    }

    ListView& list() const { return driver.control<ListView>(u"lvListView"_s); }
    TreeView& tree() const { return driver.control<TreeView>(u"tvTreeView"_s); }
    void choose(const QString& entry) const { driver.control<QAction>(entry).trigger(); }

    QuilmoMain window;
    Driver driver{window};
};

/// Ends the edit of a label with another text, which need not be one that keys can type.
void type_label(const QWidget& view, const QString& text)
{
    auto* const editor = view.findChild<QLineEdit*>(u"label_editor"_s);
    if (editor == nullptr)
        qFatal("no label is being edited");
    editor->selectAll();
    editor->insert(text);
    editor->setModified(true);
    QTest::keyClick(editor, Qt::Key_Return);
}

/// What the list shows after a rename counts as typed, so all that goes by it is done, too.
void in_the_list(const QString& text)
{
    const ShownFolder shown;
    shown.driver.click_check_box(shown.list(), 1);
    shown.choose(u"mnu_ListView_rename"_s);
    type_label(shown.list(), text);
    NotedTransport transport;
    FIF_convert form(transport, {.refresh_all = [] {}, .small_icons = {}}, nullptr);
    form.show();
    Driver(form).click(u"Change_FIF"_s);
    shown.driver.type(u"txtArtist"_s, u"Artist"_s);
    shown.driver.type(u"txtTitle"_s, u"Title"_s);
    shown.driver.click(u"cmdSave"_s);
    shown.choose(u"mnu_ListView_delete"_s);
}

void in_the_tree(const QString& text)
{
    const ShownFolder shown;
    shown.driver.click_node(u"C:\\Up\\In\\Sub"_s);
    shown.choose(u"mnu_tree_rename"_s);
    type_label(shown.tree(), text);
}

void as_a_new_folder(const QString& text)
{
    const ShownFolder shown;
    shown.choose(u"mnu_tree_add_folder"_s);
    type_label(shown.tree(), text);
}

void in_the_tree_of_destinations(const QString& text)
{
    const ImageList images;
    File_copy_Dlg form({.refresh_all = [] {}, .images = images}, nullptr);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    const Driver driver(form);
    const QString tree = u"FileCopyTreeView"_s;
    for (const QString& key : {u"C:"_s, u"C:\\Up"_s, u"C:\\Up\\In"_s})
        driver.open_node(key, tree);
    driver.click_node(u"C:\\Up\\In\\Sub"_s, tree);
    QTest::keyClick(&driver.control<TreeView>(tree), Qt::Key_F2);
    type_label(driver.control<TreeView>(tree), text);
}

void by_the_save_button(const QString& text)
{
    const ShownFolder shown;
    for (const QString& field : {u"txtArtist"_s, u"txtTitle"_s, u"txtGenre"_s})
        shown.driver.control<TextBox>(field).set_Text(text);
    shown.driver.click(u"cmdSave"_s);
}

void by_the_edit_of_one_file(const QString& text)
{
    list_file();
    shared.edit_file_name = u"one.mp3"_s;
    NotedTransport transport;
    Chang_FIF form(transport, {.refresh_all = [] {}, .Fill_list = [] {}}, nullptr);
    form.show();
    for (const QString& field : {u"txtArtist"_s, u"txtTitle"_s, u"txtGenre"_s})
        form.findChild<TextBox*>(field)->set_Text(text);
    Driver(form).click(u"cmdSave"_s);
}

void by_fixed_values(const QString& text)
{
    shared.current_folder = folder;
    ListView main_list;
    main_list.Add(u"one.mp3"_s, u"one.mp3"_s);
    main_list.set_Selected(1, true);
    NotedTransport transport;
    FIF_Auto_Convert form(transport, {.lvListView = main_list, .small_icons = {}, .refresh_all = [] {}}, nullptr);
    form.show();
    for (const QString& value : {u"Artist"_s, u"Genre"_s}) {
        form.findChild<QCheckBox*>(u"Check_"_s + value)->setChecked(true);
        form.findChild<TextBox*>(u"txt"_s + value)->set_Text(text);
    }
    Driver(form).click(u"freeview"_s);
    Driver(form).click(u"autoconvert"_s);
}

void by_a_tag(const QString& text, const TestDisk& disk)
{
    disk.write(folder + u"one.mp3"_s, tagged(text.toLatin1(), text.toLatin1()));
    list_file();
    NotedTransport transport;
    FIF_convert form(transport, {.refresh_all = [] {}, .small_icons = {}}, nullptr);
    form.show();
    Driver(form).click(u"Change_FIF"_s);
}

constexpr auto ways = std::to_array<NamedWay>({
    {"in the list", in_the_list},
    {"in the tree", in_the_tree},
    {"as a new folder", as_a_new_folder},
    {"in the tree of destinations", in_the_tree_of_destinations},
    {"by the save button", by_the_save_button},
    {"by the edit of one file", by_the_edit_of_one_file},
    {"by fixed values", by_fixed_values},
});

const QStringList texts = {u".."_s,
                           u"."_s,
                           u"..\\..\\x"_s,
                           u"../../x"_s,
                           u"..\\x.mp3"_s,
                           u"..\\..\\free"_s,
                           u"../free"_s,
                           u"\\x.mp3"_s,
                           u"/x.mp3"_s,
                           u"C:\\x"_s,
                           u"C:..\\x"_s,
                           u"D:x"_s,
                           u"\\\\C\\x"_s,
                           u"Sub\\..\\..\\x"_s,
                           u"x\\"_s,
                           u"~/x"_s,
                           u"\uF05C..\uF05Cx"_s,
                           u"\u202E..\\..\\x"_s};

/// Everything outside the folder.
QByteArrayList outside(const TestDisk& disk)
{
    QByteArrayList lines = tree_of(disk.root());
    lines.removeIf([](const QByteArray& line) { return line.startsWith("Up/In/"); });
    return lines;
}

} // namespace

class TestNamesStayInside : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void whatever_is_typed_data();
    void whatever_is_typed();
    void whatever_stands_in_a_tag_data();
    void whatever_stands_in_a_tag();

private:
    void check_paths() const;

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    std::unique_ptr<BoldPrompts> prompts_;
};

void TestNamesStayInside::init()
{
    disk_ = std::make_unique<TestDisk>();
    messages_ = std::make_unique<NotedMessages>();
    prompts_ = std::make_unique<BoldPrompts>();
    for (const QString& path : {u"C:\\x"_s, u"C:\\x.mp3"_s, u"C:\\Up\\x"_s, u"C:\\Up\\x.mp3"_s})
        disk_->write(path, "outside");
    disk_->write(folder + u"one.mp3"_s, tagged("Artist", "Title"));
    disk_->make_folder(folder + u"Sub"_s);
}

void TestNamesStayInside::cleanup()
{
    prompts_.reset();
    messages_.reset();
    disk_.reset();
}

/// All that the program goes by from now on lies in the folder, or nowhere.
void TestNamesStayInside::check_paths() const
{
    QStringList paths = {shared.selected_mp3_full, shared.selected_mp3_path, shared.playing_mp3_path,
                         shared.tree_node_path, shared.dest_folder_path};
    for (const FinalListEntry& entry : final_list_slots()) {
        if (entry.in_use == 1)
            paths.append(entry.full_path);
    }
    for (const QString& path : paths) {
        const QByteArray native = disk_->native(path);
        QVERIFY2(native.isEmpty() || (native + '/').startsWith(disk_->root() + "/Up/In/"), native.constData());
    }
}

void TestNamesStayInside::whatever_is_typed_data()
{
    QTest::addColumn<Way>("give");
    QTest::addColumn<QString>("text");
    for (const NamedWay& way : ways) {
        for (const QString& text : texts)
            QTest::addRow("%s, %s", way.what, qPrintable(text)) << way.give << text;
    }
}

void TestNamesStayInside::whatever_is_typed()
{
    QFETCH(const Way, give);
    QFETCH(const QString, text);
    const QByteArrayList before = outside(*disk_);
    give(text);
    QCOMPARE(outside(*disk_), before);
    check_paths();
}

void TestNamesStayInside::whatever_stands_in_a_tag_data()
{
    QTest::addColumn<QString>("text");
    for (const QString& text : texts)
        QTest::addRow("%s", qPrintable(text)) << text;
    QTest::newRow("a NUL before a way up") << QString::fromLatin1("a\0/../x", 7);
}

void TestNamesStayInside::whatever_stands_in_a_tag()
{
    QFETCH(const QString, text);
    const QByteArrayList before = outside(*disk_);
    by_a_tag(text, *disk_);
    QCOMPARE(outside(*disk_), before);
    check_paths();
    const QByteArrayList inside = tree_of(disk_->native(folder));
    QCOMPARE(inside.size(), 2); // the file under its old or new name, and the folder
}

QUILMO_UI_TEST(TestNamesStayInside)
#include "test_names_stay_inside.moc"
