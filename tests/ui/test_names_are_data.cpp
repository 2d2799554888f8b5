#include "Driver.h"
#include "convert/Chang_FIF.h"
#include "convert/FIF_Auto_Convert.h"
#include "convert/FIF_convert.h"
#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/File_copy_Dlg.h"
#include "frame/QuilmoMain.h"
#include "platform/MsgBox.h"
#include "platform/controls/CommonDialog.h"
#include "platform/controls/FileProgressWindow.h"
#include "platform/controls/OverwriteDialog.h"
#include "platform/controls/PromptBoxes.h"
#include "platform/controls/message_window.h"
#include "platform/file_address.h"
#include "platform/file_names.h"
#include "platform/own_words.h"
#include "platform/start_program.h"
#include "player/TitleScroller.h"
#include "selection/BurningProgram.h"
#include "selection/final_list.h"

#include "odd_names.h"
#include "tagged_files.h"
#include "test_main.h"
#include "ui_commands.h"
#include "ui_convert.h"
#include "ui_painted_texts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTextDocument>
#include <QTextLayout>
#include <QTimer>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <memory>

// Names of files and folders are data: every place that shows one shows its letters, and nothing else happens to it.

using namespace Qt::StringLiterals;

namespace {

/// Whether a character has no picture of its own, or turns the direction of those behind it.
bool is_shown_as_blank(QChar character)
{
    const char16_t code = character.unicode();
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029 ||
           (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

/// A name as one line shows it.
QString shown(QString name)
{
    std::replace_if(name.begin(), name.end(), is_shown_as_blank, QChar(u' '));
    return name;
}

/// A text without blanks, places to break it and marks that nobody sees.
QString letters(QString text)
{
    text.removeIf([](QChar character) {
        const char16_t code = character.unicode();
        return character.isSpace() || is_shown_as_blank(character) || code == 0x200B || code == 0x200E ||
               code == 0x200F || code == 0x061C;
    });
    return text;
}

QString without_breaks(QString text)
{
    constexpr char16_t left_to_right_mark = 0x200E;
    if (text.startsWith(QChar(left_to_right_mark)))
        text.remove(0, 1);
    return text.remove(QChar(0x200B));
}

QString painted_letters(QWidget& control)
{
    QString all;
    for (const PaintedText& text : painted_texts(control))
        all += text.text;
    return letters(all);
}

/// Whether a control paints a text letter for letter, or its beginning and three full stops where it is too long.
bool paints(QWidget& control, const QString& text)
{
    const QString wanted = letters(text);
    const QString painted = painted_letters(control);
    constexpr int long_text = 30;
    constexpr int beginning = 8;
    return painted.contains(wanted) ||
           (wanted.size() > long_text && painted.contains(wanted.left(beginning)) && painted.contains(u'…'));
}

/// Whether the last `count` letters of a text stand one behind the other, from left to right.
bool reads_on(const QString& text, qsizetype count)
{
    QTextLayout layout(text);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    for (auto place = static_cast<int>(text.size() - count); place < text.size(); ++place) {
        if (line.cursorToX(place + 1) <= line.cursorToX(place))
            return false;
    }
    return true;
}

/// Whether a text box, which holds one name and nothing else, paints the letters of that one on one line.
bool paints_in_any_order(QWidget& control, const QString& text)
{
    QString wanted = letters(text);
    QString painted = painted_letters(control);
    std::ranges::sort(wanted);
    std::ranges::sort(painted);
    const QList<PaintedText> texts = painted_texts(control);
    const auto is_on_one_line = [&](const PaintedText& one) {
        return std::abs(one.box.center().y() - texts.first().box.center().y()) < one.box.height() / 2;
    };
    return painted == wanted && std::ranges::all_of(texts, is_on_one_line);
}

/// What a text that may be markup shows.
QString plain(const QString& text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

/// All places in a window, apart from those that show a name on purpose, where markup or a mnemonic may hide.
QStringList findings_in(QWidget& window, const QString& name)
{
    QStringList findings;
    const auto note = [&](const QObject& place, const QString& what) {
        findings.append(QLatin1StringView(place.metaObject()->className()) + u' ' + place.objectName() + u": "_s +
                        what);
    };
    QList<QWidget*> widgets = window.findChildren<QWidget*>();
    widgets.append(&window);
    for (QWidget* widget : widgets) {
        for (const QString& tip : {widget->toolTip(), widget->statusTip(), widget->whatsThis()}) {
            if (Qt::mightBeRichText(tip) && !tip.startsWith(u"<p style='white-space: pre-wrap'>"_s))
                note(*widget, u"tip "_s + tip);
        }
        if (widget->windowTitle().contains(name))
            note(*widget, u"title "_s + widget->windowTitle());
        if (const auto* label = qobject_cast<QLabel*>(widget);
            label != nullptr && label->textFormat() != Qt::PlainText && Qt::mightBeRichText(label->text()))
            note(*widget, u"markup "_s + label->text());
        if (const auto* button = qobject_cast<QAbstractButton*>(widget);
            button != nullptr && button->text().contains(name))
            note(*widget, u"caption "_s + button->text());
        if (const auto* view = qobject_cast<QAbstractItemView*>(widget); view != nullptr && view->model() != nullptr) {
            for (const QModelIndex& row : view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, shown(name),
                                                               -1, Qt::MatchExactly | Qt::MatchRecursive)) {
                for (const int role : {Qt::ToolTipRole, Qt::StatusTipRole, Qt::WhatsThisRole}) {
                    if (row.data(role).isValid())
                        note(*widget, u"tip of a row"_s);
                }
            }
        }
    }
    for (const QAction* action : window.findChildren<QAction*>()) {
        if (action->text().contains(name) || action->toolTip().contains(name))
            note(*action, u"entry "_s + action->text());
    }
    return findings;
}

/// Finds the row of a view's model that shows a name.
QModelIndex row_of(const QAbstractItemView& view, const QString& name)
{
    return view.model()
        ->match(view.model()->index(0, 0), Qt::DisplayRole, shown(name), 1, Qt::MatchExactly | Qt::MatchRecursive)
        .value(0);
}

/// The label with the text of a message box.
QLabel& label_of(const QDialog& box)
{
    auto* const label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    if (label == nullptr)
        qFatal("the box has no text");
    return *label;
}

void check_label(QLabel& label, const QString& before, const QString& name, const QString& behind)
{
    const QString text = without_breaks(label.text());
    QCOMPARE(text, before + name + behind);
    QCOMPARE(label.textFormat(), Qt::PlainText);
    QVERIFY2(painted_letters(label).contains(letters(text)), qPrintable(painted_letters(label)));
    // Places to break a text stand in names alone.
    QVERIFY(reads_on(label.text().section(u'\n', 0, 0), behind.section(u'\n', 0, 0).size()));
}

} // namespace

class TestNamesAreData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void cleanupTestCase();

    void in_the_main_window_data() { add_names(); }
    void in_the_main_window();
    void in_the_boxes_of_labels_being_edited_data() { add_names(); }
    void in_the_boxes_of_labels_being_edited();
    void in_the_title_being_played_data() { add_names(); }
    void in_the_title_being_played();
    void in_the_dialog_of_the_final_list_data() { add_names(); }
    void in_the_dialog_of_the_final_list();
    void in_the_edit_of_one_file_data() { add_names(); }
    void in_the_edit_of_one_file();
    void in_the_dialog_of_conversions_data() { add_names(); }
    void in_the_dialog_of_conversions();
    void in_the_choice_of_the_destination_data() { add_names(); }
    void in_the_choice_of_the_destination();
    void in_messages_data();
    void in_messages();
    void in_the_message_of_a_program_that_does_not_start_data() { add_names(); }
    void in_the_message_of_a_program_that_does_not_start();
    void in_the_prompt_before_a_file_is_replaced_data() { add_names(); }
    void in_the_prompt_before_a_file_is_replaced();
    void in_the_prompts_of_errors_and_deletions_data() { add_names(); }
    void in_the_prompts_of_errors_and_deletions();
    void in_the_window_of_progress_data() { add_names(); }
    void in_the_window_of_progress();
    void in_the_chooser_of_the_burning_program();
    void in_what_is_dragged_data() { add_names(); }
    void in_what_is_dragged();

    void texts_of_tags_are_data_too_data();
    void texts_of_tags_are_data_too();
    void a_program_is_not_taken_for_another();
    void the_run_time_error_box_holds_no_name();

private:
    void add_names();
    /// The file of the row's name in a folder of the same name in `folder`.
    void write_file(const QString& folder, const QByteArray& content) const;

    std::unique_ptr<TestDisk> disk_;
    QByteArray bytes_; ///< of the name of the test's row, with its ending
    QString name_;
};

void TestNamesAreData::init()
{
    install_message_window(application_title());
    disk_ = std::make_unique<TestDisk>();
    // What a shell would make of a name would lie here.
    QCOMPARE(chdir(disk_->root().constData()), 0);
    const QByteArray row = QTest::currentDataTag();
    const auto* const odd =
        std::ranges::find_if(odd_names, [&](const OddName& one) { return row.startsWith(one.what); });
    bytes_ = odd == odd_names.end() ? QByteArray("one.mp3") : odd->bytes + ".mp3";
    name_ = name_from_bytes(bytes_);
}

void TestNamesAreData::cleanup()
{
    QVERIFY2(!disk_->exists(u"C:\\x"_s), "a name was run");
    disk_.reset();
}

void TestNamesAreData::cleanupTestCase()
{
    set_message_box({});
}

void TestNamesAreData::add_names()
{
    QTest::addColumn<int>("nothing");
    for (const OddName& name : odd_names)
        QTest::newRow(name.what) << 0;
}

void TestNamesAreData::write_file(const QString& folder, const QByteArray& content) const
{
    disk_->write(folder + u'\\' + name_ + u'\\' + name_, content);
}

void TestNamesAreData::in_the_main_window()
{
    write_file(u"C:\\Music"_s, tagged("Artist", "Title"));
    const QString folder = u"C:\\Music\\"_s + name_;
    QuilmoMain window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const Driver driver(window);
    driver.open_node(u"C:"_s);
    driver.open_node(u"C:\\Music"_s);
    driver.click_node(folder);
    auto& tree = driver.control<TreeView>(u"tvTreeView"_s);
    QCOMPARE(tree.Item(folder)->Text(), name_);
    QVERIFY(row_of(tree, name_).isValid());
    QVERIFY2(paints(*tree.viewport(), name_), qPrintable(painted_letters(*tree.viewport())));

    auto& list = driver.control<ListView>(u"lvListView"_s);
    QCOMPARE(Driver::row_of(list, name_), 1);
    driver.click_check_box(list, 1);
    driver.click_row(list, 1);
    const int height = list.view()->visualRect(row_of(*list.view(), name_)).height();
    QVERIFY(height > 0 && height < 2 * list.fontMetrics().height());
    for (const ListView::ViewMode mode : {ListView::ViewMode::report, ListView::ViewMode::list}) {
        list.set_View(mode);
        QVERIFY2(paints(*list.view()->viewport(), name_), qPrintable(painted_letters(*list.view()->viewport())));
    }

    auto& file_name = driver.control<TextBox>(u"txtFilename"_s);
    QCOMPARE(file_name.Text(), name_);
    QVERIFY(paints_in_any_order(file_name, name_));
    QCOMPARE(driver.control<TextBox>(u"txtArtist"_s).Text(), u"Artist"_s);
    QCOMPARE(findings_in(window, name_), QStringList());
}

void TestNamesAreData::in_the_boxes_of_labels_being_edited()
{
    CommandedPanes panes;
    panes.disk.write(u"C:\\Pop\\"_s + name_, "one");
    panes.disk.make_folder(u"C:\\Pop\\F "_s + name_.chopped(4));
    const QString folder = u"C:\\Pop\\F "_s + name_.chopped(4);
    panes.click_folder(u"C:"_s);
    panes.click_folder(u"C:\\Pop"_s);
    panes.show();
    panes.tree_view.set_Expanded(panes.tree_view.Item(u"C:\\Pop"_s), true);
    panes.select_rows({name_});
    panes.labels.mnu_ListView_rename_Click();
    const auto editor = [](QWidget& view) { return view.findChild<QLineEdit*>(u"label_editor"_s); };
    QVERIFY(editor(panes.list_view) != nullptr);
    QCOMPARE(editor(panes.list_view)->text(), name_);
    QVERIFY(!editor(panes.list_view)->accessibleName().contains(name_));
    QTest::keyClick(editor(panes.list_view), Qt::Key_Escape);
    QVERIFY(panes.disk.exists(u"C:\\Pop\\"_s + name_));

    panes.click_folder(folder);
    panes.labels.mnu_tree_rename_Click();
    QVERIFY(editor(panes.tree_view) != nullptr);
    QCOMPARE(editor(panes.tree_view)->text(), u"F "_s + name_.chopped(4));
    QTest::keyClick(editor(panes.tree_view), Qt::Key_Escape);
    QVERIFY(panes.disk.exists(folder));
    QCOMPARE(findings_in(panes.list_view, name_), QStringList());
    QCOMPARE(findings_in(panes.tree_view, name_), QStringList());
    QCOMPARE(panes.messages.take(), QStringList());
}

void TestNamesAreData::in_the_title_being_played()
{
    QWidget form;
    form.resize(6000, 40);
    auto* const text_box = new TextBox(&form);
    Placed<TextBox> box(*text_box, Place(*text_box, 0, 0, 90000, 450));
    QTimer timer;
    TitleScroller scroller(box, timer, form);
    shared.scroll_title = name_;
    scroller.prepare();
    scroller.lay_out();
    form.show();
    QCOMPARE(box->Text(), shown(name_));
    QVERIFY(paints_in_any_order(*text_box, name_));
    box.set_Width(300);
    scroller.lay_out();
    for (int turns = 0; turns < name_.size() + 38; ++turns) {
        QTimerEvent event(timer.timerId());
        QCoreApplication::sendEvent(&timer, &event);
        QVERIFY(std::ranges::none_of(box->Text(), is_shown_as_blank));
    }
    QCOMPARE(findings_in(form, name_), QStringList());
}

void TestNamesAreData::in_the_dialog_of_the_final_list()
{
    const QString fif_name = u"["_s + letters(name_.left(20)).remove(u'[').remove(u']') + u"][one].mp3"_s;
    const std::array<std::pair<QString, QString>, 3> files = {
        {{u"C:\\Bare\\"_s, name_}, {u"C:\\Tagged\\"_s, u"T"_s + name_.right(200)}, {u"C:\\FIF\\"_s, fif_name}}};
    for (const auto& [folder, name] : files) {
        disk_->write(folder + name, folder == u"C:\\Tagged\\"_s ? tagged("Artist", "Title") : sample_audio());
        shared.current_folder = folder;
        QCOMPARE(add_to_final_list(name, folder, folder + name, 1000, {}, {}), i16(added));
    }
    NotedTransport transport;
    FIF_convert form(transport, {.refresh_all = [] {}, .small_icons = {}}, nullptr);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QStringList found;
    for (auto* const list : form.findChildren<ListView*>()) {
        for (int row = 1; row <= list->Count(); ++row) {
            found.append(list->Item(row).Text);
            QVERIFY(row_of(*list->view(), list->Item(row).Text).isValid());
            QVERIFY2(paints(*list->view()->viewport(), list->Item(row).Text),
                     qPrintable(painted_letters(*list->view()->viewport())));
        }
    }
    QStringList wanted = {files[0].second, files[1].second, files[2].second};
    found.sort();
    wanted.sort();
    QCOMPARE(found, wanted);
    QCOMPARE(findings_in(form, name_), QStringList());
}

void TestNamesAreData::in_the_edit_of_one_file()
{
    const QString folder = disk_->make_folder(u"C:\\Music"_s);
    disk_->write(folder + name_, tagged("<b>a</b>", "&File %1"));
    shared.current_folder = folder;
    add_to_final_list(name_, folder, folder + name_, 1000, {}, {});
    shared.edit_file_name = name_;
    NotedTransport transport;
    Chang_FIF form(transport, {.refresh_all = [] {}, .Fill_list = [] {}}, nullptr);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    auto& box = *form.findChild<TextBox*>(u"txtFilename"_s);
    QVERIFY(!box.Text().isEmpty());
    QVERIFY(name_.startsWith(box.Text()));
    QVERIFY(paints_in_any_order(box, box.Text()));
    QCOMPARE(findings_in(form, name_), QStringList());
}

void TestNamesAreData::in_the_dialog_of_conversions()
{
    const QString folder = disk_->make_folder(u"C:\\Music"_s);
    disk_->write(folder + name_, tagged("Artist", "Title"));
    shared.current_folder = folder;
    ListView main_list;
    main_list.Add(name_, name_);
    main_list.set_Selected(1, true);
    NotedTransport transport;
    FIF_Auto_Convert form(transport, {.lvListView = main_list, .small_icons = {}, .refresh_all = [] {}}, nullptr);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    Driver(form).click(u"freeview"_s);
    auto& list = *form.findChild<ListView*>();
    QCOMPARE(list.Item(1).Text, name_);
    QVERIFY(!list.Item(1).column(1).isEmpty());
    QVERIFY2(paints(*list.view()->viewport(), name_), qPrintable(painted_letters(*list.view()->viewport())));
    QCOMPARE(findings_in(form, name_), QStringList());
}

void TestNamesAreData::in_the_choice_of_the_destination()
{
    write_file(u"C:\\Music"_s, "one");
    const QString folder = u"C:\\Music\\"_s + name_;
    const ImageList images;
    File_copy_Dlg form({.refresh_all = [] {}, .images = images}, nullptr);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    const Driver driver(form);
    driver.open_node(u"C:"_s, u"FileCopyTreeView"_s);
    driver.open_node(u"C:\\Music"_s, u"FileCopyTreeView"_s);
    driver.click_node(folder, u"FileCopyTreeView"_s);
    auto& tree = driver.control<TreeView>(u"FileCopyTreeView"_s);
    QVERIFY(row_of(tree, name_).isValid());
    QVERIFY2(paints(*tree.viewport(), name_), qPrintable(painted_letters(*tree.viewport())));
    QTest::keyClick(&tree, Qt::Key_F2);
    auto* const editor = tree.findChild<QLineEdit*>(u"label_editor"_s);
    QVERIFY(editor != nullptr);
    QCOMPARE(editor->text(), name_);
    QTest::keyClick(editor, Qt::Key_Escape);
    QCOMPARE(findings_in(form, name_), QStringList());
}

void TestNamesAreData::in_messages_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("behind");
    for (const OddName& name : odd_names) {
        const auto add = [&](const char* what, int code, const QString& before, const QString& behind) {
            QTest::addRow("%s, %s", name.what, what) << code << before << behind;
        };
        add("too long", msg_name_too_long, {}, u" is too long"_s);
        add("playing", msg_is_playing, {}, u" is playing"_s);
        add("selected", msg_already_selected, {}, u" is already selected"_s);
        add("device error", msg_device_error, u"Device Error : "_s, {});
        add("exists", msg_already_exists, {}, u" already exists"_s);
        add("in the list", msg_exists_in_list, {}, u" already exists in MP3 File List"_s);
    }
}

void TestNamesAreData::in_messages()
{
    QFETCH(const int, code);
    QFETCH(const QString, before);
    QFETCH(const QString, behind);
    bool was_shown = false;
    QStringList findings;
    Driver::in_next_dialog([&](QDialog& box) {
        was_shown = true;
        check_label(label_of(box), before, shown(name_), behind);
        findings = findings_in(box, name_);
        box.reject();
    });
    show_name_message(static_cast<i16>(code), name_);
    QVERIFY(was_shown);
    QCOMPARE(findings, QStringList());
}

void TestNamesAreData::in_the_message_of_a_program_that_does_not_start()
{
    disk_->make_folder(u"C:\\Bin"_s);
    shared.burn_program_path = u"C:\\Bin\\"_s + name_;
    const bool is_text = QFile::encodeName(QFile::decodeName(bytes_)) == bytes_;
    const QString reason = is_text ? u"No such file or directory"_s : own_word(Word::reason_no_place);
    bool was_shown = false;
    Driver::in_next_dialog([&](QDialog& box) {
        was_shown = true;
        check_label(label_of(box), u"C:\\Bin\\"_s, shown(name_), u" can't be started: "_s + reason);
        box.reject();
    });
    cmdBurn_Click();
    QVERIFY(was_shown);
}

void TestNamesAreData::in_the_prompt_before_a_file_is_replaced()
{
    const QString folder = u"C:\\Music\\"_s + name_;
    const FileFacts source = {.path = u"C:\\New\\"_s + name_, .size = 3000, .modified_seconds = 1'000'000'000};
    const FileFacts target = {.path = folder + u'\\' + name_, .size = 1000, .modified_seconds = 1'100'000'000};
    OverwriteDialog form(source, target, nullptr);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    check_label(*form.findChild<QLabel*>(u"Label_question"_s), u"A file named “"_s, shown(name_),
                u"” already exists here. Replace it?"_s);
    auto& place = *form.findChild<QLabel*>(u"Facts_target_folder"_s);
    QCOMPARE(place.textFormat(), Qt::PlainText);
    QVERIFY(place.text().startsWith(shown(folder).left(8)));
    QCOMPARE(without_breaks(plain(place.toolTip())), shown(folder));
    QCOMPARE(findings_in(form, name_), QStringList());
}

void TestNamesAreData::in_the_prompts_of_errors_and_deletions()
{
    const QString path = u"C:\\Music\\"_s + name_;
    int boxes = 0;
    QStringList findings;
    const auto expect = [&](const QString& before, const QString& named, const QString& behind) {
        Driver::in_next_dialog([&, before, named, behind](QDialog& box) {
            ++boxes;
            check_label(label_of(box), before, shown(named), behind);
            findings += findings_in(box, name_);
            box.reject();
        });
    };
    PromptBoxes prompts;
    expect(u"Something went wrong with “"_s, path, u"”:\n\nThe reason %1"_s);
    prompts.ask_error(path, u"The reason %1"_s, false);
    expect(u"Something went wrong with “"_s, path, u"”:\n\nThe reason %1"_s);
    prompts.ask_error(path, u"The reason %1"_s, true);
    expect(u"Move “"_s, name_, u"” to the trash?"_s);
    QVERIFY(!prompts.ask_trash({path}));
    expect(u"“"_s, name_, u"” can't be moved to the trash. Delete it for good?"_s);
    QVERIFY(!prompts.ask_delete({path}));
    QCOMPARE(boxes, 4);
    QCOMPARE(findings, QStringList());
}

void TestNamesAreData::in_the_window_of_progress()
{
    FileProgressWindow form(FileAction::copy, nullptr);
    form.show_progress({.name = name_, .bytes_done = 700, .bytes_all = 1000});
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    auto& label = *form.findChild<QLabel*>(u"Label_name"_s);
    QCOMPARE(label.textFormat(), Qt::PlainText);
    QVERIFY2(paints(label, name_) || paints_in_any_order(label, name_), qPrintable(painted_letters(label)));
    QVERIFY(std::ranges::none_of(label.text(), is_shown_as_blank));
    QCOMPARE(findings_in(form, name_), QStringList());
}

/// The toolkit's own boxes know no better than to guess, and the chooser lets a person delete what it lists.
void TestNamesAreData::in_the_chooser_of_the_burning_program()
{
    disk_->write(u"C:\\Bin\\<b>bold<b>.exe"_s, "one");
    QString text;
    auto format = Qt::AutoText;
    QTimer looks;
    connect(&looks, &QTimer::timeout, this, [&] {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            looks.stop();
            text = box->text();
            format = box->textFormat();
            box->reject();
        }
    });
    QTimer::singleShot(0, this, [&] {
        auto& dialog = *qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        dialog.setDirectory(QFile::decodeName(disk_->native(u"C:\\Bin"_s)));
        looks.start(5);
        dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(u"<b>gone<b>.exe"_s);
        QTest::keyClick(dialog.findChild<QLineEdit*>(u"fileNameEdit"_s), Qt::Key_Return);
        dialog.reject();
    });
    shared.burn_program_path.clear();
    CommonDialog chooser = {.DialogTitle = u"Choose"_s, .Filter = u"All|*"_s, .FileName = {}};
    chooser.ShowOpen();
    QVERIFY2(text.contains(u"<b>gone<b>.exe"_s), qPrintable(text));
    QCOMPARE(format, Qt::PlainText);
}

void TestNamesAreData::in_what_is_dragged()
{
    const QByteArray address = file_address(u"C:\\Music\\"_s + name_);
    QVERIFY(std::ranges::all_of(address, [](char byte) { return byte > ' ' && byte < 0x7F; }));
    QCOMPARE(QByteArray::fromPercentEncoding(address), "file://" + disk_->root() + "/Music/" + bytes_);
}

void TestNamesAreData::texts_of_tags_are_data_too_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("markup") << QByteArray("<b>bold</b><img src=/x>");
    QTest::newRow("formats and places") << QByteArray("%1 %s %n %2");
    QTest::newRow("a mnemonic") << QByteArray("&File &amp; x");
    QTest::newRow("line breaks") << QByteArray("one\r\ntwo\nthree");
    QTest::newRow("control characters") << QByteArray("one\x1B[31m\x08\x7F");
    QTest::newRow("a NUL in the middle") << QByteArray("one\0<b>two", 10);
    QTest::newRow("bytes of no code page") << QByteArray("\xFF\xFE\x80");
    QTest::newRow("a command") << QByteArray("$(touch x)`touch x`;touch x");
    QTest::newRow("a way up") << QByteArray("..\\../..\\x");
}

void TestNamesAreData::texts_of_tags_are_data_too()
{
    QFETCH(const QByteArray, text);
    disk_->write(u"C:\\Music\\one.mp3"_s, tagged(text, text));
    QuilmoMain window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const Driver driver(window);
    driver.open_node(u"C:"_s);
    driver.click_node(u"C:\\Music"_s);
    driver.click_row(driver.control<ListView>(u"lvListView"_s), 1);
    for (const QString& field : {u"txtArtist"_s, u"txtTitle"_s}) {
        auto& box = driver.control<TextBox>(field);
        QVERIFY(!box.Text().isEmpty());
        QVERIFY(!box.Text().contains(QChar(QChar::Null)));
        QVERIFY(paints_in_any_order(box, box.Text()));
    }
    QCOMPARE(findings_in(window, u"<b>"_s), QStringList());
}

/// The toolkit's names are text, and not all names on a disk are.
void TestNamesAreData::a_program_is_not_taken_for_another()
{
    const QString meant = u"C:\\Bin\\"_s + name_from_bytes("burn\xFF");
    const QString other = u"C:\\Bin\\burn\uFFFD"_s;
    for (const QString& program : {meant, other}) {
        disk_->write(program, "#!/bin/sh\ntouch x\n");
        QCOMPARE(chmod(disk_->native(program).constData(), 0755), 0);
    }
    QCOMPARE(start_program(meant), own_word(Word::reason_no_place));
}

void TestNamesAreData::the_run_time_error_box_holds_no_name()
{
    bool was_shown = false;
    Driver::in_next_dialog([&](QDialog& box) {
        was_shown = true;
        check_label(label_of(box), u"Run-time error '53':\n\nFile not found"_s, {}, {});
        box.reject();
    });
    show_run_time_error(RunTimeError(RunTimeError::file_not_found));
    QVERIFY(was_shown);
}

QUILMO_UI_TEST(TestNamesAreData)
#include "test_names_are_data.moc"
