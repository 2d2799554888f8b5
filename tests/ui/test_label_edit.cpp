#include "platform/controls/ListView.h"
#include "platform/controls/TreeView.h"
#include "test_main.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

enum class Which
{
    report,
    list,
    tree
};

/// A form with a text box and one of the controls, filled with a few labels of which the second is selected. Both
/// controls are spoken to in the same way, and their events are noted.
class Form : public QWidget
{
public:
    explicit Form(Which which) : which_(which)
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&other);
        if (which == Which::tree)
            set_up_tree(*layout);
        else
            set_up_list(*layout);
        resize(400, 300);
        show();
        if (!QTest::qWaitForWindowActive(this))
            qFatal("the form can't have the focus");
        control().setFocus();
        take();
    }

    bool is_tree() const { return which_ == Which::tree; }
    QWidget& control() const { return is_tree() ? static_cast<QWidget&>(*tree) : *list; }
    QAbstractItemView* view() const { return is_tree() ? tree.get() : list->view(); }

    void start() const { is_tree() ? tree->StartLabelEdit() : list->StartLabelEdit(); }
    bool is_editing() const { return is_tree() ? tree->is_editing() : list->is_editing(); }
    QString text() const { return is_tree() ? tree->SelectedItem()->Text() : list->Item(list->SelectedItem()).Text; }
    void set_text(const QString& text) const
    {
        if (is_tree())
            tree->set_Text(tree->SelectedItem(), text);
        else
            list->set_Text(list->SelectedItem(), text);
    }
    void select(int index) const
    {
        if (is_tree())
            tree->set_Selected(tree->Item(index));
        else
            list->set_Selected(index, true);
    }
    void remove() const
    {
        if (is_tree())
            tree->Remove(tree->Index(tree->SelectedItem()));
        else
            list->Clear();
    }
    void refill(int count) const
    {
        if (is_tree()) {
            while (tree->Count() > 0)
                tree->Remove(1);
            for (int index = 1; index <= count; ++index)
                tree->Add(nullptr, u"new %1"_s.arg(index), u"new %1"_s.arg(index), {});
            tree->set_Selected(tree->Item(2));
        } else {
            const ListView::Update update(*list);
            list->Clear();
            for (int index = 1; index <= count; ++index)
                list->Add(u"new %1"_s.arg(index), u"new %1"_s.arg(index));
            list->set_Selected(2, true);
        }
    }
    void destroy()
    {
        tree.reset();
        list.reset();
    }
    QPoint on(int index) const
    {
        return is_tree() ? tree->node_rect(tree->Item(index)).topLeft() + QPoint(5, 5)
                         : view()->viewport()->mapFrom(list.get(), list->row_rect(index).center());
    }

    QLineEdit* editor() const
    {
        const auto editors = findChildren<QLineEdit*>(u"label_editor"_s);
        for (QLineEdit* editor : editors) {
            if (editor->isVisible())
                return editor;
        }
        return nullptr;
    }
    static void key(Qt::Key key, Qt::KeyboardModifiers keys = {}) { QTest::keyClick(focused(), key, keys); }
    static void type(const QString& text) { QTest::keyClicks(focused(), text); }
    static QWidget* focused() { return QApplication::focusWidget(); }

    QStringList take() { return std::exchange(events, {}); }

    QLineEdit other;
    std::unique_ptr<TreeView> tree;
    std::unique_ptr<ListView> list;
    QStringList events;
    bool refuses_before = false;
    bool refuses_after = false;
    std::function<void()> during_after; ///< run in AfterLabelEdit
    int form_keys = 0;

protected:
    void keyPressEvent(QKeyEvent* /*event*/) override { ++form_keys; }

private:
    template<typename Control> void note_events(Control* control)
    {
        connect(control, &Control::BeforeLabelEdit, this, [this](bool& cancel) {
            events.append(u"Before"_s);
            cancel = refuses_before;
        });
        connect(control, &Control::AfterLabelEdit, this, [this](bool& cancel, const QString& text) {
            events.append(u"After "_s + text);
            if (editor() != nullptr)
                events.append(u"the box is still there"_s);
            cancel = refuses_after;
            if (during_after)
                std::exchange(during_after, {})();
        });
        connect(control, &Control::GotFocus, this, [this] { events.append(u"GotFocus"_s); });
    }
    void set_up_tree(QVBoxLayout& layout)
    {
        tree = std::make_unique<TreeView>();
        for (const QString& name : {u"first"_s, u"name.mp3"_s, u"third"_s})
            tree->Add(nullptr, name, name, {});
        tree->set_Selected(tree->Item(2));
        note_events(tree.get());
        layout.addWidget(tree.get());
    }
    void set_up_list(QVBoxLayout& layout)
    {
        list = std::make_unique<ListView>();
        list->set_ColumnHeaders({{u"Name"_s, 1500}, {u"Size"_s, 1500}});
        list->set_Checkboxes(true);
        list->set_MultiSelect(true);
        for (const QString& name : {u"first"_s, u"name.mp3"_s, u"third"_s})
            list->Add(name, name);
        list->set_Selected(2, true);
        list->set_View(which_ == Which::report ? ListView::ViewMode::report : ListView::ViewMode::list);
        note_events(list.get());
        layout.addWidget(list.get());
    }

    Which which_;
};

const QStringList no_events;
/// What is told of an edit that ended by a key: the view has the focus again before its text is asked about.
const QStringList accepted_by_key{u"GotFocus"_s, u"After new"_s};

void add_controls()
{
    QTest::addColumn<Which>("which");
    QTest::newRow("list as report") << Which::report;
    QTest::newRow("list as list") << Which::list;
    QTest::newRow("tree") << Which::tree;
}

} // namespace

class TestLabelEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void edit_opens_over_the_label_data() { add_controls(); }
    void edit_opens_over_the_label();
    void refused_edit_does_not_open_data() { add_controls(); }
    void refused_edit_does_not_open();
    void nothing_selected_nothing_edited_data() { add_controls(); }
    void nothing_selected_nothing_edited();
    void stem_of_a_file_name_is_selected_data();
    void stem_of_a_file_name_is_selected();
    void label_out_of_sight_is_scrolled_to_data() { add_controls(); }
    void label_out_of_sight_is_scrolled_to();
    void box_grows_and_follows_its_row_data() { add_controls(); }
    void box_grows_and_follows_its_row();

    void keys_accept_the_text_data();
    void keys_accept_the_text();
    void refused_text_comes_to_nothing_data() { add_controls(); }
    void refused_text_comes_to_nothing();
    void escape_keeps_the_old_text_data() { add_controls(); }
    void escape_keeps_the_old_text();
    void click_on_another_row_accepts_before_it_chooses_data() { add_controls(); }
    void click_on_another_row_accepts_before_it_chooses();
    void focus_elsewhere_accepts_and_stays_there_data() { add_controls(); }
    void focus_elsewhere_accepts_and_stays_there();
    void closing_the_form_cancels_data() { add_controls(); }
    void closing_the_form_cancels();
    void own_menu_of_the_box_does_not_end_the_edit_data() { add_controls(); }
    void own_menu_of_the_box_does_not_end_the_edit();

    void handler_may_do_anything_data();
    void handler_may_do_anything();
    void change_from_code_cancels_data();
    void change_from_code_cancels();

    void editing_keys_are_no_shortcuts_data();
    void editing_keys_are_no_shortcuts();
    void keys_edit_the_text_data() { add_controls(); }
    void keys_edit_the_text();
    void odd_names_survive_data();
    void odd_names_survive();

    void second_slow_click_edits();
    void double_click_or_a_first_click_edits_nothing();
    void F2_edits_where_labels_are_automatic();
};

void TestLabelEdit::edit_opens_over_the_label()
{
    QFETCH(const Which, which);
    Form form(which);
    QVERIFY(!form.is_editing());
    form.start();
    QCOMPARE(form.take(), QStringList{u"Before"_s});
    QVERIFY(form.is_editing());
    const QLineEdit* editor = form.editor();
    QVERIFY(editor != nullptr);
    QCOMPARE(Form::focused(), editor);
    QCOMPARE(editor->text(), u"name.mp3"_s);
    QVERIFY(editor->geometry().contains(form.on(2)) || editor->geometry().top() <= form.on(2).y());
    QVERIFY(form.view()->viewport()->rect().contains(editor->geometry()));
    QVERIFY(editor->width() > editor->fontMetrics().horizontalAdvance(u"name.mp3"_s));
    if (which != Which::tree)
        QVERIFY2(!editor->geometry().intersects(
                     QRect(form.view()->viewport()->mapFrom(form.list.get(), form.list->check_rect(2).topLeft()),
                           form.list->check_rect(2).size())),
                 "the check box stays in sight");
    form.start();
    QCOMPARE(form.take(), no_events);
}

void TestLabelEdit::refused_edit_does_not_open()
{
    QFETCH(const Which, which);
    Form form(which);
    form.refuses_before = true;
    form.start();
    QCOMPARE(form.take(), QStringList{u"Before"_s});
    QVERIFY(!form.is_editing());
    QVERIFY(form.editor() == nullptr);
    QVERIFY(form.view()->hasFocus());
}

void TestLabelEdit::nothing_selected_nothing_edited()
{
    QFETCH(const Which, which);
    Form form(which);
    form.refill(2);
    while (which == Which::tree && form.tree->Count() > 0)
        form.tree->Remove(1);
    if (which != Which::tree)
        form.list->Clear();
    form.take();
    form.start();
    QCOMPARE(form.take(), no_events);
    QVERIFY(!form.is_editing());
}

void TestLabelEdit::stem_of_a_file_name_is_selected_data()
{
    QTest::addColumn<Which>("which");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("selected");
    QTest::newRow("a file: up to the last full stop") << Which::report << u"a.b.mp3"_s << u"a.b"_s;
    QTest::newRow("a file in list mode") << Which::list << u"name.mp3"_s << u"name"_s;
    QTest::newRow("a file without extension") << Which::report << u"songmp3"_s << u"songmp3"_s;
    QTest::newRow("a name that begins with its only stop") << Which::report << u".mp3"_s << u".mp3"_s;
    QTest::newRow("a folder: all of it") << Which::tree << u"Vol. 2"_s << u"Vol. 2"_s;
}

void TestLabelEdit::stem_of_a_file_name_is_selected()
{
    QFETCH(const Which, which);
    QFETCH(const QString, name);
    QFETCH(const QString, selected);
    Form form(which);
    form.set_text(name);
    form.start();
    QCOMPARE(form.editor()->selectedText(), selected);
    QCOMPARE(form.editor()->cursorPosition(), selected.size());
    Form::type(u"x"_s);
    QCOMPARE(form.editor()->text(), u"x"_s + name.mid(selected.size()));
}

void TestLabelEdit::label_out_of_sight_is_scrolled_to()
{
    QFETCH(const Which, which);
    Form form(which);
    form.refill(200);
    form.select(190);
    form.view()->verticalScrollBar()->setValue(0);
    form.view()->horizontalScrollBar()->setValue(0);
    form.start();
    QVERIFY(form.view()->viewport()->rect().contains(form.editor()->geometry()));
    QCOMPARE(form.editor()->text(), u"new 190"_s);
    Form::type(u"new"_s);
    Form::key(Qt::Key_Return);
    QCOMPARE(form.text(), u"new"_s);
}

void TestLabelEdit::box_grows_and_follows_its_row()
{
    QFETCH(const Which, which);
    Form form(which);
    form.refill(500);
    QCoreApplication::processEvents();
    form.start();
    const QRect before = form.editor()->geometry();
    Form::type(u"a name that takes much more room"_s);
    QVERIFY(form.editor()->width() > before.width());
    form.editor()->selectAll();
    Form::type(u"a"_s);
    QCOMPARE(form.editor()->geometry(), before);
    Form::type(QString(200, u'w'));
    QVERIFY(form.editor()->geometry().right() <= form.view()->viewport()->rect().right());
    QCOMPARE(form.editor()->geometry().left(), before.left());

    QScrollBar* bar = which == Which::list ? form.view()->horizontalScrollBar() : form.view()->verticalScrollBar();
    bar->setValue(bar->maximum());
    QCoreApplication::processEvents();
    QVERIFY(bar->maximum() > 0);
    QVERIFY2(!form.view()->viewport()->rect().intersects(form.editor()->geometry()), "it goes with its row");
    bar->setValue(0);
    form.view()->setFont(QFont(form.view()->font().family(), 30));
    QCoreApplication::processEvents();
    QVERIFY2(form.editor()->height() > before.height(), "and it is laid out anew with it");
    QVERIFY(form.is_editing());
}

void TestLabelEdit::keys_accept_the_text_data()
{
    QTest::addColumn<Which>("which");
    QTest::addColumn<int>("key");
    for (const auto& [name, which] :
         {std::pair{"report", Which::report}, {"list", Which::list}, {"tree", Which::tree}}) {
        QTest::addRow("Enter, %s", name) << which << int(Qt::Key_Return);
        QTest::addRow("Enter of the number pad, %s", name) << which << int(Qt::Key_Enter);
        QTest::addRow("Tab, %s", name) << which << int(Qt::Key_Tab);
        QTest::addRow("Shift and Tab, %s", name) << which << int(Qt::Key_Backtab);
    }
}

void TestLabelEdit::keys_accept_the_text()
{
    QFETCH(const Which, which);
    QFETCH(const int, key);
    Form form(which);
    form.start();
    form.take();
    form.editor()->selectAll();
    Form::type(u"new"_s);
    Form::key(static_cast<Qt::Key>(key));
    QCOMPARE(form.take(), accepted_by_key);
    QCOMPARE(form.text(), u"new"_s);
    QCOMPARE(form.view()->model()->index(1, 0).data().toString(), u"new"_s);
    QVERIFY(!form.is_editing());
    QVERIFY(form.editor() == nullptr);
    QVERIFY(form.view()->hasFocus());
    QCOMPARE(form.form_keys, 0);
    QCoreApplication::processEvents();
    QCOMPARE(form.take(), no_events);

    form.start();
    form.take();
    Form::key(static_cast<Qt::Key>(key));
    QCOMPARE(form.take(), accepted_by_key); // also when nothing was typed
}

void TestLabelEdit::refused_text_comes_to_nothing()
{
    QFETCH(const Which, which);
    Form form(which);
    form.refuses_after = true;
    form.start();
    form.editor()->selectAll();
    Form::type(u"new"_s);
    form.take();
    Form::key(Qt::Key_Return);
    QCOMPARE(form.take(), accepted_by_key);
    QCOMPARE(form.text(), u"name.mp3"_s);
}

void TestLabelEdit::escape_keeps_the_old_text()
{
    QFETCH(const Which, which);
    Form form(which);
    form.start();
    Form::type(u"new"_s);
    form.take();
    Form::key(Qt::Key_Escape);
    QCOMPARE(form.take(), QStringList{u"GotFocus"_s});
    QCOMPARE(form.text(), u"name.mp3"_s);
    QVERIFY(form.view()->hasFocus() && !form.is_editing() && form.editor() == nullptr);
    QCOMPARE(form.form_keys, 0);
    form.other.setFocus();
    QCOMPARE(form.take(), no_events);
}

void TestLabelEdit::click_on_another_row_accepts_before_it_chooses()
{
    QFETCH(const Which, which);
    Form form(which);
    QString text_at_choice;
    const auto note_choice = [&] { text_at_choice = form.events.join(u','); };
    if (which == Which::tree)
        connect(form.tree.get(), &TreeView::NodeClick, &form, note_choice);
    else
        connect(form.list.get(), &ListView::ItemClick, &form, note_choice);
    QString selected_at_end;
    form.during_after = [&] { selected_at_end = form.text(); };
    form.start();
    form.editor()->selectAll();
    Form::type(u"new"_s);
    form.take();
    const QPoint third = form.on(3);
    QTest::mouseClick(form.view()->viewport(), Qt::LeftButton, {}, third);
    QCOMPARE(text_at_choice, u"After new,GotFocus"_s);
    QCOMPARE(selected_at_end, u"name.mp3"_s);
    QCOMPARE(form.text(), u"third"_s);
    form.select(2);
    QCOMPARE(form.text(), u"new"_s);
}

void TestLabelEdit::focus_elsewhere_accepts_and_stays_there()
{
    QFETCH(const Which, which);
    Form form(which);
    form.start();
    form.editor()->selectAll();
    Form::type(u"new"_s);
    form.take();
    QTest::mouseClick(&form.other, Qt::LeftButton);
    QCOMPARE(form.take(), QStringList{u"After new"_s});
    QCOMPARE(form.text(), u"new"_s);
    QVERIFY(form.other.hasFocus());
}

void TestLabelEdit::closing_the_form_cancels()
{
    QFETCH(const Which, which);
    Form form(which);
    QVERIFY(QTest::qWaitForWindowActive(&form));
    form.start();
    Form::type(u"new"_s);
    form.take();
    form.close();
    QTRY_VERIFY(!form.is_editing());
    QVERIFY(!form.take().join(u',').contains(u"After"_s));
    QCOMPARE(form.text(), u"name.mp3"_s);
}

void TestLabelEdit::own_menu_of_the_box_does_not_end_the_edit()
{
    QFETCH(const Which, which);
    Form form(which);
    form.start();
    form.take();
    QMenu menu(form.editor());
    menu.addAction(u"Paste"_s);
    menu.popup(form.mapToGlobal(QPoint(10, 10)));
    QTRY_VERIFY(menu.isVisible());
    QVERIFY(form.is_editing());
    menu.close();
    QVERIFY(form.is_editing());
    QCOMPARE(form.take(), no_events);
}

void TestLabelEdit::handler_may_do_anything_data()
{
    QTest::addColumn<Which>("which");
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("way");
    for (const auto& [name, which] :
         {std::pair{"report", Which::report}, {"list", Which::list}, {"tree", Which::tree}}) {
        for (const char* what : {"opens a modal box", "refills", "removes", "destroys the control", "edits again"}) {
            QTest::addRow("%s at Enter, %s", what, name) << which << QString::fromLatin1(what) << u"enter"_s;
            QTest::addRow("%s when the focus goes, %s", what, name) << which << QString::fromLatin1(what) << u"focus"_s;
        }
    }
}

void TestLabelEdit::handler_may_do_anything()
{
    QFETCH(const Which, which);
    QFETCH(const QString, what);
    QFETCH(const QString, way);
    Form form(which);
    if (what == u"opens a modal box") {
        form.during_after = [&] {
            QMessageBox box(QMessageBox::Information, {}, u"is playing"_s, QMessageBox::Ok, &form);
            QTimer::singleShot(0, &box, [&box] { QTest::keyClick(&box, Qt::Key_Return); });
            box.exec();
        };
    } else if (what == u"refills") {
        form.during_after = [&] { form.refill(5); };
    } else if (what == u"removes") {
        form.during_after = [&] { form.remove(); };
    } else if (what == u"destroys the control") {
        form.during_after = [&] { form.destroy(); };
    } else {
        form.during_after = [&] { form.start(); };
    }
    form.start();
    form.editor()->selectAll();
    Form::type(u"new"_s);
    form.take();
    if (way == u"enter")
        Form::key(Qt::Key_Return);
    else
        form.other.setFocus();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QStringList told = form.take();
    QCOMPARE(told.filter(u"After"_s), QStringList{u"After new"_s});
    QVERIFY(!told.contains(u"the box is still there"_s));
    if (what == u"opens a modal box")
        QCOMPARE(form.text(), u"new"_s);
    if (what == u"refills")
        QCOMPARE(form.text(), u"new 2"_s);
    if (what == u"edits again" && way == u"enter") {
        QVERIFY(form.is_editing());
        Form::key(Qt::Key_Escape);
        QCOMPARE(form.text(), u"new"_s);
    }
}

void TestLabelEdit::change_from_code_cancels_data()
{
    QTest::addColumn<Which>("which");
    QTest::addColumn<QString>("what");
    for (const auto& [name, which] :
         {std::pair{"report", Which::report}, {"list", Which::list}, {"tree", Which::tree}}) {
        for (const char* what : {"refill", "remove", "select another"})
            QTest::addRow("%s, %s", what, name) << which << QString::fromLatin1(what);
    }
    QTest::newRow("sort, report") << Which::report << u"sort"_s;
    QTest::newRow("sort, list") << Which::list << u"sort"_s;
    QTest::newRow("change the view, report") << Which::report << u"view"_s;
    QTest::newRow("remove the node above, tree") << Which::tree << u"remove above"_s;
    QTest::newRow("close the node above, tree") << Which::tree << u"close above"_s;
}

void TestLabelEdit::change_from_code_cancels()
{
    QFETCH(const Which, which);
    QFETCH(const QString, what);
    Form form(which);
    if (what.endsWith(u"above")) {
        TreeNode* below = form.tree->Add(form.tree->Item(1), u"below"_s, u"below"_s, {});
        form.tree->set_Expanded(form.tree->Item(1), true);
        form.tree->set_Selected(below);
    }
    form.start();
    Form::type(u"typed"_s);
    form.take();
    if (what == u"refill")
        form.refill(5);
    else if (what == u"remove")
        form.remove();
    else if (what == u"select another")
        form.select(3);
    else if (what == u"sort")
        form.list->sort(0, ListView::Order::descending);
    else if (what == u"view")
        form.list->set_View(ListView::ViewMode::list);
    else if (what == u"remove above")
        form.tree->Remove(1);
    else
        form.tree->set_Expanded(form.tree->Item(1), false);
    QTRY_VERIFY(!form.is_editing()); // a node goes out of sight with the next layout
    QVERIFY(form.editor() == nullptr);
    QStringList told = form.take();
    told.removeDuplicates(); // both views get the focus in turn when the mode changes
    QCOMPARE(told, QStringList{u"GotFocus"_s});
    QVERIFY(form.view()->hasFocus());
    for (int row = 0; row < form.view()->model()->rowCount(); ++row)
        QVERIFY(!form.view()->model()->index(row, 0).data().toString().contains(u"typed"_s));
}

void TestLabelEdit::editing_keys_are_no_shortcuts_data()
{
    QTest::addColumn<Which>("which");
    QTest::addColumn<QKeySequence>("keys");
    const std::pair<const char*, QKeySequence> all_keys[] = {
        {"Ctrl+C", QKeySequence(Qt::CTRL | Qt::Key_C)},
        {"Ctrl+V", QKeySequence(Qt::CTRL | Qt::Key_V)},
        {"Del", QKeySequence(Qt::Key_Delete)},
        {"F2", QKeySequence(Qt::Key_F2)},
        {"F5", QKeySequence(Qt::Key_F5)},
        {"Ctrl+A", QKeySequence(Qt::CTRL | Qt::Key_A)},
        {"Up", QKeySequence(Qt::Key_Up)},
        {"Home", QKeySequence(Qt::Key_Home)},
        {"Space", QKeySequence(Qt::Key_Space)},
        {"A", QKeySequence(Qt::Key_A)},
    };
    for (const auto& [name, keys] : all_keys) {
        QTest::addRow("%s, report", name) << Which::report << keys;
        QTest::addRow("%s, list", name) << Which::list << keys;
        QTest::addRow("%s, tree", name) << Which::tree << keys;
    }
}

void TestLabelEdit::editing_keys_are_no_shortcuts()
{
    QFETCH(const Which, which);
    QFETCH(const QKeySequence, keys);
    Form form(which);
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QAction action;
    action.setShortcut(keys);
    form.addAction(&action);
    QSignalSpy fired(&action, &QAction::triggered);
    const auto key = static_cast<Qt::Key>(keys[0].key());
    QTest::keyClick(form.windowHandle(), key, keys[0].keyboardModifiers());
    QCOMPARE(fired.count(), 1);
    form.start();
    form.take();
    form.form_keys = 0;
    QTest::keyClick(form.windowHandle(), key, keys[0].keyboardModifiers());
    QCOMPARE(fired.count(), 1);
    QCOMPARE(form.form_keys, 0);
    QVERIFY(form.is_editing());
    QCOMPARE(form.text(), u"name.mp3"_s);
    if (which != Which::tree)
        QVERIFY2(!form.list->Item(2).Checked, "no key ticks the row below the box");
    Form::key(Qt::Key_Escape);
    QTest::keyClick(form.windowHandle(), key, keys[0].keyboardModifiers());
    QCOMPARE(fired.count(), 2);
}

void TestLabelEdit::keys_edit_the_text()
{
    QFETCH(const Which, which);
    Form form(which);
    form.start();
    Form::key(Qt::Key_Home);
    Form::type(u"a "_s);
    Form::key(Qt::Key_End);
    Form::key(Qt::Key_Left);
    Form::key(Qt::Key_Delete);
    QCOMPARE(form.editor()->text(), u"a name.mp"_s);
    Form::key(Qt::Key_A, Qt::ControlModifier);
    Form::key(Qt::Key_C, Qt::ControlModifier);
    Form::key(Qt::Key_End);
    Form::key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(form.editor()->text(), u"a name.mpa name.mp"_s);
    form.take();
    Form::key(Qt::Key_Return);
    QCOMPARE(form.text(), u"a name.mpa name.mp"_s);
}

void TestLabelEdit::odd_names_survive_data()
{
    const std::pair<const char*, QString> names[] = {
        {"stray bytes", u"caf"_s + QChar(0xdce9) + u" - x.mp3"_s},
        {"a stray byte behind a picture sign", u"\U0001F3B5"_s + QChar(0xdc80) + u".mp3"_s},
        {"a line break and a tab", u"two\nlines\tx.mp3"_s},
        {"markup", u"<b>bold</b> &amp; x.mp3"_s},
        {"Korean", u"가수 - 제목.mp3"_s},
        {"a backslash", u"a"_s + QChar(0xf05c) + u"b.mp3"_s},
        {"a NUL", u"machine"_s + QChar(0)},
    };
    QTest::addColumn<Which>("which");
    QTest::addColumn<QString>("name");
    for (const auto& [title, name] : names) {
        QTest::addRow("%s, report", title) << Which::report << name;
        QTest::addRow("%s, list", title) << Which::list << name;
        QTest::addRow("%s, tree", title) << Which::tree << name;
    }
}

void TestLabelEdit::odd_names_survive()
{
    QFETCH(const Which, which);
    QFETCH(const QString, name);
    Form form(which);
    form.set_text(name);
    form.start();
    form.take();
    Form::key(Qt::Key_Return);
    QCOMPARE(form.take().last(), u"After "_s + name);
    QCOMPARE(form.text(), name);
    if (name.contains(QChar(0)))
        return;
    form.start();
    Form::key(Qt::Key_End);
    Form::type(u"x"_s);
    Form::key(Qt::Key_Return);
    QCOMPARE(form.text(), name + u'x');
    form.start();
    Form::key(Qt::Key_End);
    Form::key(Qt::Key_Backspace);
    Form::key(Qt::Key_Return);
    QCOMPARE(form.text(), name);
}

void TestLabelEdit::second_slow_click_edits()
{
    Form form(Which::tree);
    const QPoint second = form.on(2);
    QApplication::setDoubleClickInterval(20);
    QTest::mouseClick(form.tree->viewport(), Qt::LeftButton, {}, second);
    QTest::qWait(3 * QApplication::doubleClickInterval());
    QVERIFY2(!form.is_editing(), "not unless it is asked for");

    form.tree->set_LabelEdit_automatic(true);
    QTest::mouseClick(form.tree->viewport(), Qt::LeftButton, {}, second);
    QTRY_VERIFY(form.is_editing());
    QCOMPARE(form.take(), QStringList{u"Before"_s});
    Form::key(Qt::Key_Escape);
    form.refuses_before = true;
    form.take();
    QTest::mouseClick(form.tree->viewport(), Qt::LeftButton, {}, second);
    QTRY_VERIFY(form.events.contains(u"Before"_s));
    QVERIFY(!form.is_editing());
}

void TestLabelEdit::double_click_or_a_first_click_edits_nothing()
{
    Form form(Which::tree);
    form.tree->set_LabelEdit_automatic(true);
    QApplication::setDoubleClickInterval(20);
    QWidget* viewport = form.tree->viewport();
    const QPoint second = form.on(2);
    const QPoint third = form.on(3);
    const auto edits = [&form] {
        QTest::qWait(3 * QApplication::doubleClickInterval());
        return form.take().contains(u"Before"_s);
    };
    QTest::mouseClick(viewport, Qt::LeftButton, {}, second);
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, second);
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, second);
    QVERIFY2(!edits(), "a double click");
    QTest::mouseClick(viewport, Qt::LeftButton, {}, second);
    QTest::mouseClick(viewport, Qt::LeftButton, {}, third);
    QVERIFY2(!edits(), "a click that selects, soon after one that does not");
    QTest::mouseClick(viewport, Qt::RightButton, {}, third);
    QVERIFY2(!edits(), "a right click");
    form.other.setFocus();
    QTest::mouseClick(viewport, Qt::LeftButton, {}, third);
    QVERIFY2(!edits(), "a click that only brings the focus");
    QTest::mouseClick(viewport, Qt::LeftButton, {}, third);
    form.other.setFocus();
    QVERIFY2(!edits(), "the focus has gone meanwhile");
    QTest::mousePress(viewport, Qt::LeftButton, {}, third);
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, second);
    QVERIFY2(!edits(), "a press that slid off");
}

void TestLabelEdit::F2_edits_where_labels_are_automatic()
{
    Form form(Which::tree);
    Form::key(Qt::Key_F2);
    QVERIFY(!form.is_editing());
    form.tree->set_LabelEdit_automatic(true);
    form.take();
    Form::key(Qt::Key_F2);
    QCOMPARE(form.take(), QStringList{u"Before"_s});
    QVERIFY(form.is_editing());
}

QUILMO_UI_TEST(TestLabelEdit)
#include "test_label_edit.moc"
