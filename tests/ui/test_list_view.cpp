#include "platform/RunTimeError.h"
#include "platform/controls/ListView.h"
#include "platform/controls/mouse.h"
#include "test_main.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QListView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// A form with a list, whose events are noted.
class Form : public QWidget
{
public:
    Form()
    {
        list.setObjectName(u"lvListView"_s);
        list.setAccessibleName(u"Files"_s);
        list.set_ColumnHeaders({{u"Name"_s, 3000}, {u"Size"_s, 1500, Qt::AlignRight}, {u"Byte"_s, 0}});
        list.set_Checkboxes(true);
        list.set_MultiSelect(true);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&list);
        resize(500, 400);
        note_events();
        show();
        list.setFocus();
    }
    ~Form() override { layout()->removeWidget(&list); }
    Q_DISABLE_COPY_MOVE(Form)

    /// Fills the list with rows called 1, 2, ...
    void fill(int count)
    {
        const ListView::Update update(list);
        list.Clear();
        for (int index = 1; index <= count; ++index)
            list.Add(QString::number(index), QString::number(index));
    }

    QStringList take() { return std::exchange(events, {}); }

    QWidget* viewport() const { return list.view()->viewport(); }
    QPoint on_row(int index) const { return viewport()->mapFrom(&list, list.row_rect(index).center()); }
    QPoint on_check(int index) const { return viewport()->mapFrom(&list, list.check_rect(index).center()); }
    QPoint on_nothing() const { return viewport()->rect().bottomRight() - QPoint(3, 3); }

    void press(QPoint point, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {}) const
    {
        QTest::mousePress(viewport(), button, keys, point);
    }
    void release(QPoint point, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {}) const
    {
        QTest::mouseRelease(viewport(), button, keys, point);
    }
    void click(QPoint point, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {}) const
    {
        QTest::mouseClick(viewport(), button, keys, point);
    }
    void drag_to(QPoint point) const
    {
        QMouseEvent event(QEvent::MouseMove, point, viewport()->mapToGlobal(point), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(viewport(), &event);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers keys = {}) const { QTest::keyClick(list.view(), key, keys); }

    QList<int> selected() const
    {
        QList<int> rows;
        for (int index = 1; index <= list.Count(); ++index) {
            if (list.Item(index).Selected)
                rows.append(index);
        }
        return rows;
    }
    /// The rows that the view shows as selected.
    QList<int> shown_selected() const
    {
        QList<int> rows;
        for (const QModelIndex& index : list.view()->selectionModel()->selectedRows())
            rows.append(index.row() + 1);
        std::sort(rows.begin(), rows.end());
        return rows;
    }
    QString text_shown(int index, int column) const
    {
        return list.view()->model()->index(index - 1, column).data().toString();
    }

    ListView list;
    QStringList events;
    int form_keys = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            ++form_keys;
    }

private:
    void note_events()
    {
        connect(&list, &ListView::ItemClick, this, [this](int i) { events.append(u"ItemClick %1"_s.arg(i)); });
        connect(&list, &ListView::ItemCheck, this, [this](int i) { events.append(u"ItemCheck %1"_s.arg(i)); });
        connect(&list, &ListView::ColumnClick, this, [this](int i) { events.append(u"ColumnClick %1"_s.arg(i)); });
        connect(&list, &ListView::MouseDown, this,
                [this](i16 button) { events.append(u"MouseDown %1"_s.arg(button)); });
        connect(&list, &ListView::MouseUp, this, [this](i16 button) { events.append(u"MouseUp %1"_s.arg(button)); });
        connect(&list, &ListView::DblClick, this, [this] { events.append(u"DblClick"_s); });
        connect(&list, &ListView::ContextKey, this, [this] { events.append(u"ContextKey"_s); });
    }
};

const QStringList no_events;

} // namespace

class TestListView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rows_are_numbered_from_1_and_hold_what_they_were_given();
    void bad_indexes_and_used_keys_raise_errors();
    void keys_are_free_again_when_their_rows_go();
    void columns_have_widths_in_twips_and_0_hides();
    void nothing_that_code_does_raises_an_event();
    void SelectedItem_follows_code();
    void without_MultiSelect_one_row_is_selected_at_most();

    void press_order_is_MouseDown_ItemClick_MouseUp_data();
    void press_order_is_MouseDown_ItemClick_MouseUp();
    void click_selects_as_told_by_keys_data();
    void click_selects_as_told_by_keys();
    void right_press_keeps_a_selection_of_several();
    void click_on_empty_space_clears_the_flags_and_keeps_SelectedItem();
    void ctrl_click_takes_a_row_out_without_ItemClick();
    void drag_selects_the_rows_it_passes();
    void check_box_click_raises_ItemCheck_and_selects_nothing();
    void check_box_left_before_the_release_keeps_its_tick();
    void right_press_on_a_check_box_is_a_press_on_the_row();
    void handler_of_ItemCheck_sees_the_new_tick_and_may_take_it_back();
    void double_click_is_told_anywhere();
    void second_press_of_a_double_click_begun_elsewhere_is_a_press();
    void moves_are_told_over_rows_and_header();
    void HitTest_finds_rows_and_nothing_beside_them();

    void arrow_keys_choose_rows();
    void ctrl_A_marks_all_without_ItemClick();
    void space_toggles_the_tick_of_the_current_row();
    void enter_reaches_the_form();
    void letters_search();
    void context_keys_are_told_data();
    void context_keys_are_told();
    void focus_is_told_when_it_comes_from_another_control();

    void code_selection_is_shown_at_the_next_event();
    void code_selection_is_the_start_of_shift_clicks();
    void code_selection_does_not_scroll();
    void sort_is_stable_and_rows_keep_their_state_data();
    void sort_is_stable_and_rows_keep_their_state();
    void header_click_tells_its_column_and_leaves_the_order();
    void sort_arrow_tells_the_last_sort_until_the_rows_go();
    void update_tells_the_views_once();
    void update_of_ticks_keeps_what_is_shown();
    void list_may_be_painted_in_the_middle_of_a_fill();
    void fill_goes_to_the_top_or_to_the_selected_row();
    void list_mode_shows_the_same_rows();
    void list_mode_gives_every_name_the_room_of_the_longest();
    void names_show_on_one_line();
    void accessible_names_and_states();
    void twenty_thousand_rows_are_selected_one_by_one();
};

void TestListView::rows_are_numbered_from_1_and_hold_what_they_were_given()
{
    Form form;
    QCOMPARE(form.list.Count(), 0);
    QCOMPARE(form.list.SelectedItem(), 0);
    QCOMPARE(form.list.Add(u"k1"_s, u"one"_s), 1);
    QCOMPARE(form.list.Add(u"k2"_s, u"two"_s), 2);
    form.list.set_SubItem(2, 2, u"deep"_s);
    form.list.set_Checked(2, true);
    form.list.set_SmallIcon(2, 1);
    QCOMPARE(form.list.Item(2).Key, u"k2"_s);
    QCOMPARE(form.list.Item(2).column(0), u"two"_s);
    QCOMPARE(form.list.Item(2).column(1), QString());
    QCOMPARE(form.list.Item(2).column(2), u"deep"_s);
    QCOMPARE(form.list.Item(2).column(3), QString());
    QVERIFY(form.list.Item(2).Checked);
    QCOMPARE(form.list.Item(2).SmallIcon, 1);
    form.list.set_Text(2, u"new"_s);
    QCOMPARE(form.list.Item(2).Text, u"new"_s);
    QCOMPARE(form.list.Item(2).Key, u"k2"_s);
    QCOMPARE(form.text_shown(2, 0), u"new"_s);
    QCOMPARE(form.text_shown(2, 2), u"deep"_s);
}

void TestListView::bad_indexes_and_used_keys_raise_errors()
{
    Form form;
    form.fill(2);
    const auto number = [](const auto& statement) {
        try {
            statement();
        } catch (const RunTimeError& error) {
            return error.number();
        }
        return 0;
    };
    const int out_of_range = RunTimeError::subscript_out_of_range;
    QCOMPARE(number([&] { form.list.Item(0); }), out_of_range);
    QCOMPARE(number([&] { form.list.Item(3); }), out_of_range);
    QCOMPARE(number([&] { form.list.set_Checked(3, true); }), out_of_range);
    QCOMPARE(number([&] { form.list.set_Selected(0, true); }), out_of_range);
    QCOMPARE(number([&] { form.list.set_SubItem(1, 0, {}); }), out_of_range);
    const int not_unique = RunTimeError::key_not_unique;
    QCOMPARE(number([&] { form.list.Add(u"1"_s, u"again"_s); }), not_unique);
    QCOMPARE(number([&] { form.list.set_Key(2, u"1"_s); }), not_unique);
    QCOMPARE(number([&] { form.list.set_Key(2, u"2"_s); }), 0);
    QCOMPARE(form.list.Count(), 2);
}

void TestListView::keys_are_free_again_when_their_rows_go()
{
    Form form;
    form.fill(2);
    form.list.set_Key(1, u"other"_s);
    QCOMPARE(form.list.Add(u"1"_s, u"1"_s), 3);
    form.fill(3);
    QCOMPARE(form.list.Count(), 3);
    // Case counts in keys, and rows without a key do not hinder each other.
    form.list.Add(u"a"_s, {});
    form.list.Add(u"A"_s, {});
    form.list.Add({}, {});
    form.list.Add({}, {});
    QCOMPARE(form.list.Count(), 7);
}

void TestListView::columns_have_widths_in_twips_and_0_hides()
{
    Form form;
    const auto* report = qobject_cast<QTreeView*>(form.list.view());
    QCOMPARE(report->columnWidth(0), 200);
    QCOMPARE(report->columnWidth(1), 100);
    QVERIFY(report->isColumnHidden(2));
    QVERIFY(!report->isColumnHidden(1));
    QCOMPARE(form.list.ColumnHeaders().size(), std::size_t{3});
    QCOMPARE(report->model()->headerData(1, Qt::Horizontal).toString(), u"Size"_s);
}

void TestListView::nothing_that_code_does_raises_an_event()
{
    Form form;
    form.fill(5);
    form.list.set_Checked(2, true);
    form.list.set_Selected(3, true);
    form.list.clear_selection();
    form.list.sort(0, ListView::Order::descending);
    form.list.set_View(ListView::ViewMode::list);
    form.list.ensure_visible(5);
    form.list.Clear();
    QCoreApplication::processEvents();
    QCOMPARE(form.take(), no_events);
}

void TestListView::SelectedItem_follows_code()
{
    Form form;
    form.fill(5);
    QCOMPARE(form.list.SelectedItem(), 1);
    QCOMPARE(form.selected(), QList<int>());
    form.list.set_Selected(3, true);
    form.list.set_Selected(4, true);
    QCOMPARE(form.list.SelectedItem(), 4);
    QCOMPARE(form.selected(), (QList<int>{3, 4}));
    form.list.set_Selected(4, false);
    QCOMPARE(form.list.SelectedItem(), 4);
    form.list.set_Selected(3, true);
    QCOMPARE(form.list.SelectedItem(), 3);
    form.list.clear_selection();
    QCOMPARE(form.list.SelectedItem(), 3);
    QCOMPARE(form.selected(), QList<int>());
    form.list.Clear();
    QCOMPARE(form.list.SelectedItem(), 0);
}

void TestListView::without_MultiSelect_one_row_is_selected_at_most()
{
    Form form;
    form.fill(5);
    form.list.set_Selected(2, true);
    form.list.set_Selected(3, true);
    form.list.set_MultiSelect(false);
    QCOMPARE(form.selected(), QList<int>{3});
    form.list.set_Selected(5, true);
    QCOMPARE(form.selected(), QList<int>{5});
    form.click(form.on_row(1));
    form.click(form.on_row(4), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(form.selected(), QList<int>{4});
    QCOMPARE(form.shown_selected(), QList<int>{4});
}

void TestListView::press_order_is_MouseDown_ItemClick_MouseUp_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("number");
    QTest::newRow("left") << int(Qt::LeftButton) << 1;
    QTest::newRow("right") << int(Qt::RightButton) << 2;
    QTest::newRow("middle") << int(Qt::MiddleButton) << 4;
}

void TestListView::press_order_is_MouseDown_ItemClick_MouseUp()
{
    QFETCH(const int, button);
    QFETCH(const int, number);
    Form form;
    form.fill(5);
    QList<int> selected_at_click;
    connect(&form.list, &ListView::ItemClick, &form, [&] { selected_at_click = form.selected(); });
    form.press(form.on_row(3), static_cast<Qt::MouseButton>(button));
    QCOMPARE(form.take(), (QStringList{u"MouseDown %1"_s.arg(number), u"ItemClick 3"_s}));
    QCOMPARE(selected_at_click, QList<int>{3});
    form.release(form.on_row(3), static_cast<Qt::MouseButton>(button));
    QCOMPARE(form.take(), QStringList{u"MouseUp %1"_s.arg(number)});
    QCOMPARE(form.list.SelectedItem(), 3);

    form.click(form.on_row(3), static_cast<Qt::MouseButton>(button));
    QVERIFY2(form.take().contains(u"ItemClick 3"_s), "a row that is chosen already is told again");
}

void TestListView::click_selects_as_told_by_keys_data()
{
    QTest::addColumn<int>("keys");
    QTest::addColumn<QList<int>>("selected");
    QTest::newRow("alone: that row only") << int(Qt::NoModifier) << QList<int>{5};
    QTest::newRow("with Shift: all from the first") << int(Qt::ShiftModifier) << QList<int>{2, 3, 4, 5};
    QTest::newRow("with Ctrl: one more") << int(Qt::ControlModifier) << QList<int>{2, 5};
}

void TestListView::click_selects_as_told_by_keys()
{
    QFETCH(const int, keys);
    QFETCH(const QList<int>, selected);
    Form form;
    form.fill(6);
    form.click(form.on_row(2));
    form.take();
    form.click(form.on_row(5), Qt::LeftButton, static_cast<Qt::KeyboardModifiers>(keys));
    QCOMPARE(form.selected(), selected);
    QCOMPARE(form.shown_selected(), selected);
    QCOMPARE(form.list.SelectedItem(), 5);
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"ItemClick 5"_s, u"MouseUp 1"_s}));
}

void TestListView::right_press_keeps_a_selection_of_several()
{
    Form form;
    form.fill(6);
    form.click(form.on_row(2));
    form.click(form.on_row(4), Qt::LeftButton, Qt::ShiftModifier);
    form.take();
    form.click(form.on_row(3), Qt::RightButton);
    QCOMPARE(form.selected(), (QList<int>{2, 3, 4}));
    QCOMPARE(form.list.SelectedItem(), 3);
    QCOMPARE(form.take(), (QStringList{u"MouseDown 2"_s, u"ItemClick 3"_s, u"MouseUp 2"_s}));
    form.click(form.on_row(6), Qt::RightButton);
    QCOMPARE(form.selected(), QList<int>{6});
}

void TestListView::click_on_empty_space_clears_the_flags_and_keeps_SelectedItem()
{
    Form form;
    form.fill(4);
    form.click(form.on_row(3));
    form.take();
    form.click(form.on_nothing());
    QCOMPARE(form.selected(), QList<int>());
    QCOMPARE(form.list.SelectedItem(), 3);
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"MouseUp 1"_s}));
}

void TestListView::ctrl_click_takes_a_row_out_without_ItemClick()
{
    Form form;
    form.fill(4);
    form.click(form.on_row(2));
    form.click(form.on_row(3), Qt::LeftButton, Qt::ControlModifier);
    form.take();
    form.click(form.on_row(2), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(form.selected(), QList<int>{3});
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"MouseUp 1"_s}));
}

void TestListView::drag_selects_the_rows_it_passes()
{
    Form form;
    form.fill(6);
    form.press(form.on_row(2));
    form.drag_to(form.on_row(3));
    form.drag_to(form.on_row(4));
    form.release(form.on_row(4));
    QCOMPARE(form.selected(), (QList<int>{2, 3, 4}));
}

void TestListView::check_box_click_raises_ItemCheck_and_selects_nothing()
{
    Form form;
    form.fill(5);
    form.click(form.on_row(1));
    form.take();
    form.press(form.on_check(4));
    QCOMPARE(form.take(), QStringList{u"MouseDown 1"_s});
    QVERIFY(!form.list.Item(4).Checked);
    form.release(form.on_check(4));
    QCOMPARE(form.take(), (QStringList{u"ItemCheck 4"_s, u"MouseUp 1"_s}));
    QVERIFY(form.list.Item(4).Checked);
    QCOMPARE(form.selected(), QList<int>{1});
    QCOMPARE(form.list.SelectedItem(), 1);
    form.click(form.on_check(4));
    QVERIFY(!form.list.Item(4).Checked);

    form.take();
    form.click(form.on_check(4));
    QTest::mouseDClick(form.viewport(), Qt::LeftButton, {}, form.on_check(4));
    form.release(form.on_check(4));
    QVERIFY2(!form.list.Item(4).Checked, "two fast clicks are two ticks");
    QCOMPARE(form.take().count(u"ItemCheck 4"_s), 2);
}

void TestListView::check_box_left_before_the_release_keeps_its_tick()
{
    Form form;
    form.fill(5);
    form.press(form.on_check(2));
    form.drag_to(form.on_row(4));
    form.release(form.on_check(4));
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"MouseUp 1"_s}));
    QVERIFY(!form.list.Item(2).Checked && !form.list.Item(4).Checked);
    QCOMPARE(form.selected(), QList<int>());

    form.press(form.on_row(2));
    form.release(form.on_check(2));
    QVERIFY2(!form.list.Item(2).Checked, "a press beside the box ticks nothing");
}

void TestListView::right_press_on_a_check_box_is_a_press_on_the_row()
{
    Form form;
    form.fill(5);
    form.click(form.on_check(2), Qt::RightButton);
    QCOMPARE(form.take(), (QStringList{u"MouseDown 2"_s, u"ItemClick 2"_s, u"MouseUp 2"_s}));
    QVERIFY(!form.list.Item(2).Checked);
}

void TestListView::handler_of_ItemCheck_sees_the_new_tick_and_may_take_it_back()
{
    Form form;
    form.fill(5);
    bool seen = false;
    connect(&form.list, &ListView::ItemCheck, &form, [&](int index) {
        seen = form.list.Item(index).Checked;
        form.list.set_Checked(index, false);
        form.list.clear_selection();
        form.list.set_Selected(index, true);
    });
    form.click(form.on_check(2));
    QVERIFY(seen);
    QVERIFY(!form.list.Item(2).Checked);
    QCOMPARE(form.selected(), QList<int>{2});
    QCOMPARE(form.take().count(u"ItemCheck 2"_s), 1);
}

void TestListView::double_click_is_told_anywhere()
{
    Form form;
    form.fill(3);
    form.click(form.on_row(2));
    form.take();
    QTest::mouseDClick(form.viewport(), Qt::LeftButton, {}, form.on_row(2));
    QCOMPARE(form.take().count(u"DblClick"_s), 1);
    QTest::mouseDClick(form.viewport(), Qt::LeftButton, {}, form.on_nothing());
    QCOMPARE(form.take().count(u"DblClick"_s), 1);
    QTest::mouseDClick(form.viewport(), Qt::RightButton, {}, form.on_row(2));
    QCOMPARE(form.take().count(u"DblClick"_s), 0);
}

void TestListView::second_press_of_a_double_click_begun_elsewhere_is_a_press()
{
    Form form;
    form.fill(3);
    const auto second_press = [&form](QPoint point) {
        QTest::mouseDClick(form.viewport(), Qt::LeftButton, {}, point);
        QTest::mouseRelease(form.viewport(), Qt::LeftButton, {}, point);
        return form.take();
    };
    QCOMPARE(second_press(form.on_row(2)), (QStringList{u"MouseDown 1"_s, u"ItemClick 2"_s, u"MouseUp 1"_s}));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(form.viewport(), &leave);
    QCOMPARE(second_press(form.on_check(3)), (QStringList{u"MouseDown 1"_s, u"ItemCheck 3"_s, u"MouseUp 1"_s}));
    form.list.Clear();
    QApplication::sendEvent(form.viewport(), &leave);
    QCOMPARE(second_press(QPoint(50, 50)), (QStringList{u"MouseDown 1"_s, u"MouseUp 1"_s}));
}

void TestListView::moves_are_told_over_rows_and_header()
{
    Form form;
    form.fill(3);
    QSignalSpy moves(&form.list, &ListView::MouseMove);
    form.drag_to(form.on_row(2));
    QCOMPARE(moves.count(), 1);
    QCOMPARE(moves.at(0).at(0).value<i16>(), i16{1});
    QCOMPARE(form.list.HitTest(moves.at(0).at(1).toPoint()), 2);

    QVERIFY(form.viewport()->hasMouseTracking());
    QWidget* header = qobject_cast<QTreeView*>(form.list.view())->header()->viewport();
    QVERIFY(header->hasMouseTracking());
    QMouseEvent event(QEvent::MouseMove, QPointF(5, 5), header->mapToGlobal(QPointF(5, 5)), Qt::NoButton, {}, {});
    QApplication::sendEvent(header, &event);
    QCOMPARE(moves.count(), 2);
    QCOMPARE(moves.at(1).at(0).value<i16>(), i16{0});
}

void TestListView::HitTest_finds_rows_and_nothing_beside_them()
{
    Form form;
    form.fill(300);
    QCOMPARE(form.list.HitTest(form.list.row_rect(2).center()), 2);
    QCOMPARE(form.list.HitTest(form.list.check_rect(3).center()), 3);
    QCOMPARE(form.list.HitTest(QPoint(5, 5)), 0);
    QVERIFY(form.list.row_rect(300).isEmpty());
    form.list.ensure_visible(300);
    QCOMPARE(form.list.HitTest(form.list.row_rect(300).center()), 300);
    form.fill(2);
    QCOMPARE(form.list.HitTest(form.viewport()->mapTo(&form.list, form.on_nothing())), 0);
    QVERIFY(form.list.row_rect(3).isEmpty());
    form.list.set_Checkboxes(false);
    QVERIFY(form.list.check_rect(1).isEmpty());
}

void TestListView::arrow_keys_choose_rows()
{
    Form form;
    form.fill(5);
    form.key(Qt::Key_Down);
    QCOMPARE(form.take(), QStringList{u"ItemClick 2"_s});
    QCOMPARE(form.selected(), QList<int>{2});
    form.key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(form.take(), QStringList{u"ItemClick 3"_s});
    QCOMPARE(form.selected(), (QList<int>{2, 3}));
    form.key(Qt::Key_End);
    QCOMPARE(form.take(), QStringList{u"ItemClick 5"_s});
    form.key(Qt::Key_Down);
    QCOMPARE(form.take(), no_events);
    QCOMPARE(form.list.SelectedItem(), 5);

    form.list.Clear();
    form.key(Qt::Key_Down);
    form.key(Qt::Key_Space);
    QCOMPARE(form.take(), no_events);
}

void TestListView::ctrl_A_marks_all_without_ItemClick()
{
    Form form;
    form.fill(4);
    form.key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(form.selected(), (QList<int>{1, 2, 3, 4}));
    QCOMPARE(form.take(), no_events);
}

void TestListView::space_toggles_the_tick_of_the_current_row()
{
    Form form;
    form.fill(4);
    form.list.set_Selected(3, true);
    form.key(Qt::Key_Space);
    QVERIFY(form.list.Item(3).Checked);
    QCOMPARE(form.take(), QStringList{u"ItemCheck 3"_s});
    form.key(Qt::Key_Space);
    QVERIFY(!form.list.Item(3).Checked);
    form.take();
    form.list.set_Checkboxes(false);
    form.key(Qt::Key_Space);
    QVERIFY(!form.list.Item(3).Checked);
    QCOMPARE(form.take(), no_events);
}

void TestListView::enter_reaches_the_form()
{
    Form form;
    form.fill(2);
    form.key(Qt::Key_Return);
    form.key(Qt::Key_Enter);
    QCOMPARE(form.form_keys, 2);
}

void TestListView::letters_search()
{
    Form form;
    for (const QString& name : {u"alpha"_s, u"beta"_s, u"gamma"_s})
        form.list.Add(name, name);
    form.key(Qt::Key_G);
    QCOMPARE(form.list.SelectedItem(), 3);
    QCOMPARE(form.selected(), QList<int>{3});
    QCOMPARE(form.take(), QStringList{u"ItemClick 3"_s});
}

void TestListView::context_keys_are_told_data()
{
    QTest::addColumn<bool>("menu_key");
    QTest::newRow("menu key") << true;
    QTest::newRow("Shift+F10") << false;
}

void TestListView::context_keys_are_told()
{
    QFETCH(const bool, menu_key);
    Form form;
    form.fill(2);
    if (menu_key) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
        QApplication::sendEvent(form.list.view(), &event);
    } else {
        form.key(Qt::Key_F10, Qt::ShiftModifier);
    }
    QCOMPARE(form.take(), QStringList{u"ContextKey"_s});
    QContextMenuEvent mouse(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(form.viewport(), &mouse);
    QCOMPARE(form.take(), no_events);
}

void TestListView::focus_is_told_when_it_comes_from_another_control()
{
    Form form;
    QWidget other(&form);
    other.setFocusPolicy(Qt::StrongFocus);
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    other.setFocus();
    QSignalSpy focus(&form.list, &ListView::GotFocus);
    form.list.setFocus();
    QCOMPARE(focus.count(), 1);
    QVERIFY(form.list.hasFocus());

    other.setFocus();
    form.list.view()->setFocus(Qt::PopupFocusReason);
    QCOMPARE(focus.count(), 1);

    form.list.set_View(ListView::ViewMode::list);
    QVERIFY2(form.list.view()->hasFocus(), "the focus goes along with the view");
}

void TestListView::code_selection_is_shown_at_the_next_event()
{
    Form form;
    form.fill(6);
    form.list.set_Selected(2, true);
    form.list.set_Selected(3, true);
    form.list.set_Selected(5, true);
    QTRY_COMPARE(form.shown_selected(), (QList<int>{2, 3, 5}));
    QCOMPARE(form.list.view()->currentIndex().row() + 1, 5);
    form.list.clear_selection();
    QTRY_COMPARE(form.shown_selected(), QList<int>());
}

void TestListView::code_selection_is_the_start_of_shift_clicks()
{
    Form form;
    form.fill(6);
    form.list.set_Selected(5, true);
    form.click(form.on_row(3), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(form.selected(), (QList<int>{3, 4, 5}));
    form.list.clear_selection();
    form.list.set_Selected(2, true);
    form.click(form.on_row(4), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(form.selected(), (QList<int>{2, 4}));
}

void TestListView::code_selection_does_not_scroll()
{
    Form form;
    form.fill(500);
    QCoreApplication::processEvents();
    form.list.set_Selected(400, true);
    QTRY_COMPARE(form.shown_selected(), QList<int>{400});
    QCOMPARE(form.list.view()->verticalScrollBar()->value(), 0);
    form.key(Qt::Key_Down);
    QVERIFY2(!form.list.row_rect(401).isEmpty(), "a key shows the row that it goes to");
}

void TestListView::sort_is_stable_and_rows_keep_their_state_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("descending");
    QTest::addColumn<QString>("order");
    QTest::newRow("by text") << 0 << false << u"abcd"_s;
    QTest::newRow("by text, descending") << 0 << true << u"dcba"_s;
    QTest::newRow("by a column, equal ones as they stood") << 1 << false << u"cbda"_s;
    QTest::newRow("by a column, descending, equal ones as they stood") << 1 << true << u"dacb"_s;
    QTest::newRow("by an empty column: as it stood") << 2 << true << u"dcba"_s;
}

void TestListView::sort_is_stable_and_rows_keep_their_state()
{
    QFETCH(const int, column);
    QFETCH(const bool, descending);
    QFETCH(const QString, order);
    Form form;
    // Sizes sort as text, so 10KB stands before 9KB.
    for (const auto& [name, size] : std::initializer_list<std::pair<QString, QString>>{
             {u"d"_s, u"9KB"_s}, {u"c"_s, u"10KB"_s}, {u"b"_s, u"10KB"_s}, {u"a"_s, u"9KB"_s}}) {
        const int index = form.list.Add(u"key of "_s + name, name);
        form.list.set_SubItem(index, 1, size);
    }
    form.list.set_Checked(2, true);
    form.list.set_Selected(3, true);
    form.list.set_Selected(1, true);
    const auto sort_order = descending ? ListView::Order::descending : ListView::Order::ascending;
    form.list.sort(column, sort_order);
    QString names;
    QString shown;
    for (int index = 1; index <= 4; ++index) {
        const ListRow& row = form.list.Item(index);
        names += row.Text;
        shown += form.text_shown(index, 0);
        QCOMPARE(row.Key, u"key of "_s + row.Text);
        QCOMPARE(row.Checked, row.Text == u"c");
        QCOMPARE(row.Selected, row.Text == u"b" || row.Text == u"d");
    }
    QCOMPARE(names, order);
    QCOMPARE(shown, order);
    QCOMPARE(form.list.Item(form.list.SelectedItem()).Text, u"d"_s);
    QCOMPARE(form.list.SortKey(), column);
    QVERIFY(form.list.SortOrder() == sort_order);
    QTRY_COMPARE(form.shown_selected(), form.selected());
}

void TestListView::header_click_tells_its_column_and_leaves_the_order()
{
    Form form;
    form.list.Add(u"b"_s, u"b"_s);
    form.list.Add(u"a"_s, u"a"_s);
    const QHeaderView* header = qobject_cast<QTreeView*>(form.list.view())->header();
    for (const int column : {0, 1}) {
        const QPoint point(header->sectionViewportPosition(column) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, point);
        QCOMPARE(form.take(), QStringList{u"ColumnClick %1"_s.arg(column)});
        QCOMPARE(form.list.Item(1).Text, u"b"_s);
        QCOMPARE(header->sortIndicatorSection(), -1);
    }
}

void TestListView::sort_arrow_tells_the_last_sort_until_the_rows_go()
{
    Form form;
    form.fill(3);
    const QHeaderView* header = qobject_cast<QTreeView*>(form.list.view())->header();
    connect(&form.list, &ListView::ColumnClick, &form, [&](int column) {
        if (column == 1)
            form.list.sort(1, ListView::Order::descending);
    });
    for (const int column : {1, 0}) {
        const QPoint point(header->sectionViewportPosition(column) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, point);
        QCOMPARE(header->sortIndicatorSection(), 1);
        QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    }
    form.list.Clear();
    QCOMPARE(header->sortIndicatorSection(), -1);
    QCOMPARE(form.list.SortKey(), 1);
}

void TestListView::update_tells_the_views_once()
{
    Form form;
    form.fill(10);
    const QAbstractItemModel* model = form.list.view()->model();
    QSignalSpy resets(model, &QAbstractItemModel::modelReset);
    QSignalSpy inserts(model, &QAbstractItemModel::rowsInserted);
    QSignalSpy changes(model, &QAbstractItemModel::dataChanged);
    {
        const ListView::Update outer(form.list);
        const ListView::Update inner(form.list);
        form.list.Clear();
        QCOMPARE(form.list.SelectedItem(), 0);
        for (int index = 1; index <= 20; ++index) {
            QCOMPARE(form.list.Add(QString::number(index), u"row"_s), index);
            form.list.set_SubItem(index, 1, u"size"_s);
            form.list.set_Checked(index, true);
        }
        form.list.set_Selected(7, true);
        QCOMPARE(form.list.Count(), 20);
        QCOMPARE(form.list.Item(20).column(1), u"size"_s);
        QCOMPARE(form.list.SelectedItem(), 7);
        QCOMPARE(resets.count(), 0);
    }
    QCOMPARE(resets.count(), 1);
    QCOMPARE(inserts.count(), 0);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(model->rowCount(), 20);
    QTRY_COMPARE(form.shown_selected(), QList<int>{7});
    QCOMPARE(form.take(), no_events);
}

void TestListView::update_of_ticks_keeps_what_is_shown()
{
    Form form;
    form.fill(500);
    form.list.ensure_visible(300);
    const int scrolled = form.list.view()->verticalScrollBar()->value();
    QVERIFY(scrolled > 0);
    {
        const ListView::Update update(form.list);
        for (int index = 1; index <= 500; ++index) {
            form.list.set_Checked(index, true);
            form.list.set_Selected(index, true);
        }
    }
    QTRY_COMPARE(form.shown_selected().size(), 500);
    QCOMPARE(form.list.view()->verticalScrollBar()->value(), scrolled);
    form.list.sort(0, ListView::Order::descending);
    QTRY_COMPARE(form.shown_selected().size(), 500);
    QCOMPARE(form.list.view()->verticalScrollBar()->value(), scrolled);
}

void TestListView::list_may_be_painted_in_the_middle_of_a_fill()
{
    Form form;
    form.fill(50);
    form.list.set_Selected(40, true);
    QTRY_COMPARE(form.shown_selected(), QList<int>{40});
    {
        const ListView::Update update(form.list);
        form.list.Clear();
        form.list.Add(u"one"_s, u"one"_s);
        form.list.set_Selected(1, true);
        form.list.grab();
        QCOMPARE(form.selected(), QList<int>{1});
        QVERIFY2(form.list.view()->model()->rowCount() == 50, "the view goes on with the rows that it knows");
        QCOMPARE(form.list.view()->currentIndex().row() + 1, 40);
        for (int index = 2; index <= 100; ++index)
            form.list.Add(QString::number(index), QString::number(index));
        form.list.grab();
    }
    QTRY_COMPARE(form.shown_selected(), QList<int>{1});
    QCOMPARE(form.list.view()->model()->rowCount(), 100);
}

void TestListView::fill_goes_to_the_top_or_to_the_selected_row()
{
    Form form;
    form.fill(500);
    form.list.ensure_visible(500);
    QVERIFY(form.list.view()->verticalScrollBar()->value() > 0);
    form.fill(500);
    QCoreApplication::processEvents();
    QCOMPARE(form.list.view()->verticalScrollBar()->value(), 0);
    {
        const ListView::Update update(form.list);
        form.fill(500);
        form.list.set_Selected(400, true);
    }
    QCoreApplication::processEvents();
    QVERIFY(!form.list.row_rect(400).isEmpty());
}

void TestListView::list_mode_shows_the_same_rows()
{
    Form form;
    form.fill(60);
    form.list.set_Selected(2, true);
    QVERIFY(form.list.View() == ListView::ViewMode::report);
    for (int round = 0; round < 2; ++round) {
        form.list.set_View(ListView::ViewMode::list);
        QVERIFY(form.list.View() == ListView::ViewMode::list);
        QVERIFY(qobject_cast<QListView*>(form.list.view()) != nullptr);
        QTRY_COMPARE(form.shown_selected(), form.selected());
        form.take();
        form.click(form.on_row(3));
        QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"ItemClick 3"_s, u"MouseUp 1"_s}));
        form.click(form.on_check(4));
        QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"ItemCheck 4"_s, u"MouseUp 1"_s}));
        QCOMPARE(form.selected(), QList<int>{3});
        QVERIFY2(form.list.row_rect(60).left() > form.list.row_rect(1).left(), "rows flow into columns");
        form.fill(60);
        QCOMPARE(form.list.view()->model()->rowCount(), 60);

        form.list.set_View(ListView::ViewMode::report);
        QVERIFY(qobject_cast<QTreeView*>(form.list.view()) != nullptr);
        QCOMPARE(qobject_cast<QTreeView*>(form.list.view())->columnWidth(0), 200);
        form.click(form.on_row(2));
        QCOMPARE(form.selected(), QList<int>{2});
    }
}

void TestListView::list_mode_gives_every_name_the_room_of_the_longest()
{
    Form form;
    form.fill(5);
    form.list.set_View(ListView::ViewMode::list);
    const int narrow = form.list.row_rect(1).width();
    const QString name = u"A rather long artist - A title.mp3"_s;
    form.list.Add(name, name);
    QCoreApplication::processEvents();
    QVERIFY(form.list.row_rect(1).width() > narrow);
    QVERIFY(form.list.row_rect(1).width() > form.list.fontMetrics().horizontalAdvance(name));
}

void TestListView::names_show_on_one_line()
{
    Form form;
    form.list.Add(u"1"_s, u"plain <b>name</b>"_s);
    form.list.Add(u"2"_s, u"two\nlines\u2028and\ttab"_s);
    QCOMPARE(form.text_shown(1, 0), u"plain <b>name</b>"_s);
    QCOMPARE(form.text_shown(2, 0), u"two lines and tab"_s);
    QCOMPARE(form.list.Item(2).Text, u"two\nlines\u2028and\ttab"_s);
    QCOMPARE(form.list.row_rect(1).height(), form.list.row_rect(2).height());
}

void TestListView::accessible_names_and_states()
{
    Form form;
    form.list.Add(u"1"_s, u"song.mp3"_s);
    form.list.set_Checked(1, true);
    QCOMPARE(form.list.objectName(), u"lvListView"_s);
    QCOMPARE(form.list.view()->accessibleName(), u"Files"_s);
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(form.list.view());
    QVERIFY(table != nullptr && table->tableInterface() != nullptr);
    QCoreApplication::processEvents();
    const QAccessibleInterface* cell = table->tableInterface()->cellAt(0, 0);
    QVERIFY(cell != nullptr);
    QCOMPARE(cell->text(QAccessible::Name), u"song.mp3"_s);
    QVERIFY(cell->state().checkable && cell->state().checked);
    form.list.set_View(ListView::ViewMode::list);
    QCOMPARE(form.list.view()->accessibleName(), u"Files"_s);
}

void TestListView::twenty_thousand_rows_are_selected_one_by_one()
{
    Form form;
    form.fill(20000);
    for (int index = 1; index <= 20000; ++index)
        form.list.set_Selected(index, true);
    QTRY_COMPARE(form.shown_selected().size(), 20000);
    QCOMPARE(form.selected().size(), 20000);
    QCOMPARE(form.list.SelectedItem(), 20000);
    form.click(form.on_row(1));
    QCOMPARE(form.selected(), QList<int>{1});
}

QUILMO_UI_TEST(TestListView)
#include "test_list_view.moc"
