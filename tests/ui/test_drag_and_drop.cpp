#include "core/mod_of_grobal_var.h"
#include "explorer/DragAndDrop.h"
#include "platform/RunTimeError.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/drag.h"
#include "platform/controls/message_window.h"
#include "platform/drives.h"
#include "platform/paths.h"
#include "ui_commands.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QFile>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Answer = ScriptedPrompts::Answer;

const QStringList all_of_pop = {u"one.mp3"_s, u"three.mp3"_s, u"two.mp3"_s};

/// Both panes with drag and drop; what happens during a drag is the test's.
class DraggedPanes : public CommandedPanes
{
public:
    DraggedPanes()
    {
        tree_view.set_Expanded(tree_view.Item(u"C:"_s), true);
        show();
        set_drag_runner([this](QDrag& dragged) {
            if (during_drag)
                during_drag(*dragged.mimeData());
        });
    }
    ~DraggedPanes() { set_drag_runner({}); }
    Q_DISABLE_COPY_MOVE(DraggedPanes)

    QPoint on_node(const QString& key) const { return tree_view.node_rect(tree_view.Item(key)).center(); }
    QPoint beside_nodes() const { return tree_view.viewport()->rect().bottomRight() - QPoint(3, 3); }
    QString highlighted() const
    {
        const TreeNode* const node = tree_view.DropHighlight();
        return node != nullptr ? node->Key() : u"none"_s;
    }

    // What the platform sends to the tree.
    bool move(const QMimeData& data, QPoint point) const
    {
        QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(tree_view.viewport(), &enter);
        QDragMoveEvent event(point, Qt::CopyAction, &data, Qt::LeftButton, {});
        event.ignore();
        QApplication::sendEvent(tree_view.viewport(), &event);
        return event.isAccepted();
    }
    void drop(const QMimeData& data, QPoint point, Qt::KeyboardModifiers keys = {}) const
    {
        QDropEvent event(point, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, keys);
        QApplication::sendEvent(tree_view.viewport(), &event);
    }
    void drop_on(const QString& key)
    {
        during_drag = [this, key](const QMimeData& data) {
            move(data, on_node(key));
            drop(data, on_node(key));
        };
    }
    /// A drag leaves the tree and is given up.
    void leave() const
    {
        QDragLeaveEvent event;
        QApplication::sendEvent(tree_view.viewport(), &event);
    }

    void pull_node(const QString& key) const { pull(tree_view.viewport(), on_node(key)); }
    /// Selects these rows and pulls the first of them.
    void pull_rows(const QStringList& names)
    {
        select_rows(names);
        list_view.ensure_visible(row_of(names.first()));
        const QPoint middle = list_view.row_rect(row_of(names.first())).center();
        pull(list_view.view()->viewport(), list_view.view()->viewport()->mapFrom(&list_view, middle));
    }
    void drag_node(const QString& key, const QString& target)
    {
        drop_on(target);
        pull_node(key);
    }
    void drag_rows(const QStringList& names, const QString& target)
    {
        drop_on(target);
        pull_rows(names);
    }

    std::function<void(const QMimeData&)> during_drag;
    DragAndDrop drag{panes};

private:
    static void pull(QWidget* viewport, QPoint from)
    {
        const QPoint to = from + QPoint(QApplication::startDragDistance(), 0);
        QTest::mousePress(viewport, Qt::LeftButton, {}, from);
        QMouseEvent event(QEvent::MouseMove, to, viewport->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &event);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, to);
    }
};

/// The bytes of the paths in what is offered to other programs.
QByteArrayList offered(const QMimeData& data)
{
    QByteArrayList paths;
    for (const QByteArray& line : data.data(u"text/uri-list"_s).split('\n')) {
        if (!line.isEmpty())
            paths.append(QByteArray::fromPercentEncoding(line.trimmed()));
    }
    return paths;
}

} // namespace

class TestDragAndDrop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { panes_ = std::make_unique<DraggedPanes>(); }
    void cleanup() { panes_.reset(); }

    void a_dragged_folder_moves_below_its_target();
    void dragged_rows_move_into_their_target();
    void every_drop_is_a_move_data();
    void every_drop_is_a_move();
    void moves_go_across_drives();
    void a_file_that_is_there_is_asked_about();

    void nothing_moves_onto_the_folder_shown_data();
    void nothing_moves_onto_the_folder_shown();
    void nothing_moves_where_no_node_is();
    void nothing_moves_onto_the_computer();
    void nothing_moves_without_a_highlight();
    void nothing_comes_from_other_programs();
    void nothing_comes_from_other_programs_while_own_data_is_still_held();
    void nothing_can_be_dropped_elsewhere();

    void the_node_under_the_mouse_is_highlighted();
    void a_press_beside_the_nodes_keeps_the_node_of_the_last();

    void a_folder_into_itself_is_refused_and_all_is_reloaded();
    void drives_and_the_computer_stay_data();
    void drives_and_the_computer_stay();
    void the_node_at_the_old_index_goes_only_when_its_folder_is_gone();
    void a_node_index_of_the_past_ends_the_drop();

    void data_without_text_moves_nothing();
    void no_rows_move_nothing();
    void rows_that_stay_are_listed_again();
    void a_moved_file_that_was_ticked_stays_in_the_final_list();
    void a_drag_of_rows_is_a_copy_as_well();
    void a_pasted_file_that_was_moved_is_reported();
    void more_than_301_rows_are_a_fatal_error();

    void other_programs_are_offered_the_files();
    void other_programs_are_offered_the_folder();
    void other_programs_are_not_offered_the_computer();

private:
    std::unique_ptr<DraggedPanes> panes_;
};

void TestDragAndDrop::a_dragged_folder_moves_below_its_target()
{
    panes_->write(u"C:\\Rock\\four.mp3"_s);
    const QSignalSpy clicks(&panes_->tree_view, &TreeView::NodeClick);
    panes_->drag_node(u"C:\\Pop"_s, u"C:\\Rock"_s);
    QCOMPARE(panes_->on_disk(u"C:\\Rock\\Pop"_s), all_of_pop);
    QVERIFY(!panes_->disk.exists(u"C:\\Pop"_s));
    QVERIFY(!panes_->has_node(u"C:\\Pop"_s));
    QVERIFY(panes_->has_node(u"C:\\Rock\\Pop"_s));
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Rock"_s);
    QCOMPARE(shared.tree_node_path, u"C:\\Rock"_s);
    QCOMPARE(shared.tree_parent_key, u"C:"_s);
    QCOMPARE(shared.current_folder, u"C:\\Rock\\"_s);
    QCOMPARE(panes_->names(), QStringList{u"four.mp3"_s});
    QCOMPARE(panes_->highlighted(), u"none"_s);
    QCOMPARE(clicks.size(), 0);
    QCOMPARE(panes_->tree_view.Item(u"C:\\Rock"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(panes_->prompts.take(), QStringList());
}

void TestDragAndDrop::dragged_rows_move_into_their_target()
{
    panes_->drag_rows({u"one.mp3"_s, u"two.mp3"_s}, u"C:\\Rock"_s);
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), QStringList{u"three.mp3"_s});
    QCOMPARE(panes_->disk.read(u"C:\\Rock\\one.mp3"_s), CommandedPanes::content_of(u"C:\\Pop\\one.mp3"_s));
    QCOMPARE(panes_->names(), (QStringList{u"one.mp3"_s, u"two.mp3"_s}));
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Rock"_s);
    QCOMPARE(shared.current_folder, u"C:\\Rock\\"_s);
    QStringList moved = shared.drag_node_key.split(QChar::Null);
    moved.sort();
    QCOMPARE(moved, (QStringList{u"C:\\Pop\\one.mp3"_s, u"C:\\Pop\\two.mp3"_s}));
    QCOMPARE(panes_->highlighted(), u"none"_s);
}

void TestDragAndDrop::every_drop_is_a_move_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("keys");
    QTest::newRow("Ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("Shift") << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("Ctrl and Shift") << (Qt::ControlModifier | Qt::ShiftModifier);
}

void TestDragAndDrop::every_drop_is_a_move()
{
    QFETCH(const Qt::KeyboardModifiers, keys);
    panes_->during_drag = [&](const QMimeData& data) {
        panes_->move(data, panes_->on_node(u"C:\\Rock"_s));
        panes_->drop(data, panes_->on_node(u"C:\\Rock"_s), keys);
    };
    panes_->pull_rows({u"one.mp3"_s});
    QVERIFY(panes_->disk.exists(u"C:\\Rock\\one.mp3"_s));
    QVERIFY(!panes_->disk.exists(u"C:\\Pop\\one.mp3"_s));
}

void TestDragAndDrop::moves_go_across_drives()
{
    const QTemporaryDir other(u"/dev/shm/quilmo-test-XXXXXX"_s);
    std::vector<Drive> both = drives();
    both.push_back({.DriveLetter = u"D"_s,
                    .Type = DriveType::fixed,
                    .VolumeName = u"Other"_s,
                    .IsReady = true,
                    .mount_point = QFile::encodeName(other.path()),
                    .device = {}});
    set_drives(both);
    panes_->tree_view.Add(panes_->tree_view.Item(1), u"D:"_s, u"D:"_s, u"DRIVE"_s);
    panes_->drag_rows({u"one.mp3"_s}, u"D:"_s);
    QCOMPARE(panes_->disk.read(u"D:\\one.mp3"_s), CommandedPanes::content_of(u"C:\\Pop\\one.mp3"_s));
    QVERIFY(!panes_->disk.exists(u"C:\\Pop\\one.mp3"_s));
    panes_->drag_node(u"C:\\Pop"_s, u"D:"_s);
    QCOMPARE(panes_->tree.selected_key(), u"D:"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Pop"_s)); // D: was the folder shown
    panes_->click_folder(u"C:\\Rock"_s);
    panes_->drag_node(u"C:\\Pop"_s, u"D:"_s);
    QCOMPARE(panes_->on_disk(u"D:\\Pop"_s), (QStringList{u"three.mp3"_s, u"two.mp3"_s}));
    QVERIFY(!panes_->disk.exists(u"C:\\Pop"_s));
    QVERIFY(panes_->has_node(u"D:\\Pop"_s));
    QCOMPARE(panes_->prompts.take(), QStringList());
}

void TestDragAndDrop::a_file_that_is_there_is_asked_about()
{
    panes_->write(u"C:\\Rock\\one.mp3"_s);
    panes_->prompts.answers = {Answer::no};
    panes_->drag_rows({u"one.mp3"_s, u"two.mp3"_s}, u"C:\\Rock"_s);
    QCOMPARE(panes_->prompts.take(), QStringList{u"overwrite C:\\Rock\\one.mp3 from C:\\Pop\\one.mp3"_s});
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), (QStringList{u"one.mp3"_s, u"three.mp3"_s}));
    QCOMPARE(panes_->disk.read(u"C:\\Rock\\one.mp3"_s), CommandedPanes::content_of(u"C:\\Rock\\one.mp3"_s));
    QCOMPARE(panes_->names(), (QStringList{u"one.mp3"_s, u"two.mp3"_s}));
}

void TestDragAndDrop::nothing_moves_onto_the_folder_shown_data()
{
    QTest::addColumn<bool>("rows");
    QTest::newRow("rows onto the folder that they are in") << true;
    QTest::newRow("another folder") << false;
}

void TestDragAndDrop::nothing_moves_onto_the_folder_shown()
{
    QFETCH(const bool, rows);
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    if (rows)
        panes_->drag_rows({u"one.mp3"_s}, u"C:\\Pop"_s);
    else
        panes_->drag_node(u"C:\\Rock"_s, u"C:\\Pop"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Rock"_s));
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s).size(), 4);
    QCOMPARE(panes_->names(), all_of_pop);
    QCOMPARE(panes_->highlighted(), u"none"_s);
    QCOMPARE(panes_->prompts.take(), QStringList());
}

void TestDragAndDrop::nothing_moves_where_no_node_is()
{
    panes_->during_drag = [this](const QMimeData& data) {
        panes_->move(data, panes_->on_node(u"C:\\Rock"_s));
        panes_->drop(data, panes_->beside_nodes());
    };
    panes_->pull_rows({u"one.mp3"_s});
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Pop"_s);
    QCOMPARE(panes_->highlighted(), u"none"_s);
}

void TestDragAndDrop::nothing_moves_onto_the_computer()
{
    panes_->drag_rows({u"one.mp3"_s}, u"MYCOMPUTER"_s);
    panes_->drag_node(u"C:\\Rock"_s, u"MYCOMPUTER"_s);
    QCOMPARE(panes_->on_disk(u"C:"_s), (QStringList{u"Pop"_s, u"Rock"_s}));
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Pop"_s);
    QCOMPARE(shared.tree_node_path, u"C:\\Pop"_s);
    QCOMPARE(shared.current_folder, u"C:\\Pop\\"_s);
    QCOMPARE(panes_->prompts.take(), QStringList());
}

void TestDragAndDrop::nothing_moves_without_a_highlight()
{
    panes_->during_drag = [this](const QMimeData& data) {
        panes_->move(data, panes_->beside_nodes());
        panes_->drop(data, panes_->on_node(u"C:\\Rock"_s));
    };
    panes_->pull_rows({u"one.mp3"_s});
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Pop"_s);
}

void TestDragAndDrop::nothing_comes_from_other_programs()
{
    QMimeData foreign;
    foreign.setText(u"one.mp3"_s);
    QTest::mouseClick(panes_->tree_view.viewport(), Qt::LeftButton, {}, panes_->on_node(u"C:\\Pop"_s));
    QVERIFY(!panes_->move(foreign, panes_->on_node(u"C:\\Rock"_s)));
    QCOMPARE(panes_->highlighted(), u"none"_s);
    panes_->drop(foreign, panes_->on_node(u"C:\\Rock"_s));
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\one.mp3"_s));
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Pop"_s);
}

void TestDragAndDrop::nothing_comes_from_other_programs_while_own_data_is_still_held()
{
    QMimeData foreign;
    foreign.setText(u"one.mp3"_s);
    panes_->during_drag = [&](const QMimeData& data) {
        QVERIFY(panes_->move(data, panes_->on_node(u"C:\\Rock"_s)));
        panes_->leave();
        QVERIFY(!panes_->move(foreign, panes_->on_node(u"C:\\Rock"_s)));
        panes_->drop(foreign, panes_->on_node(u"C:\\Rock"_s));
    };
    panes_->pull_rows({u"one.mp3"_s});
    panes_->pull_node(u"C:\\Pop"_s);
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Pop"_s);
}

void TestDragAndDrop::nothing_can_be_dropped_elsewhere()
{
    QVERIFY(!panes_->list_view.acceptDrops());
    QVERIFY(!panes_->list_view.view()->acceptDrops());
    QVERIFY(!panes_->list_view.view()->viewport()->acceptDrops());
    QVERIFY(!TextBox().acceptDrops());
}

void TestDragAndDrop::the_node_under_the_mouse_is_highlighted()
{
    QStringList seen;
    panes_->during_drag = [&](const QMimeData& data) {
        for (const QString& key : {u"C:\\Rock"_s, u"C:"_s, u"MYCOMPUTER"_s}) {
            panes_->move(data, panes_->on_node(key));
            seen.append(panes_->highlighted());
        }
        panes_->move(data, panes_->beside_nodes());
        seen.append(panes_->highlighted());
    };
    panes_->pull_node(u"C:\\Pop"_s);
    QCOMPARE(seen, (QStringList{u"C:\\Rock"_s, u"C:"_s, u"MYCOMPUTER"_s, u"none"_s}));
}

void TestDragAndDrop::a_press_beside_the_nodes_keeps_the_node_of_the_last()
{
    QTest::mouseClick(panes_->tree_view.viewport(), Qt::LeftButton, {}, panes_->on_node(u"C:\\Rock"_s));
    QCOMPARE(shared.drag_source_kind, i16(1));
    QCOMPARE(shared.drag_node_key, u"C:\\Rock"_s);
    QCOMPARE(int(shared.drag_node_index), panes_->tree_view.Index(panes_->tree_view.Item(u"C:\\Rock"_s)));
    const i16 index = shared.drag_node_index;
    shared.drag_source_kind = 2;
    QTest::mouseClick(panes_->tree_view.viewport(), Qt::LeftButton, {}, panes_->beside_nodes());
    QCOMPARE(shared.drag_source_kind, i16(1));
    QCOMPARE(shared.drag_node_key, u"C:\\Rock"_s);
    QCOMPARE(shared.drag_node_index, index);
}

void TestDragAndDrop::a_folder_into_itself_is_refused_and_all_is_reloaded()
{
    panes_->disk.make_folder(u"C:\\Rock\\Hard"_s);
    panes_->click_folder(u"C:\\Rock"_s);
    panes_->tree_view.set_Expanded(panes_->tree_view.Item(u"C:\\Rock"_s), true);
    panes_->write(u"C:\\Rock\\Hard\\unseen.mp3"_s);
    panes_->prompts.answers = {Answer::skip};
    panes_->drag_node(u"C:\\Rock"_s, u"C:\\Rock\\Hard"_s);
    QCOMPARE(panes_->prompts.take(), QStringList{u"error C:\\Rock"_s});
    QVERIFY(panes_->has_node(u"C:\\Rock"_s));
    QCOMPARE(panes_->on_disk(u"C:\\Rock\\Hard"_s), QStringList{u"unseen.mp3"_s});
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Rock\\Hard"_s);
    QCOMPARE(panes_->names(), QStringList{u"unseen.mp3"_s});
}

void TestDragAndDrop::drives_and_the_computer_stay_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("a drive") << u"C:"_s;
    QTest::newRow("the computer") << u"MYCOMPUTER"_s;
}

void TestDragAndDrop::drives_and_the_computer_stay()
{
    QFETCH(const QString, key);
    panes_->prompts.answers = {Answer::skip};
    panes_->drag_node(key, u"C:\\Rock"_s);
    QCOMPARE(panes_->prompts.take(), QStringList{u"error "_s + key});
    QVERIFY(panes_->has_node(key));
    QCOMPARE(panes_->on_disk(u"C:"_s), (QStringList{u"Pop"_s, u"Rock"_s}));
    QCOMPARE(panes_->on_disk(u"C:\\Rock"_s), QStringList());
}

void TestDragAndDrop::the_node_at_the_old_index_goes_only_when_its_folder_is_gone()
{
    panes_->disk.make_folder(u"C:\\Soul"_s);
    panes_->click_folder(u"C:"_s);
    const int soul = panes_->tree_view.Index(panes_->tree_view.Item(u"C:\\Soul"_s));
    panes_->during_drag = [&](const QMimeData& data) {
        shared.drag_node_index = static_cast<i16>(soul); // as if nodes had gone since the press
        panes_->move(data, panes_->on_node(u"C:\\Rock"_s));
        panes_->drop(data, panes_->on_node(u"C:\\Rock"_s));
    };
    panes_->pull_node(u"C:\\Pop"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Rock\\Pop"_s));
    QVERIFY(panes_->has_node(u"C:\\Soul"_s));
    QVERIFY(panes_->has_node(u"C:\\Pop"_s)); // until its parent is filled anew
    panes_->click_folder(u"C:"_s);
    QVERIFY(!panes_->has_node(u"C:\\Pop"_s));
}

void TestDragAndDrop::a_node_index_of_the_past_ends_the_drop()
{
    panes_->write(u"C:\\Rock\\unseen.mp3"_s);
    panes_->during_drag = [&](const QMimeData& data) {
        shared.drag_node_index = static_cast<i16>(panes_->tree_view.Count() + 1);
        panes_->move(data, panes_->on_node(u"C:\\Rock"_s));
        panes_->drop(data, panes_->on_node(u"C:\\Rock"_s));
    };
    panes_->pull_node(u"C:\\Pop"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Rock\\Pop"_s));
    QCOMPARE(panes_->names(), all_of_pop); // not reloaded
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestDragAndDrop::data_without_text_moves_nothing()
{
    panes_->write(u"C:\\Rock\\unseen.mp3"_s);
    connect(&panes_->list_view, &ListView::OLEStartDrag, &panes_->drag,
            [](QMimeData& data) { data.removeFormat(u"text/plain"_s); });
    panes_->drag_rows({u"one.mp3"_s}, u"C:\\Rock"_s);
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->names(), QStringList{u"unseen.mp3"_s});
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Rock"_s);
}

void TestDragAndDrop::no_rows_move_nothing()
{
    panes_->write(u"C:\\Rock\\unseen.mp3"_s);
    panes_->select_rows({});
    QMimeData data;
    data.setText(u"rows"_s);
    Q_EMIT panes_->list_view.OLEStartDrag(data);
    QVERIFY(panes_->move(data, panes_->on_node(u"C:\\Rock"_s)));
    panes_->drop(data, panes_->on_node(u"C:\\Rock"_s));
    QCOMPARE(shared.copy_list_count, i16(0));
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->names(), QStringList{u"unseen.mp3"_s});
}

void TestDragAndDrop::rows_that_stay_are_listed_again()
{
    panes_->write(u"C:\\Rock\\one.mp3"_s);
    panes_->prompts.answers = {Answer::cancel};
    panes_->drag_rows({u"one.mp3"_s}, u"C:\\Rock"_s);
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->names(), QStringList{u"one.mp3"_s});
}

void TestDragAndDrop::a_moved_file_that_was_ticked_stays_in_the_final_list()
{
    panes_->tick(u"one.mp3"_s);
    panes_->drag_rows({u"one.mp3"_s}, u"C:\\Rock"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Rock\\one.mp3"_s));
    QCOMPARE(shared.final_list_count, i32(1));
    QCOMPARE(shared.final_list.at(0).folder, u"C:\\Pop\\"_s);
    QCOMPARE(shared.final_list.at(0).full_path, u"C:\\Pop\\one.mp3"_s);
    QCOMPARE(panes_->ticked_names(), QStringList());
}

void TestDragAndDrop::a_drag_of_rows_is_a_copy_as_well()
{
    shared.copy_list.at(7) = {.in_use = 1, .name = u"older.mp3"_s};
    shared.copy_source_kind = 1;
    panes_->pull_rows({u"three.mp3"_s});
    QCOMPARE(shared.copy_source_kind, i16(2));
    QCOMPARE(shared.drag_source_kind, i16(2));
    QCOMPARE(shared.copy_list_count, i16(1));
    QCOMPARE(shared.copy_list.at(0).name, u"three.mp3"_s);
    QCOMPARE(shared.copy_list.at(7).in_use, i16(0));
    QCOMPARE(shared.copy_source_folder, u"C:\\Pop\\"_s);
}

void TestDragAndDrop::a_pasted_file_that_was_moved_is_reported()
{
    panes_->drag_rows({u"one.mp3"_s}, u"C:\\Rock"_s);
    panes_->prompts.answers = {Answer::skip};
    panes_->click_folder(u"C:"_s);
    panes_->files.mnu_tree_paste_Click();
    QCOMPARE(panes_->prompts.take(), QStringList{u"error C:\\Pop\\one.mp3"_s});
}

void TestDragAndDrop::more_than_301_rows_are_a_fatal_error()
{
    for (int number = 0; number < 299; ++number)
        panes_->write(u"C:\\Pop\\%1.mp3"_s.arg(number));
    panes_->list.FillListView(u"C:\\Pop\\"_s);
    QCOMPARE(panes_->names().size(), 302);
    QList<int> errors;
    set_fatal_error_handler([&errors](const RunTimeError& error) { errors.append(error.number()); });
    const auto drag_first = [this](int count) { panes_->pull_rows(panes_->names().first(count)); };
    drag_first(301);
    QCOMPARE(errors, QList<int>());
    QCOMPARE(shared.copy_list_count, i16(301));
    shared.copy_source_kind = 0;
    drag_first(302);
    set_fatal_error_handler({});
    QCOMPARE(errors, QList<int>{9});
    QCOMPARE(shared.copy_list_count, i16(301));
    QCOMPARE(shared.copy_source_kind, i16(0));
}

void TestDragAndDrop::other_programs_are_offered_the_files()
{
    const QString odd = u"caf\xDCE9 100% #1; ü.mp3"_s; // the second half of its first word is no UTF-8
    panes_->write(u"C:\\Pop\\"_s + odd);
    panes_->list.FillListView(u"C:\\Pop\\"_s);
    QByteArray list;
    QByteArrayList paths;
    panes_->during_drag = [&](const QMimeData& data) {
        list = data.data(u"text/uri-list"_s);
        paths = offered(data);
    };
    panes_->pull_rows({odd, u"one.mp3"_s});
    QVERIFY(list.contains("/caf%E9%20100%25%20%231%3B%20%C3%BC.mp3\r\n"));
    QVERIFY(list.startsWith("file:///"));
    QVERIFY(list.endsWith("one.mp3\r\n") != list.endsWith("%C3%BC.mp3\r\n"));
    std::ranges::sort(paths);
    QCOMPARE(paths, (QByteArrayList{"file://" + native_path(u"C:\\Pop\\"_s + odd),
                                    "file://" + native_path(u"C:\\Pop\\one.mp3"_s)}));
}

void TestDragAndDrop::other_programs_are_offered_the_folder()
{
    QByteArrayList paths;
    panes_->during_drag = [&](const QMimeData& data) { paths = offered(data); };
    panes_->pull_node(u"C:\\Rock"_s);
    QCOMPARE(paths, QByteArrayList{"file://" + native_path(u"C:\\Rock"_s)});
}

void TestDragAndDrop::other_programs_are_not_offered_the_computer()
{
    QStringList formats;
    panes_->during_drag = [&](const QMimeData& data) { formats = data.formats(); };
    panes_->pull_node(u"MYCOMPUTER"_s);
    QCOMPARE(formats, QStringList{u"text/plain"_s});
}

QUILMO_UI_TEST(TestDragAndDrop)
#include "test_drag_and_drop.moc"
