#include "platform/RunTimeError.h"
#include "platform/controls/ListView.h"
#include "platform/controls/TreeView.h"
#include "platform/controls/drag.h"
#include "platform/controls/message_window.h"
#include "test_main.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QListView>
#include <QMimeData>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>
#include <QVBoxLayout>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// A form with a tree and a list whose rows can be dragged, and a drag that does what the test wants.
class Form : public QWidget
{
public:
    explicit Form(ListView::ViewMode mode = ListView::ViewMode::report)
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&tree);
        layout->addWidget(&list);
        resize(500, 600);
        for (const QString& name : {u"a"_s, u"b"_s, u"c"_s})
            tree.Add(nullptr, name, name, {});
        tree.Add(tree.Item(3), u"below c"_s, u"below c"_s, {});
        tree.set_Selected(tree.Item(1));
        tree.set_OLEDragMode(true);
        tree.set_OLEDropMode(true);
        list.set_ColumnHeaders({{u"Name"_s, 3000}, {u"Size"_s, 1500}});
        list.set_Checkboxes(true);
        list.set_MultiSelect(true);
        list.set_View(mode);
        for (int index = 1; index <= 5; ++index)
            list.Add(QString::number(index), u"song %1"_s.arg(index));
        list.set_OLEDragMode(true);
        note_events();
        set_drag_runner([this](QDrag& drag) {
            events.append(u"drag "_s + drag.mimeData()->text());
            picture = drag.pixmap();
            if (during_drag)
                during_drag(drag);
        });
        show();
    }
    ~Form() override
    {
        set_drag_runner({});
        layout()->removeWidget(&tree);
        layout()->removeWidget(&list);
    }
    Q_DISABLE_COPY_MOVE(Form)

    QWidget* rows() const { return list.view()->viewport(); }
    QPoint on_row(int index) const { return rows()->mapFrom(&list, list.row_rect(index).center()); }
    QPoint on_check(int index) const { return rows()->mapFrom(&list, list.check_rect(index).center()); }
    QPoint on_node(int index) const { return tree.node_rect(tree.Item(index)).center(); }
    QPoint beside_rows() const { return rows()->rect().bottomRight() - QPoint(3, 3); }
    QPoint beside_nodes() const { return tree.viewport()->rect().bottomRight() - QPoint(3, 3); }

    static void move(QWidget* viewport, QPoint point, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        QMouseEvent event(QEvent::MouseMove, point, viewport->mapToGlobal(point), Qt::NoButton, buttons, {});
        QApplication::sendEvent(viewport, &event);
    }
    static void pull(QWidget* viewport, QPoint from, Qt::MouseButton button = Qt::LeftButton,
                     Qt::KeyboardModifiers keys = {})
    {
        QTest::mousePress(viewport, button, keys, from);
        move(viewport, from + QPoint(QApplication::startDragDistance(), 0), button);
    }
    QList<int> selected() const
    {
        QList<int> rows;
        for (int index = 1; index <= list.Count(); ++index) {
            if (list.Item(index).Selected)
                rows.append(index);
        }
        return rows;
    }
    QStringList take() { return std::exchange(events, {}); }

    // What the platform sends to a target; each gives whether a drop is welcome.
    bool drag_enter(QPoint point) { return send<QDragEnterEvent>(point); }
    bool drag_move(QPoint point) { return send<QDragMoveEvent>(point); }
    bool drop(QPoint point)
    {
        QDropEvent event(point, Qt::CopyAction, &foreign, Qt::LeftButton, {});
        QApplication::sendEvent(tree.viewport(), &event);
        return event.isAccepted() && event.dropAction() == Qt::CopyAction;
    }
    void drag_leave()
    {
        QDragLeaveEvent event;
        QApplication::sendEvent(tree.viewport(), &event);
    }

    TreeView tree;
    ListView list;
    QMimeData foreign;
    QStringList events;
    QPixmap picture;
    std::function<void(QDrag&)> during_drag;
    bool highlights = false; ///< whether OLEDragOver marks the node under the mouse

private:
    template<typename Event> bool send(QPoint point)
    {
        Event event(point, Qt::CopyAction, &foreign, Qt::LeftButton, {});
        event.ignore();
        QApplication::sendEvent(tree.viewport(), &event);
        return event.isAccepted();
    }
    void note_events()
    {
        connect(&tree, &TreeView::NodeClick, this, [this](TreeNode* n) { events.append(u"NodeClick "_s + n->Key()); });
        connect(&tree, &TreeView::MouseUp, this, [this] { events.append(u"MouseUp"_s); });
        connect(&tree, &TreeView::OLEStartDrag, this,
                [this](const QMimeData& content) { events.append(u"start "_s + content.text()); });
        connect(&tree, &TreeView::OLEDragOver, this, [this](const QMimeData& content, QPoint point) {
            const TreeNode* node = tree.HitTest(point);
            events.append(u"over %1 %2"_s.arg(node != nullptr ? node->Key() : u"nothing"_s, content.text()));
            if (highlights)
                tree.set_DropHighlight(tree.HitTest(point));
        });
        connect(&tree, &TreeView::OLEDragLeave, this, [this] { events.append(u"leave"_s); });
        connect(&tree, &TreeView::OLEDragDrop, this, [this](const QMimeData& content, QPoint point) {
            const TreeNode* marked = tree.DropHighlight();
            events.append(u"drop %1 on %2, marked %3"_s.arg(content.text(), tree.HitTest(point)->Key(),
                                                            marked != nullptr ? marked->Key() : u"none"_s));
        });
        connect(&list, &ListView::ItemClick, this, [this](int i) { events.append(u"ItemClick %1"_s.arg(i)); });
        connect(&list, &ListView::ItemCheck, this, [this](int i) { events.append(u"ItemCheck %1"_s.arg(i)); });
        connect(&list, &ListView::MouseUp, this, [this] { events.append(u"MouseUp"_s); });
        connect(&list, &ListView::OLEStartDrag, this,
                [this](const QMimeData& content) { events.append(u"start "_s + content.text()); });
    }
};

const QStringList no_events;

void add_view_modes()
{
    QTest::addColumn<ListView::ViewMode>("mode");
    QTest::newRow("report") << ListView::ViewMode::report;
    QTest::newRow("list") << ListView::ViewMode::list;
}

} // namespace

class TestDrag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pull_of_a_row_drags_it_data() { add_view_modes(); }
    void pull_of_a_row_drags_it();
    void pull_of_a_selected_row_drags_all_data() { add_view_modes(); }
    void pull_of_a_selected_row_drags_all();
    void press_without_a_pull_selects_that_row_alone_data() { add_view_modes(); }
    void press_without_a_pull_selects_that_row_alone();
    void some_pulls_drag_no_row_data();
    void some_pulls_drag_no_row();
    void rows_are_dragged_only_where_it_is_asked_for_data() { add_view_modes(); }
    void rows_are_dragged_only_where_it_is_asked_for();

    void pull_of_a_node_drags_it_and_keeps_the_selection();
    void short_pull_of_a_node_is_a_click();
    void some_pulls_drag_no_node();
    void selection_of_a_drop_stays();
    void tree_does_not_scroll_back_to_the_old_selection();

    void handlers_add_to_what_is_dragged_data();
    void handlers_add_to_what_is_dragged();
    void error_in_a_handler_is_fatal_and_nothing_worse_data();
    void error_in_a_handler_is_fatal_and_nothing_worse();
    void control_may_go_when_a_drag_starts();
    void picture_tells_the_name_or_the_number();

    void moves_are_welcome_over_a_highlight_only();
    void drop_is_told_with_its_highlight();
    void highlight_ends_with_the_drag_and_with_its_node();
    void highlight_is_painted();
    void tree_takes_no_drops_unless_asked();
};

void TestDrag::pull_of_a_row_drags_it()
{
    QFETCH(const ListView::ViewMode, mode);
    Form form(mode);
    const QPoint from = form.on_row(3);
    QTest::mousePress(form.rows(), Qt::LeftButton, {}, from);
    QCOMPARE(form.take(), QStringList{u"ItemClick 3"_s});
    Form::move(form.rows(), from + QPoint(QApplication::startDragDistance() - 1, 0));
    QCOMPARE(form.take(), no_events);
    Form::move(form.rows(), from + QPoint(QApplication::startDragDistance(), 0));
    QCOMPARE(form.take(), (QStringList{u"start song 3"_s, u"drag song 3"_s}));
    QCOMPARE(form.selected(), QList<int>{3});
    Form::move(form.rows(), form.on_row(5));
    QTest::mouseRelease(form.rows(), Qt::LeftButton, {}, form.on_row(5));
    QCOMPARE(form.take(), no_events);
    QCOMPARE(form.selected(), QList<int>{3});
    QTest::mouseClick(form.rows(), Qt::LeftButton, {}, form.on_row(2));
    QCOMPARE(form.take(), (QStringList{u"ItemClick 2"_s, u"MouseUp"_s}));
    QCOMPARE(form.selected(), QList<int>{2});
}

void TestDrag::pull_of_a_selected_row_drags_all()
{
    QFETCH(const ListView::ViewMode, mode);
    Form form(mode);
    QTest::mouseClick(form.rows(), Qt::LeftButton, {}, form.on_row(2));
    QTest::mouseClick(form.rows(), Qt::LeftButton, Qt::ControlModifier, form.on_row(4));
    form.take();
    Form::pull(form.rows(), form.on_row(2));
    QCOMPARE(form.take(), (QStringList{u"ItemClick 2"_s, u"start song 2\nsong 4"_s, u"drag song 2\nsong 4"_s}));
    QTest::mouseRelease(form.rows(), Qt::LeftButton, {}, form.on_row(2));
    QCOMPARE(form.selected(), (QList<int>{2, 4}));
    QCOMPARE(form.list.SelectedItem(), 2);
}

void TestDrag::press_without_a_pull_selects_that_row_alone()
{
    QFETCH(const ListView::ViewMode, mode);
    Form form(mode);
    QTest::mouseClick(form.rows(), Qt::LeftButton, {}, form.on_row(2));
    QTest::mouseClick(form.rows(), Qt::LeftButton, Qt::ShiftModifier, form.on_row(4));
    QTest::mousePress(form.rows(), Qt::LeftButton, {}, form.on_row(3));
    QCOMPARE(form.selected(), (QList<int>{2, 3, 4}));
    QTest::mouseRelease(form.rows(), Qt::LeftButton, {}, form.on_row(3));
    QCOMPARE(form.selected(), QList<int>{3});
    // Taken out by Ctrl, a row can't drag the rest.
    QTest::mouseClick(form.rows(), Qt::LeftButton, Qt::ControlModifier, form.on_row(4));
    form.take();
    Form::pull(form.rows(), form.on_row(4), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(form.take(), no_events);
    QTest::mouseRelease(form.rows(), Qt::LeftButton, Qt::ControlModifier, form.on_row(4));
}

void TestDrag::some_pulls_drag_no_row_data()
{
    QTest::addColumn<ListView::ViewMode>("mode");
    QTest::addColumn<QString>("what");
    for (const char* what : {"check box", "empty space", "right button", "button up"}) {
        QTest::addRow("%s, report", what) << ListView::ViewMode::report << QString::fromLatin1(what);
        QTest::addRow("%s, list", what) << ListView::ViewMode::list << QString::fromLatin1(what);
    }
}

void TestDrag::some_pulls_drag_no_row()
{
    QFETCH(const ListView::ViewMode, mode);
    QFETCH(const QString, what);
    Form form(mode);
    form.list.set_Selected(1, true);
    QTRY_COMPARE(form.list.view()->selectionModel()->selectedRows().size(), 1);
    const auto button = what == u"right button" ? Qt::RightButton : Qt::LeftButton;
    const QPoint from = what == u"check box"     ? form.on_check(1)
                        : what == u"empty space" ? form.beside_rows()
                                                 : form.on_row(1);
    QTest::mousePress(form.rows(), button, {}, from);
    if (what == u"button up")
        QTest::mouseRelease(form.rows(), button, {}, from);
    const Qt::MouseButtons held = what == u"button up" ? Qt::NoButton : button;
    Form::move(form.rows(), form.on_row(3), held);
    Form::move(form.rows(), form.on_row(4), held);
    QVERIFY(form.take().filter(QRegularExpression(u"start|drag"_s)).isEmpty());
}

void TestDrag::rows_are_dragged_only_where_it_is_asked_for()
{
    QFETCH(const ListView::ViewMode, mode);
    Form form(mode);
    form.list.set_OLEDragMode(false);
    Form::pull(form.rows(), form.on_row(2));
    Form::move(form.rows(), form.on_row(3));
    Form::move(form.rows(), form.on_row(4));
    QCOMPARE(form.take(), QStringList{u"ItemClick 2"_s});
    QCOMPARE(form.selected(), (QList<int>{2, 3, 4}));
}

void TestDrag::pull_of_a_node_drags_it_and_keeps_the_selection()
{
    Form form;
    const TreeNode* selected_at_start = nullptr;
    connect(&form.tree, &TreeView::OLEStartDrag, &form, [&] { selected_at_start = form.tree.SelectedItem(); });
    QTest::mousePress(form.tree.viewport(), Qt::LeftButton, {}, form.on_node(2));
    QCOMPARE(form.tree.SelectedItem()->Key(), u"b"_s);
    Form::move(form.tree.viewport(), form.on_node(2) + QPoint(QApplication::startDragDistance(), 0));
    QCOMPARE(form.take(), (QStringList{u"start b"_s, u"drag b"_s}));
    QCOMPARE(form.tree.SelectedItem()->Key(), u"a"_s);
    QCOMPARE(selected_at_start, form.tree.Item(1));
    QCOMPARE(form.tree.selectionModel()->selectedIndexes().size(), 1);
    Form::move(form.tree.viewport(), form.on_node(3));
    QTest::mouseRelease(form.tree.viewport(), Qt::LeftButton, {}, form.on_node(2));
    QCOMPARE(form.take(), no_events);
    QCOMPARE(form.tree.SelectedItem()->Key(), u"a"_s);
    QTest::mouseClick(form.tree.viewport(), Qt::LeftButton, {}, form.on_node(2));
    QCOMPARE(form.take(), (QStringList{u"NodeClick b"_s, u"MouseUp"_s}));
}

void TestDrag::short_pull_of_a_node_is_a_click()
{
    Form form;
    const QPoint from = form.on_node(2);
    QTest::mousePress(form.tree.viewport(), Qt::LeftButton, {}, from);
    Form::move(form.tree.viewport(), from + QPoint(QApplication::startDragDistance() - 1, 0));
    QTest::mouseRelease(form.tree.viewport(), Qt::LeftButton, {}, from);
    QCOMPARE(form.take(), (QStringList{u"NodeClick b"_s, u"MouseUp"_s}));
    QCOMPARE(form.tree.SelectedItem()->Key(), u"b"_s);
}

void TestDrag::some_pulls_drag_no_node()
{
    Form form;
    QWidget* viewport = form.tree.viewport();
    const auto drags = [&form] { return !form.take().filter(QRegularExpression(u"start|drag"_s)).isEmpty(); };
    Form::pull(viewport, form.on_node(2), Qt::RightButton);
    QTest::mouseRelease(viewport, Qt::RightButton, {}, form.on_node(2));
    QVERIFY2(!drags(), "the right button");
    Form::pull(viewport, form.beside_nodes() - QPoint(40, 0));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, form.beside_nodes());
    QVERIFY2(!drags(), "no node");
    const QRect c = form.tree.node_rect(form.tree.Item(3));
    Form::pull(viewport, QPoint(c.left() - form.tree.indentation() / 2, c.center().y()));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, form.on_node(3));
    QVERIFY2(!drags(), "the arrow");
    form.tree.set_OLEDragMode(false);
    Form::pull(viewport, form.on_node(2));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, form.on_node(2));
    QVERIFY2(!drags(), "not asked for");
}

void TestDrag::selection_of_a_drop_stays()
{
    Form form;
    form.during_drag = [&](QDrag&) { form.tree.set_Selected(form.tree.Item(3)); };
    Form::pull(form.tree.viewport(), form.on_node(2));
    QCOMPARE(form.tree.SelectedItem()->Key(), u"c"_s);
    // The pressed node may be the target as well as gone.
    form.during_drag = [&](QDrag&) { form.tree.Remove(2); };
    Form::pull(form.tree.viewport(), form.on_node(2));
    QCOMPARE(form.tree.SelectedItem()->Key(), u"c"_s);
    QVERIFY(form.take().filter(u"NodeClick"_s).isEmpty());
}

void TestDrag::tree_does_not_scroll_back_to_the_old_selection()
{
    Form form;
    for (int number = 1; number <= 200; ++number)
        form.tree.Add(nullptr, u"n%1"_s.arg(number), u"n%1"_s.arg(number), {});
    TreeNode* last = form.tree.Item(form.tree.Count());
    form.tree.scrollToBottom();
    Form::pull(form.tree.viewport(), form.tree.node_rect(last).center());
    QCOMPARE(form.tree.SelectedItem()->Key(), u"a"_s);
    QVERIFY(form.tree.viewport()->rect().contains(form.tree.node_rect(last).center()));
    QTest::keyClick(&form.tree, Qt::Key_Down);
    QVERIFY2(form.tree.viewport()->rect().contains(form.on_node(2)), "a key shows the node that it goes to");
}

void TestDrag::handlers_add_to_what_is_dragged_data()
{
    QTest::addColumn<bool>("from_tree");
    QTest::newRow("tree") << true;
    QTest::newRow("list") << false;
}

void TestDrag::handlers_add_to_what_is_dragged()
{
    QFETCH(const bool, from_tree);
    Form form;
    const auto add_path = [](QMimeData& content) {
        content.setUrls({QUrl::fromLocalFile(u"/Music/"_s + content.text())});
    };
    connect(&form.tree, &TreeView::OLEStartDrag, &form, add_path);
    connect(&form.list, &ListView::OLEStartDrag, &form, add_path);
    QList<QUrl> urls;
    QString text;
    form.during_drag = [&](const QDrag& drag) {
        urls = drag.mimeData()->urls();
        text = drag.mimeData()->text();
    };
    if (from_tree)
        Form::pull(form.tree.viewport(), form.on_node(2));
    else
        Form::pull(form.rows(), form.on_row(2));
    QCOMPARE(text, from_tree ? u"b"_s : u"song 2"_s);
    QCOMPARE(urls, QList<QUrl>{QUrl::fromLocalFile(u"/Music/"_s + text)});
}

void TestDrag::error_in_a_handler_is_fatal_and_nothing_worse_data()
{
    handlers_add_to_what_is_dragged_data();
}

void TestDrag::error_in_a_handler_is_fatal_and_nothing_worse()
{
    QFETCH(const bool, from_tree);
    Form form;
    QList<int> errors;
    set_fatal_error_handler([&](const RunTimeError& error) { errors.append(error.number()); });
    const auto fail = guarded([](QMimeData&) { throw RunTimeError(RunTimeError::subscript_out_of_range); });
    connect(&form.tree, &TreeView::OLEStartDrag, &form, fail);
    connect(&form.list, &ListView::OLEStartDrag, &form, fail);
    if (from_tree)
        Form::pull(form.tree.viewport(), form.on_node(2));
    else
        Form::pull(form.rows(), form.on_row(2));
    set_fatal_error_handler({});
    QCOMPARE(errors, QList<int>{RunTimeError::subscript_out_of_range});
}

void TestDrag::control_may_go_when_a_drag_starts()
{
    const Form form; // for its runner
    auto tree = std::make_unique<TreeView>();
    tree->Add(nullptr, u"a"_s, u"a"_s, {});
    tree->set_OLEDragMode(true);
    tree->show();
    connect(tree.get(), &TreeView::OLEStartDrag, &form, [&] { tree.reset(); });
    Form::pull(tree->viewport(), tree->node_rect(tree->Item(1)).center());
    QVERIFY(tree == nullptr);
    auto list = std::make_unique<ListView>();
    list->Add(u"a"_s, u"a"_s);
    list->set_OLEDragMode(true);
    list->show();
    connect(list.get(), &ListView::OLEStartDrag, &form, [&] { list.reset(); });
    QWidget* viewport = list->view()->viewport();
    Form::pull(viewport, viewport->mapFrom(list.get(), list->row_rect(1).center()));
    QVERIFY(list == nullptr);
}

void TestDrag::picture_tells_the_name_or_the_number()
{
    Form form;
    form.list.set_Text(1, QString(400, u'w'));
    Form::pull(form.rows(), form.on_row(1));
    const QSize longest = form.picture.deviceIndependentSize().toSize();
    QVERIFY(longest.width() < 300);
    QTest::mouseRelease(form.rows(), Qt::LeftButton, {}, form.on_row(1));
    Form::pull(form.rows(), form.on_row(2));
    const QSize one = form.picture.deviceIndependentSize().toSize();
    QTest::mouseRelease(form.rows(), Qt::LeftButton, {}, form.on_row(2));
    Form::pull(form.rows(), form.on_row(4), Qt::LeftButton, Qt::ShiftModifier);
    const QSize three = form.picture.deviceIndependentSize().toSize();
    QVERIFY(three.width() < one.width() && one.width() < longest.width());
    QCOMPARE(form.picture.devicePixelRatio(), form.devicePixelRatioF());

    QPixmap dot(16, 16);
    dot.fill(Qt::red);
    const QPixmap with_icon = drag_picture(form, QIcon(dot), u"x"_s);
    QCOMPARE(with_icon.toImage().pixelColor(13, with_icon.height() / 2), QColor(Qt::red));
}

void TestDrag::moves_are_welcome_over_a_highlight_only()
{
    Form form;
    form.foreign.setText(u"text"_s);
    QVERIFY2(form.drag_enter(form.on_node(2)), "only who may enter is heard of again");
    QVERIFY(!form.drag_move(form.on_node(3)));
    QCOMPARE(form.take(), (QStringList{u"over b text"_s, u"over c text"_s}));
    form.highlights = true;
    QVERIFY(form.drag_move(form.on_node(3)));
    QCOMPARE(form.tree.DropHighlight(), form.tree.Item(3));
    QVERIFY(form.drag_move(form.on_node(2)));
    QCOMPARE(form.tree.DropHighlight(), form.tree.Item(2));
    QVERIFY(!form.drag_move(form.beside_nodes()));
    QCOMPARE(form.tree.DropHighlight(), nullptr);
    QCOMPARE(form.take().last(), u"over nothing text"_s);
    QVERIFY2(!form.tree.Expanded(form.tree.Item(3)), "a drag opens no node");
    QCOMPARE(form.tree.SelectedItem()->Key(), u"a"_s);
}

void TestDrag::drop_is_told_with_its_highlight()
{
    Form form;
    form.foreign.setText(u"text"_s);
    form.drag_enter(form.on_node(2));
    QVERIFY(!form.drop(form.on_node(2)));
    QCOMPARE(form.take(), (QStringList{u"over b text"_s, u"drop text on b, marked none"_s}));
    form.highlights = true;
    form.drag_enter(form.on_node(3));
    QVERIFY(form.drop(form.on_node(3)));
    QCOMPARE(form.take(), (QStringList{u"over c text"_s, u"drop text on c, marked c"_s}));
    QCOMPARE(form.tree.DropHighlight(), nullptr);
}

void TestDrag::highlight_ends_with_the_drag_and_with_its_node()
{
    Form form;
    form.highlights = true;
    form.drag_enter(form.on_node(2));
    form.drag_leave();
    QCOMPARE(form.take().last(), u"leave"_s);
    QCOMPARE(form.tree.DropHighlight(), nullptr);
    form.tree.set_DropHighlight(form.tree.Item(2));
    form.tree.Remove(1);
    QCOMPARE(form.tree.DropHighlight(), form.tree.Item(1));
    form.tree.Remove(1);
    QCOMPARE(form.tree.DropHighlight(), nullptr);
    form.tree.grab();
}

void TestDrag::highlight_is_painted()
{
    Form form;
    const auto picture_of_b = [&] {
        return form.tree.viewport()->grab(form.tree.node_rect(form.tree.Item(2))).toImage();
    };
    const QImage plain = picture_of_b();
    form.tree.set_DropHighlight(form.tree.Item(2));
    const QImage marked = picture_of_b();
    QVERIFY(marked != plain);
    QCOMPARE(marked.pixelColor(1, marked.height() / 2), form.tree.palette().color(QPalette::Highlight));
    form.tree.set_DropHighlight(nullptr);
    QCOMPARE(picture_of_b(), plain);
}

void TestDrag::tree_takes_no_drops_unless_asked()
{
    Form form;
    form.tree.set_OLEDropMode(false);
    form.highlights = true;
    QVERIFY(!form.drag_enter(form.on_node(2)));
    QCOMPARE(form.take(), no_events);
}

QUILMO_UI_TEST(TestDrag)
#include "test_drag.moc"
