#include "platform/RunTimeError.h"
#include "platform/controls/TreeView.h"
#include "platform/controls/mouse.h"
#include "test_main.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A form with a tree, whose events are noted.
class Form : public QWidget
{
public:
    Form()
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&tree);
        resize(400, 400);
        note_events();
        show();
        tree.setFocus();
    }
    ~Form() override { layout()->removeWidget(&tree); }
    Q_DISABLE_COPY_MOVE(Form)

    TreeNode* add(TreeNode* parent, const QString& key) { return tree.Add(parent, key, key, u"FOLDER"_s); }

    /// Root r with the children a (with a1 and a2), b and c (with c1); r is open.
    void grow()
    {
        root = add(nullptr, u"r"_s);
        a = add(root, u"a"_s);
        b = add(root, u"b"_s);
        c = add(root, u"c"_s);
        add(a, u"a1"_s);
        add(a, u"a2"_s);
        add(c, u"c1"_s);
        tree.set_Expanded(root, true);
        tree.set_Selected(root);
        take();
    }

    QStringList take() { return std::exchange(events, {}); }

    QPoint on_text(const TreeNode* node) const { return tree.node_rect(node).center(); }
    QPoint on_arrow(const TreeNode* node) const
    {
        const QRect rect = tree.node_rect(node);
        return {rect.left() - tree.indentation() / 2, rect.center().y()};
    }
    void click(QPoint point, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {}) const
    {
        QTest::mouseClick(tree.viewport(), button, keys, point);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers keys = {}) { QTest::keyClick(&tree, key, keys); }

    QStringList texts_below(const TreeNode* node) const
    {
        QStringList texts;
        for (const auto& child : node->children())
            texts.append(child->Text());
        return texts;
    }
    /// The texts below a node as the view is told them.
    QStringList shown_below(const TreeNode* node) const
    {
        const QAbstractItemModel* model = tree.model();
        const QModelIndex parent = model
                                       ->match(model->index(0, 0), Qt::DisplayRole, node->Text(), 1,
                                               Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchCaseSensitive)
                                       .value(0);
        QStringList texts;
        for (int row = 0; row < model->rowCount(parent); ++row)
            texts.append(model->index(row, 0, parent).data().toString());
        return texts;
    }

    TreeView tree;
    TreeNode* root = nullptr;
    TreeNode* a = nullptr;
    TreeNode* b = nullptr;
    TreeNode* c = nullptr;
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
        connect(&tree, &TreeView::NodeClick, this, [this](TreeNode* n) { events.append(u"NodeClick "_s + n->Key()); });
        connect(&tree, &TreeView::Expand, this, [this](TreeNode* n) { events.append(u"Expand "_s + n->Key()); });
        connect(&tree, &TreeView::Collapse, this, [this](TreeNode* n) { events.append(u"Collapse "_s + n->Key()); });
        connect(&tree, &TreeView::MouseDown, this,
                [this](i16 button) { events.append(u"MouseDown %1"_s.arg(button)); });
        connect(&tree, &TreeView::MouseUp, this, [this](i16 button) { events.append(u"MouseUp %1"_s.arg(button)); });
        connect(&tree, &TreeView::ContextKey, this, [this] { events.append(u"ContextKey"_s); });
    }
};

const QStringList no_events;

void double_click(const Form& form, QPoint point)
{
    form.click(point);
    QTest::mouseDClick(form.tree.viewport(), Qt::LeftButton, {}, point);
    QTest::mouseRelease(form.tree.viewport(), Qt::LeftButton, {}, point);
}

template<typename Statement> int error_of(const Statement& statement)
{
    try {
        statement();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

} // namespace

class TestTreeView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nodes_are_found_by_key_and_by_index();
    void used_keys_and_bad_indexes_raise_errors();
    void indexes_close_up_when_nodes_go();
    void keys_are_free_again_when_their_nodes_go();
    void sorted_children_stand_by_text_and_so_do_later_ones();
    void unsorted_children_stand_as_added();
    void sorting_keeps_what_is_open_and_selected();
    void filling_is_adding_one_by_one_and_sorting_data();
    void filling_is_adding_one_by_one_and_sorting();
    void rows_opened_from_code_stand_where_they_are_asked_for();
    void change_of_a_node_is_shown();
    void names_show_on_one_line();

    void opening_from_code_raises_Expand_once_there_are_children();
    void opening_by_a_person_raises_Expand_before_the_children_show_data();
    void opening_by_a_person_raises_Expand_before_the_children_show();
    void asterisk_opens_one_level_only();
    void node_whose_children_all_go_is_closed();
    void arrow_is_shown_with_real_children_only();

    void code_that_selects_raises_no_NodeClick();
    void click_on_a_node_is_told_data();
    void click_on_a_node_is_told();
    void click_on_the_selected_node_is_told_again();
    void click_beside_the_nodes_chooses_nothing();
    void middle_click_neither_selects_nor_is_a_NodeClick();
    void press_that_slides_off_still_tells_what_it_selected();
    void handler_of_NodeClick_may_remove_nodes();
    void keys_choose_nodes();
    void enter_reaches_the_form();
    void context_keys_are_told();
    void moves_and_focus_are_told();
    void HitTest_finds_nodes();

    void removed_selection_goes_to_a_neighbour_data();
    void removed_selection_goes_to_a_neighbour();
    void five_thousand_nodes_go_one_by_one_data();
    void five_thousand_nodes_go_one_by_one();
};

void TestTreeView::nodes_are_found_by_key_and_by_index()
{
    Form form;
    form.grow();
    QCOMPARE(form.tree.Count(), 7);
    QCOMPARE(form.tree.Item(1), form.root);
    QCOMPARE(form.tree.Item(3), form.b);
    QCOMPARE(form.tree.Item(7)->Key(), u"c1"_s);
    QCOMPARE(form.tree.Item(u"b"_s), form.b);
    QCOMPARE(form.tree.Item(u"B"_s), nullptr);
    QCOMPARE(form.tree.Item(QString()), nullptr);
    QCOMPARE(form.tree.Index(form.c), 4);
    QCOMPARE(form.b->Parent(), form.root);
    QCOMPARE(form.root->Parent(), nullptr);
    QCOMPARE(form.b->Image(), u"FOLDER"_s);
}

void TestTreeView::used_keys_and_bad_indexes_raise_errors()
{
    Form form;
    form.grow();
    const int not_unique = RunTimeError::key_not_unique;
    QCOMPARE(error_of([&] { form.add(form.b, u"a1"_s); }), not_unique);
    QCOMPARE(form.tree.Count(), 7);
    QVERIFY(form.b->children().empty());
    QCOMPARE(error_of([&] { form.tree.set_Key(form.b, u"a"_s); }), not_unique);
    QCOMPARE(error_of([&] { form.tree.set_Key(form.b, u"b"_s); }), 0);
    const int out_of_range = RunTimeError::subscript_out_of_range;
    QCOMPARE(error_of([&] { form.tree.Item(0); }), out_of_range);
    QCOMPARE(error_of([&] { form.tree.Item(8); }), out_of_range);
    QCOMPARE(error_of([&] { form.tree.Remove(8); }), out_of_range);
}

void TestTreeView::indexes_close_up_when_nodes_go()
{
    Form form;
    form.grow();
    form.tree.Remove(form.tree.Index(form.a));
    QCOMPARE(form.tree.Count(), 4);
    QStringList keys;
    for (int index = 1; index <= 4; ++index) {
        keys.append(form.tree.Item(index)->Key());
        QCOMPARE(form.tree.Index(form.tree.Item(index)), index);
    }
    QCOMPARE(keys, (QStringList{u"r"_s, u"b"_s, u"c"_s, u"c1"_s}));
    QCOMPARE(form.tree.Index(form.add(form.b, u"b1"_s)), 5);
    form.tree.Remove(1);
    QCOMPARE(form.tree.Count(), 0);
    QCOMPARE(form.tree.SelectedItem(), nullptr);
    QCOMPARE(form.tree.Index(form.add(nullptr, u"r"_s)), 1);
}

void TestTreeView::keys_are_free_again_when_their_nodes_go()
{
    Form form;
    form.grow();
    form.tree.Remove(form.tree.Index(form.a));
    QCOMPARE(form.tree.Item(u"a1"_s), nullptr);
    form.add(form.b, u"a1"_s);
    form.tree.set_Key(form.b, u"other"_s);
    QCOMPARE(form.tree.Item(u"b"_s), nullptr);
    QCOMPARE(form.tree.Item(u"other"_s), form.b);
    form.add(form.root, u"b"_s);
}

void TestTreeView::sorted_children_stand_by_text_and_so_do_later_ones()
{
    Form form;
    TreeNode* root = form.add(nullptr, u"root"_s);
    for (const QString& text : {u"pear"_s, u"Apple"_s, u"fig"_s})
        form.add(root, text);
    QVERIFY(!root->Sorted());
    form.tree.set_Sorted(root);
    QVERIFY(root->Sorted());
    QCOMPARE(form.texts_below(root), (QStringList{u"Apple"_s, u"fig"_s, u"pear"_s}));
    for (const QString& text : {u"Cherry"_s, u"zebra"_s, u"aardvark"_s})
        form.add(root, text);
    const QStringList sorted{u"aardvark"_s, u"Apple"_s, u"Cherry"_s, u"fig"_s, u"pear"_s, u"zebra"_s};
    QCOMPARE(form.texts_below(root), sorted);
    QCOMPARE(form.shown_below(root), sorted);
    QCOMPARE(form.tree.Index(form.tree.Item(u"aardvark"_s)), 7);
}

void TestTreeView::unsorted_children_stand_as_added()
{
    Form form;
    TreeNode* root = form.add(nullptr, u"root"_s);
    for (const QString& text : {u"pear"_s, u"Apple"_s, u"fig"_s})
        form.add(root, text);
    QCOMPARE(form.shown_below(root), (QStringList{u"pear"_s, u"Apple"_s, u"fig"_s}));
}

void TestTreeView::sorting_keeps_what_is_open_and_selected()
{
    Form form;
    TreeNode* root = form.add(nullptr, u"root"_s);
    TreeNode* pear = form.add(root, u"pear"_s);
    TreeNode* apple = form.add(root, u"apple"_s);
    form.add(pear, u"seed"_s);
    form.tree.set_Expanded(root, true);
    form.tree.set_Expanded(pear, true);
    form.tree.set_Selected(apple);
    form.take();
    form.tree.set_Sorted(root);
    QCOMPARE(form.shown_below(root), (QStringList{u"apple"_s, u"pear"_s}));
    QVERIFY(form.tree.Expanded(pear) && !form.tree.Expanded(apple));
    QCOMPARE(form.tree.SelectedItem(), apple);
    QVERIFY(form.tree.node_rect(apple).top() < form.tree.node_rect(pear).top());
    QCOMPARE(form.take(), no_events);
}

void TestTreeView::filling_is_adding_one_by_one_and_sorting_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<bool>("sorted_before");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("error");
    QTest::addColumn<QStringList>("after");

    const int in_use = RunTimeError::key_not_unique;
    const QStringList none;
    const QStringList mixed{u"pear"_s, u"Apple"_s, u"fig"_s, u"apple"_s};
    const QStringList in_order{u"Apple"_s, u"apple"_s, u"fig"_s, u"pear"_s};
    QTest::newRow("no children yet") << none << false << mixed << 0 << in_order;
    QTest::newRow("no children yet, and none to add") << none << false << none << 0 << none;
    QTest::newRow("no children yet, but Sorted") << none << true << mixed << 0 << in_order;
    QTest::newRow("children, not Sorted") << QStringList{u"zebra"_s, u"cherry"_s} << false << QStringList{u"fig"_s} << 0
                                          << QStringList{u"cherry"_s, u"fig"_s, u"zebra"_s};
    QTest::newRow("children, Sorted") << QStringList{u"zebra"_s, u"cherry"_s} << true << QStringList{u"fig"_s} << 0
                                      << QStringList{u"cherry"_s, u"fig"_s, u"zebra"_s};
    QTest::newRow("the same children again") << in_order << true << mixed << in_use << in_order;
    QTest::newRow("the first key in use elsewhere")
        << none << false << QStringList{u"used"_s, u"a"_s} << in_use << none;
    QTest::newRow("a later key in use elsewhere")
        << none << false << QStringList{u"pear"_s, u"fig"_s, u"used"_s, u"a"_s} << in_use
        << QStringList{u"pear"_s, u"fig"_s};
    QTest::newRow("a later key in use elsewhere, Sorted")
        << none << true << QStringList{u"pear"_s, u"fig"_s, u"used"_s, u"a"_s} << in_use
        << QStringList{u"fig"_s, u"pear"_s};
    QTest::newRow("one key twice") << none << false << QStringList{u"pear"_s, u"fig"_s, u"pear"_s} << in_use
                                   << QStringList{u"pear"_s, u"fig"_s};
}

void TestTreeView::filling_is_adding_one_by_one_and_sorting()
{
    QFETCH(const QStringList, before);
    QFETCH(const bool, sorted_before);
    QFETCH(const QStringList, texts);
    QFETCH(const int, error);
    QFETCH(const QStringList, after);
    const auto add = [](Form& form, const QString& text) { form.tree.Add(form.b, u"b\\"_s + text, text, u"FOLDER"_s); };
    const auto begin = [&](Form& form) {
        form.grow();
        form.add(form.a, u"b\\used"_s);
        for (const QString& text : before)
            add(form, text);
        if (sorted_before)
            form.tree.set_Sorted(form.b);
        form.tree.set_Expanded(form.b, true);
        form.take();
    };
    Form one_by_one;
    begin(one_by_one);
    const auto add_each = [&] {
        for (const QString& text : texts)
            add(one_by_one, text);
        one_by_one.tree.set_Sorted(one_by_one.b);
    };
    QCOMPARE(error_of(add_each), error);
    Form form;
    begin(form);
    QCOMPARE(error_of([&] { form.tree.fill(form.b, u"b\\"_s, texts, u"FOLDER"_s); }), error);

    QCOMPARE(form.texts_below(form.b), after);
    QCOMPARE(form.shown_below(form.b), after);
    QCOMPARE(one_by_one.texts_below(one_by_one.b), after);
    QCOMPARE(form.b->Sorted(), one_by_one.b->Sorted());
    QCOMPARE(form.tree.Count(), one_by_one.tree.Count());
    for (int index = 1; index <= form.tree.Count(); ++index) {
        TreeNode* const node = form.tree.Item(index);
        QCOMPARE(node->Key(), one_by_one.tree.Item(index)->Key());
        QCOMPARE(form.tree.Item(node->Key()), node);
        QCOMPARE(form.tree.Index(node), index);
        QCOMPARE(node->Image(), u"FOLDER"_s);
    }
    QCOMPARE(form.take(), no_events);
    form.tree.set_Expanded(form.b, true);
    one_by_one.tree.set_Expanded(one_by_one.b, true);
    QCOMPARE(form.tree.node_rect(form.c), one_by_one.tree.node_rect(one_by_one.c));
    add(form, u"late"_s);
    add(one_by_one, u"late"_s);
    QCOMPARE(form.shown_below(form.b), one_by_one.texts_below(one_by_one.b));
}

void TestTreeView::rows_opened_from_code_stand_where_they_are_asked_for()
{
    Form form;
    form.grow();
    const QRect closed = form.tree.node_rect(form.b);
    form.tree.set_Expanded(form.a, true);
    QCOMPARE(form.tree.node_rect(form.b).top(), closed.top() + 2 * closed.height());
    QCOMPARE(form.tree.HitTest(closed.center()), form.tree.Item(u"a1"_s));
    form.tree.set_Expanded(form.a, false);
    QCOMPARE(form.tree.HitTest(closed.center()), form.b);
    form.tree.set_Expanded(form.c, true);
    form.tree.set_Selected(form.tree.Item(u"c1"_s));
    form.key(Qt::Key_Up);
    QCOMPARE(form.tree.SelectedItem(), form.c);
    QCOMPARE(form.take().last(), u"NodeClick c"_s);
}

void TestTreeView::change_of_a_node_is_shown()
{
    Form form;
    QPixmap red(16, 16);
    red.fill(Qt::red);
    QPixmap green(16, 16);
    green.fill(Qt::green);
    ImageList images;
    images.Add(u"FOLDER"_s, QIcon(red));
    images.Add(u"OPENFOLDER"_s, QIcon(green));
    QCOMPARE(images.Count(), 2);
    QVERIFY(images.icon(u"Nethood"_s).isNull() && images.icon(0).isNull() && images.icon(3).isNull());
    QCOMPARE(images.icon(2).cacheKey(), images.icon(u"OPENFOLDER"_s).cacheKey());

    form.tree.set_images(images);
    form.grow();
    const auto picture_of_b = [&] {
        const QRect rect = form.tree.node_rect(form.b);
        return form.tree.viewport()->grab(rect).toImage().pixelColor(rect.height() / 2, rect.height() / 2);
    };
    QCOMPARE(picture_of_b(), QColor(Qt::red));
    form.tree.set_Image(form.b, u"OPENFOLDER"_s);
    QCOMPARE(picture_of_b(), QColor(Qt::green));
    form.tree.set_Text(form.b, u"new name"_s);
    QCOMPARE(form.shown_below(form.root).at(1), u"new name"_s);
    QCOMPARE(form.b->Text(), u"new name"_s);
    QCOMPARE(form.b->Key(), u"b"_s);
}

void TestTreeView::names_show_on_one_line()
{
    Form form;
    TreeNode* root = form.tree.Add(nullptr, u"r"_s, u"machine"_s + QChar(u'\0'), {});
    TreeNode* odd = form.tree.Add(root, u"two\nlines"_s, u"two\r\nlines <i>x</i>"_s, {});
    form.tree.set_Expanded(root, true);
    QCOMPARE(form.tree.model()->index(0, 0).data().toString(), u"machine"_s);
    QCOMPARE(root->Text().size(), 8);
    QCOMPARE(form.tree.model()->index(0, 0, form.tree.model()->index(0, 0)).data().toString(),
             u"two  lines <i>x</i>"_s);
    QCOMPARE(odd->Key(), u"two\nlines"_s);
    QCOMPARE(form.tree.node_rect(odd).height(), form.tree.node_rect(root).height());
}

void TestTreeView::opening_from_code_raises_Expand_once_there_are_children()
{
    Form form;
    TreeNode* root = form.add(nullptr, u"r"_s);
    form.tree.set_Expanded(root, true);
    QVERIFY(!form.tree.Expanded(root));
    QCOMPARE(form.take(), no_events);
    form.add(root, u"a"_s);
    QVERIFY2(!form.tree.Expanded(root), "an early try opens nothing later");
    form.tree.set_Expanded(root, true);
    QVERIFY(form.tree.Expanded(root));
    QCOMPARE(form.take(), QStringList{u"Expand r"_s});
    form.tree.set_Expanded(root, true);
    QCOMPARE(form.take(), no_events);
    form.tree.set_Expanded(root, false);
    QVERIFY(!form.tree.Expanded(root));
    QCOMPARE(form.take(), QStringList{u"Collapse r"_s});
}

void TestTreeView::opening_by_a_person_raises_Expand_before_the_children_show_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("a click on the arrow") << u"arrow"_s;
    QTest::newRow("a double click on the text") << u"double"_s;
    QTest::newRow("the right arrow key") << u"right"_s;
    QTest::newRow("the plus key") << u"plus"_s;
}

void TestTreeView::opening_by_a_person_raises_Expand_before_the_children_show()
{
    QFETCH(const QString, way);
    Form form;
    form.grow();
    form.tree.set_Selected(form.a);
    // One level ahead: the handler gives the children of the opened node their own children.
    connect(&form.tree, &TreeView::Expand, &form, [&](const TreeNode* node) {
        for (const auto& child : node->children())
            form.add(child.get(), u"below "_s + child->Key());
    });
    if (way == u"arrow")
        form.click(form.on_arrow(form.a));
    else if (way == u"double")
        double_click(form, form.on_text(form.a));
    else
        form.key(way == u"right" ? Qt::Key_Right : Qt::Key_Plus);
    QVERIFY(form.tree.Expanded(form.a));
    QCOMPARE(form.take().count(u"Expand a"_s), 1);
    QCOMPARE(form.shown_below(form.tree.Item(u"a1"_s)), QStringList{u"below a1"_s});
    form.click(form.on_arrow(form.tree.Item(u"a1"_s)));
    QVERIFY(form.tree.Expanded(form.tree.Item(u"a1"_s)));
}

void TestTreeView::asterisk_opens_one_level_only()
{
    Form form;
    form.grow();
    form.add(form.tree.Item(u"a1"_s), u"deep"_s);
    form.tree.set_Selected(form.a);
    form.key(Qt::Key_Asterisk);
    QCOMPARE(form.take(), QStringList{u"Expand a"_s});
    QVERIFY(!form.tree.Expanded(form.tree.Item(u"a1"_s)));
    form.tree.set_Selected(form.b);
    form.key(Qt::Key_Asterisk);
    form.key(Qt::Key_Plus);
    form.key(Qt::Key_Right);
    QVERIFY(!form.tree.Expanded(form.b));
    QCOMPARE(form.take(), no_events);
}

void TestTreeView::node_whose_children_all_go_is_closed()
{
    Form form;
    form.grow();
    form.tree.set_Expanded(form.a, true);
    form.take();
    form.tree.Remove(form.tree.Index(form.tree.Item(u"a1"_s)));
    QVERIFY(form.tree.Expanded(form.a));
    form.tree.Remove(form.tree.Index(form.tree.Item(u"a2"_s)));
    QVERIFY(!form.tree.Expanded(form.a));
    form.add(form.a, u"a3"_s);
    QVERIFY(!form.tree.Expanded(form.a));
    QCOMPARE(form.take(), no_events);
}

void TestTreeView::arrow_is_shown_with_real_children_only()
{
    Form form;
    form.grow();
    QPoint arrow = form.on_arrow(form.b);
    form.click(arrow);
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"NodeClick b"_s, u"MouseUp 1"_s}));
    form.add(form.b, u"b1"_s);
    form.click(arrow);
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"Expand b"_s, u"MouseUp 1"_s}));
}

void TestTreeView::code_that_selects_raises_no_NodeClick()
{
    Form form;
    form.grow();
    form.tree.set_Selected(form.b);
    QCOMPARE(form.tree.SelectedItem(), form.b);
    QCOMPARE(form.tree.selectionModel()->selectedIndexes().size(), 1);
    form.tree.set_Selected(nullptr);
    QCOMPARE(form.tree.SelectedItem(), nullptr);
    QCOMPARE(form.take(), no_events);
}

void TestTreeView::click_on_a_node_is_told_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("keys");
    QTest::addColumn<int>("number");
    QTest::newRow("left") << int(Qt::LeftButton) << int(Qt::NoModifier) << 1;
    QTest::newRow("right") << int(Qt::RightButton) << int(Qt::NoModifier) << 2;
    QTest::newRow("left with Ctrl") << int(Qt::LeftButton) << int(Qt::ControlModifier) << 1;
    QTest::newRow("left with Shift") << int(Qt::LeftButton) << int(Qt::ShiftModifier) << 1;
}

void TestTreeView::click_on_a_node_is_told()
{
    QFETCH(const int, button);
    QFETCH(const int, keys);
    QFETCH(const int, number);
    const auto mouse_button = static_cast<Qt::MouseButton>(button);
    const auto modifiers = static_cast<Qt::KeyboardModifiers>(keys);
    Form form;
    form.grow();
    // The second click is one on the node that is selected.
    for (int round = 0; round < 2; ++round) {
        QTest::mousePress(form.tree.viewport(), mouse_button, modifiers, form.on_text(form.b));
        QCOMPARE(form.take(), QStringList{u"MouseDown %1"_s.arg(number)});
        QTest::mouseRelease(form.tree.viewport(), mouse_button, modifiers, form.on_text(form.b));
        QCOMPARE(form.take(), (QStringList{u"NodeClick b"_s, u"MouseUp %1"_s.arg(number)}));
        QCOMPARE(form.tree.SelectedItem(), form.b);
        QCOMPARE(form.tree.selectionModel()->selectedIndexes().size(), 1);
    }
}

void TestTreeView::click_on_the_selected_node_is_told_again()
{
    Form form;
    form.grow();
    form.tree.set_Selected(form.c);
    form.click(form.on_text(form.c));
    QCOMPARE(form.take().count(u"NodeClick c"_s), 1);
}

void TestTreeView::click_beside_the_nodes_chooses_nothing()
{
    Form form;
    form.grow();
    form.tree.set_Selected(form.b);
    form.click(form.tree.viewport()->rect().bottomLeft() - QPoint(-20, 5));
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"MouseUp 1"_s}));
    QCOMPARE(form.tree.SelectedItem(), form.b);
    form.click(form.on_arrow(form.a));
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"Expand a"_s, u"MouseUp 1"_s}));
    QCOMPARE(form.tree.SelectedItem(), form.b);
    form.click(form.on_arrow(form.a));
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"Collapse a"_s, u"MouseUp 1"_s}));
}

void TestTreeView::middle_click_neither_selects_nor_is_a_NodeClick()
{
    Form form;
    form.grow();
    form.tree.set_Selected(form.root);
    for (int click = 0; click < 2; ++click) {
        form.click(form.on_text(form.a), Qt::MiddleButton);
        QCOMPARE(form.take(), (QStringList{u"MouseDown 4"_s, u"MouseUp 4"_s}));
        QCOMPARE(form.tree.SelectedItem(), form.root);
    }
}

void TestTreeView::press_that_slides_off_still_tells_what_it_selected()
{
    Form form;
    form.grow();
    for (const QStringList& told : {QStringList{u"NodeClick a"_s, u"MouseUp 1"_s}, QStringList{u"MouseUp 1"_s}}) {
        QTest::mousePress(form.tree.viewport(), Qt::LeftButton, {}, form.on_text(form.a));
        const QPoint away = form.on_text(form.c);
        QMouseEvent move(QEvent::MouseMove, away, form.tree.viewport()->mapToGlobal(away), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(form.tree.viewport(), &move);
        form.take();
        QTest::mouseRelease(form.tree.viewport(), Qt::LeftButton, {}, away);
        QCOMPARE(form.tree.SelectedItem(), form.a);
        QCOMPARE(form.take(), told);
    }
}

void TestTreeView::handler_of_NodeClick_may_remove_nodes()
{
    Form form;
    form.grow();
    connect(&form.tree, &TreeView::NodeClick, &form, [&](const TreeNode* node) {
        if (node->Key() == u"b")
            form.tree.Remove(form.tree.Index(node));
    });
    form.click(form.on_text(form.b));
    QCOMPARE(form.take(), (QStringList{u"MouseDown 1"_s, u"NodeClick b"_s, u"MouseUp 1"_s}));
    QCOMPARE(form.tree.SelectedItem(), form.c);

    connect(&form.tree, &TreeView::MouseDown, &form,
            [&] { form.tree.Remove(form.tree.Index(form.tree.Item(u"a"_s))); });
    form.click(form.on_text(form.a));
    QCOMPARE(form.tree.Item(u"a"_s), nullptr);
}

void TestTreeView::keys_choose_nodes()
{
    Form form;
    form.grow();
    form.key(Qt::Key_Down);
    QCOMPARE(form.take(), QStringList{u"NodeClick a"_s});
    form.key(Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(form.take(), QStringList{u"NodeClick b"_s});
    QCOMPARE(form.tree.selectionModel()->selectedIndexes().size(), 1);
    form.key(Qt::Key_C);
    QCOMPARE(form.take(), QStringList{u"NodeClick c"_s});
    form.key(Qt::Key_Down);
    QCOMPARE(form.take(), no_events);
    form.key(Qt::Key_Home);
    QCOMPARE(form.take(), QStringList{u"NodeClick r"_s});
}

void TestTreeView::enter_reaches_the_form()
{
    Form form;
    form.grow();
    form.key(Qt::Key_Return);
    form.key(Qt::Key_Enter);
    QCOMPARE(form.form_keys, 2);
    QCOMPARE(form.take(), no_events);
}

void TestTreeView::context_keys_are_told()
{
    Form form;
    form.grow();
    form.key(Qt::Key_F10, Qt::ShiftModifier);
    QCOMPARE(form.take(), QStringList{u"ContextKey"_s});
    QContextMenuEvent menu_key(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(&form.tree, &menu_key);
    QCOMPARE(form.take(), QStringList{u"ContextKey"_s});
    QContextMenuEvent mouse(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(form.tree.viewport(), &mouse);
    QCOMPARE(form.take(), no_events);
}

void TestTreeView::moves_and_focus_are_told()
{
    Form form;
    form.grow();
    QWidget other(&form);
    other.setFocusPolicy(Qt::StrongFocus);
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    other.setFocus();
    QSignalSpy focus(&form.tree, &TreeView::GotFocus);
    form.tree.setFocus();
    QCOMPARE(focus.count(), 1);
    other.setFocus();
    form.tree.setFocus(Qt::PopupFocusReason);
    QCOMPARE(focus.count(), 1);

    QSignalSpy moves(&form.tree, &TreeView::MouseMove);
    QVERIFY(form.tree.viewport()->hasMouseTracking());
    QMouseEvent move(QEvent::MouseMove, QPointF(30, 10), QPointF(30, 10), Qt::NoButton, Qt::RightButton, {});
    QApplication::sendEvent(form.tree.viewport(), &move);
    QCOMPARE(moves.count(), 1);
    QCOMPARE(moves.at(0).at(0).value<i16>(), i16{2});
    QCOMPARE(moves.at(0).at(1).toPoint(), QPoint(30, 10));
}

void TestTreeView::HitTest_finds_nodes()
{
    Form form;
    form.grow();
    QCOMPARE(form.tree.HitTest(form.on_text(form.c)), form.c);
    QCOMPARE(form.tree.HitTest(form.tree.viewport()->rect().bottomLeft() - QPoint(-20, 5)), nullptr);
    QCOMPARE(form.tree.HitTest(QPoint(20, -3)), nullptr);
    QVERIFY(form.tree.node_rect(form.tree.Item(u"a1"_s)).isEmpty());
}

void TestTreeView::removed_selection_goes_to_a_neighbour_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("removed");
    QTest::addColumn<QString>("then");
    QTest::newRow("the next sibling") << u"b"_s << u"b"_s << u"c"_s;
    QTest::newRow("the one before, behind the last") << u"c"_s << u"c"_s << u"b"_s;
    QTest::newRow("the parent of an only child") << u"c1"_s << u"c1"_s << u"c"_s;
    QTest::newRow("the neighbour of the ancestor that goes") << u"a2"_s << u"a"_s << u"b"_s;
    QTest::newRow("stays when another node goes") << u"c1"_s << u"a"_s << u"c1"_s;
}

void TestTreeView::removed_selection_goes_to_a_neighbour()
{
    QFETCH(const QString, selected);
    QFETCH(const QString, removed);
    QFETCH(const QString, then);
    Form form;
    form.grow();
    form.tree.set_Expanded(form.a, true);
    form.tree.set_Expanded(form.c, true);
    form.tree.set_Selected(form.tree.Item(selected));
    form.take();
    form.tree.Remove(form.tree.Index(form.tree.Item(removed)));
    QCOMPARE(form.tree.SelectedItem(), form.tree.Item(then));
    const QModelIndexList shown = form.tree.selectionModel()->selectedIndexes();
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.at(0).data().toString(), then);
    QCoreApplication::processEvents();
    QCOMPARE(form.take(), no_events);
}

void TestTreeView::five_thousand_nodes_go_one_by_one_data()
{
    QTest::addColumn<QString>("order");
    QTest::newRow("from the first") << u"first"_s;
    QTest::newRow("from the last") << u"last"_s;
    QTest::newRow("in any order") << u"any"_s;
}

void TestTreeView::five_thousand_nodes_go_one_by_one()
{
    QFETCH(const QString, order);
    Form form;
    TreeNode* root = form.add(nullptr, u"r"_s);
    form.tree.set_Sorted(root);
    QStringList keys;
    for (int number = 0; number < 5100; ++number)
        keys.append(u"n%1"_s.arg(number, 4, 10, QChar(u'0')));
    for (const QString& key : keys)
        form.add(root, key);
    form.tree.set_Expanded(root, true);
    QRandomGenerator random(7);
    if (order == u"any")
        std::shuffle(keys.begin(), keys.end(), random);
    if (order == u"last")
        std::reverse(keys.begin(), keys.end());
    QCoreApplication::processEvents();
    for (int number = 0; number < 5000; ++number)
        form.tree.Remove(form.tree.Index(form.tree.Item(keys.at(number))));
    QStringList rest = keys.mid(5000);
    rest.sort();
    QCOMPARE(form.tree.Count(), 101);
    QCOMPARE(form.texts_below(root), rest);
    QCOMPARE(form.shown_below(root), rest);
    for (int index = 1; index <= form.tree.Count(); ++index)
        QCOMPARE(form.tree.Index(form.tree.Item(index)), index);
}

QUILMO_UI_TEST(TestTreeView)
#include "test_tree_view.moc"
