#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "platform/twips.h"
#include "test_main.h"
#include "ui_layout.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int width = design_form_width;
constexpr int height = design_form_height;

void add_to(Geometry& geometry, const QStringList& names, std::size_t part, int twips)
{
    for (const QString& name : names)
        geometry.at(name).at(part) += twips;
}

constexpr std::size_t left = 0;
constexpr std::size_t top = 1;
constexpr std::size_t wide = 2;
constexpr std::size_t high = 3;

const QStringList& detail_controls()
{
    static const QStringList names = {
        u"txtFilename"_s,    u"txtArtist"_s,      u"txtTitle"_s,      u"Picture_mp3_back"_s, u"Picture_filename"_s,
        u"Picture_artist"_s, u"Picture_title"_s,  u"Picture_genre"_s, u"cboGenre"_s,         u"txtGenre"_s,
        u"Picture_length"_s, u"Label_filesize"_s, u"cmdSave"_s};
    return names;
}

/// What growth in height does.
void grow_high(Geometry& geometry, int twips)
{
    add_to(geometry, detail_controls(), top, twips);
    add_to(geometry, {u"tvTreeView"_s, u"lvListView"_s, u"imgSplitter"_s}, high, twips);
}

/// What growth in width by a multiple of three does.
void grow_wide(Geometry& geometry, int twips)
{
    add_to(geometry, {u"txtFilename"_s, u"txtArtist"_s, u"txtTitle"_s, u"Picture_top_back"_s, u"lvListView"_s}, wide,
           twips);
    add_to(geometry, {u"Picture_mp3_back"_s}, left, twips);
    add_to(geometry, {u"cmdRemove"_s}, left, twips / 3);
    add_to(geometry, {u"Change_all"_s}, left, twips / 3 * 2);
    add_to(geometry, {u"cmdBurn"_s}, left, twips);
}

void drag_splitter(const Form& form, float x)
{
    Q_EMIT form.controls.imgSplitter->MouseDown();
    Q_EMIT form.controls.imgSplitter->MouseMove(x - static_cast<float>(form.controls.imgSplitter.Left()));
}

} // namespace

class TestLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void design_geometry_is_noted_row_by_row();
    void genre_boxes_stand_in_one_place();
    void the_design_is_at_rest();
    void growth();
    void growth_data();
    void growth_moves_the_buttons_by_rounded_thirds();
    void growth_moves_the_buttons_by_rounded_thirds_data();
    void many_small_steps_leave_a_drift();
    void a_size_below_the_design_goes_back();
    void a_size_below_the_design_goes_back_data();
    void the_resize_that_the_layout_raises_is_passed_over();
    void the_next_resize_after_one_too_small_is_passed_over_whatever_its_size();
    void splitter_stops();
    void splitter_stops_data();
    void splitter_pressed_and_released();
    void panes_under_their_limit_snap_to_it();
    void splitter_is_moved_by_the_mouse();
    void splitter_is_moved_by_keys();
    void splitter_is_moved_by_keys_data();
    void splitter_is_known_by_keyboard_and_assistive_programs();
    void a_placed_control_stands_on_the_nearest_pixels();
    void small_screens_freeze_the_window();
    void small_screens_freeze_the_window_data();
    void the_window_obeys_the_screen_that_it_is_on();
    void the_window_grows_and_shrinks();
    void the_window_keeps_its_size_at_start_as_minimum();
    void a_window_forced_below_its_minimum_comes_back();
};

void TestLayout::design_geometry_is_noted_row_by_row()
{
    const Form form;
    const MainControls& c = form.controls;
    const std::vector<int> rows = {height,
                                   width,
                                   c.txtFilename.Left(),
                                   c.txtFilename.Width(),
                                   c.txtFilename.Top(),
                                   c.txtArtist.Left(),
                                   c.txtArtist.Width(),
                                   c.txtArtist.Top(),
                                   c.txtTitle.Left(),
                                   c.txtTitle.Width(),
                                   c.txtTitle.Top(),
                                   c.Picture_mp3_back.Left(),
                                   c.Picture_mp3_back.Width(),
                                   c.Picture_mp3_back.Top(),
                                   c.tvTreeView.Height(),
                                   c.Picture_filename.Top(),
                                   c.Picture_artist.Top(),
                                   c.Picture_title.Top(),
                                   c.Picture_genre.Top(),
                                   c.cmdRemove.Left(),
                                   c.Change_all.Left(),
                                   c.cmdBurn.Left(),
                                   c.StatusBar1->panel_width(2)};
    for (int row = 0; row < static_cast<int>(rows.size()); ++row)
        QCOMPARE(form.layout.design(row), rows.at(static_cast<std::size_t>(row)));
}

void TestLayout::genre_boxes_stand_in_one_place()
{
    QWidget ground;
    MainControls controls(ground);
    controls.txtGenre.Move(1, 2, 3000, 420);
    Layout layout(controls, {});
    layout.initial_ctl_position(width, height);
    QCOMPARE(controls.txtGenre.Left(), controls.cboGenre.Left());
    QCOMPARE(controls.txtGenre.Top(), controls.cboGenre.Top());
}

void TestLayout::the_design_is_at_rest()
{
    Form form;
    const Geometry design = geometry_of(form);
    form.layout.Resize(width, height);
    QVERIFY(geometry_of(form) == design);
    QVERIFY(form.sizes_set.empty());
}

void TestLayout::growth_data()
{
    QTest::addColumn<int>("more_width");
    QTest::addColumn<int>("more_height");
    QTest::newRow("wider") << 3000 << 0;
    QTest::newRow("higher") << 0 << 1501;
    QTest::newRow("wider and higher") << 600 << 700;
}

void TestLayout::growth()
{
    QFETCH(const int, more_width);
    QFETCH(const int, more_height);
    Form form;
    const int panel = form.controls.StatusBar1->panel_width(2);
    const Geometry design = geometry_of(form);
    Geometry expected = design;
    grow_high(expected, more_height);
    grow_wide(expected, more_width);

    form.layout.Resize(width + more_width, height + more_height);
    QVERIFY(geometry_of(form) == expected);
    QCOMPARE(form.controls.StatusBar1->panel_width(2), panel + more_width);

    form.layout.Resize(width, height);
    QVERIFY(geometry_of(form) == design);
    QCOMPARE(form.controls.StatusBar1->panel_width(2), panel);
}

void TestLayout::growth_moves_the_buttons_by_rounded_thirds_data()
{
    QTest::addColumn<int>("growth");
    QTest::addColumn<int>("remove");
    QTest::addColumn<int>("change");
    QTest::addColumn<int>("burn");
    QTest::newRow("300 twips") << 300 << 100 << 200 << 300;
    QTest::newRow("100 twips: 66.67 is rounded up") << 100 << 33 << 67 << 100;
    QTest::newRow("1 twip: 0.33 is rounded down") << 1 << 0 << 1 << 1;
    QTest::newRow("2 twips") << 2 << 1 << 1 << 2;
}

void TestLayout::growth_moves_the_buttons_by_rounded_thirds()
{
    QFETCH(const int, growth);
    Form form;
    const MainControls& c = form.controls;
    const std::array before = {c.cmd_select_all.Left(), c.cmdRemove.Left(), c.Change_all.Left(), c.cmdBurn.Left()};
    form.layout.Resize(width + growth, height);
    QCOMPARE(c.cmd_select_all.Left(), before[0]);
    QTEST(c.cmdRemove.Left() - before[1], "remove");
    QTEST(c.Change_all.Left() - before[2], "change");
    QTEST(c.cmdBurn.Left() - before[3], "burn");
}

void TestLayout::many_small_steps_leave_a_drift()
{
    Form form;
    const MainControls& c = form.controls;
    const int remove = c.cmdRemove.Left();
    const int change = c.Change_all.Left();
    for (int step = 1; step <= 30; ++step)
        form.layout.Resize(width + step, height);
    QCOMPARE(c.cmdRemove.Left() - remove, 0);
    QCOMPARE(c.Change_all.Left() - change, 30);
}

void TestLayout::a_size_below_the_design_goes_back_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("size_set");
    QTest::addColumn<int>("growth_high_kept");
    QTest::addColumn<int>("growth_wide_kept");
    QTest::addColumn<bool>("top_picture_keeps_its_width");
    QTest::newRow("too narrow, high enough")
        << QSize(width - 15, height + 450) << QSize(width, height + 450) << 450 << 0 << true;
    QTest::newRow("wide enough, too low")
        << QSize(width + 900, height - 15) << QSize(width + 900, height) << 0 << 900 << false;
    QTest::newRow("too narrow and too low")
        << QSize(width - 15, height - 15) << QSize(width, height) << 0 << 0 << false;
}

void TestLayout::a_size_below_the_design_goes_back()
{
    QFETCH(const QSize, size);
    QFETCH(const QSize, size_set);
    QFETCH(const int, growth_high_kept);
    QFETCH(const int, growth_wide_kept);
    QFETCH(const bool, top_picture_keeps_its_width);
    Form form;
    const int panel = form.controls.StatusBar1->panel_width(2);
    Geometry expected = geometry_of(form);
    grow_high(expected, growth_high_kept);
    grow_wide(expected, growth_wide_kept);
    if (top_picture_keeps_its_width)
        add_to(expected, {u"Picture_top_back"_s}, wide, 300);

    form.layout.Resize(width + 300, height + 300);
    form.layout.Resize(size.width(), size.height());
    QCOMPARE(form.sizes_set, std::vector{size_set});
    QVERIFY(geometry_of(form) == expected);
    QCOMPARE(form.controls.StatusBar1->panel_width(2), panel + growth_wide_kept);

    // The size that was set comes back as a resize, which moves nothing.
    form.layout.Resize(size_set.width(), size_set.height());
    QVERIFY(geometry_of(form) == expected);
}

void TestLayout::the_resize_that_the_layout_raises_is_passed_over()
{
    QWidget ground;
    MainControls controls(ground);
    int nested = 0;
    Layout* layout_of_form = nullptr;
    Layout layout(controls, [&](int form_width, int form_height) {
        ++nested;
        layout_of_form->Resize(form_width, form_height);
    });
    layout_of_form = &layout;
    layout.initial_ctl_position(width, height);
    const int burn = controls.cmdBurn.Left();
    layout.Resize(width - 300, height - 300);
    QCOMPARE(nested, 1);
    layout.Resize(width + 300, height);
    QCOMPARE(controls.cmdBurn.Left(), burn + 300);
}

void TestLayout::the_next_resize_after_one_too_small_is_passed_over_whatever_its_size()
{
    Form form;
    const Geometry design = geometry_of(form);
    Geometry grown = design;
    grow_wide(grown, 300);
    grow_high(grown, 450);
    form.layout.Resize(width - 15, height - 15);
    form.layout.Resize(width + 300, height + 450);
    QVERIFY(geometry_of(form) == design);
    form.layout.Resize(width + 300, height + 450);
    QVERIFY(geometry_of(form) == grown);
}

void TestLayout::splitter_stops_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("bar");
    QTest::addColumn<int>("pane");
    QTest::newRow("in the middle") << 6000 << 6000 << 6000;
    QTest::newRow("600 shows the bar there and stops the pane at 1500") << 600 << 600 << 1500;
    QTest::newRow("the bar stops at 500") << 499 << 500 << 1500;
    QTest::newRow("far outside at the left") << -4000 << 500 << 1500;
    QTest::newRow("the bar stops 500 before the right edge") << width - 499 << width - 500 << width - 1500;
    QTest::newRow("the bar at its right limit") << width - 500 << width - 500 << width - 1500;
    QTest::newRow("the pane at its right limit") << width - 1500 << width - 1500 << width - 1500;
}

void TestLayout::splitter_stops()
{
    QFETCH(const int, x);
    QFETCH(const int, bar);
    QFETCH(const int, pane);
    const Form form;
    const MainControls& c = form.controls;
    const int tree = c.tvTreeView.Width();
    drag_splitter(form, static_cast<float>(x));
    QVERIFY(!c.picSplitter->isHidden());
    QCOMPARE(c.picSplitter.Left(), bar);
    QCOMPARE(c.tvTreeView.Width(), tree);

    Q_EMIT c.imgSplitter->MouseUp();
    QVERIFY(c.picSplitter->isHidden());
    QCOMPARE(c.tvTreeView.Width(), pane);
    QCOMPARE(c.imgSplitter.Left(), pane);
    QCOMPARE(c.lvListView.Left(), pane + 80);
    QCOMPARE(c.lvListView.Width(), width - (pane + 140));
    QCOMPARE(c.lvListView.Height(), c.tvTreeView.Height());
}

void TestLayout::splitter_pressed_and_released()
{
    const Form form;
    const MainControls& c = form.controls;
    const Geometry before = geometry_of(form);
    Q_EMIT c.imgSplitter->MouseDown();
    QCOMPARE(c.picSplitter.Left(), c.imgSplitter.Left());
    QCOMPARE(c.picSplitter.Top(), c.imgSplitter.Top());
    QCOMPARE(c.picSplitter.Width(), c.imgSplitter.Width() / 2);
    QCOMPARE(c.picSplitter.Height(), c.imgSplitter.Height() - 20);
    Q_EMIT c.imgSplitter->MouseUp();
    QVERIFY(geometry_of(form) == before);

    // Without a press the mouse moves nothing.
    const int bar = c.picSplitter.Left();
    Q_EMIT c.imgSplitter->MouseMove(900);
    QCOMPARE(c.picSplitter.Left(), bar);
}

void TestLayout::panes_under_their_limit_snap_to_it()
{
    Form form;
    MainControls& c = form.controls;
    c.imgSplitter.set_Left(1200);
    c.tvTreeView.set_Width(1200);
    Q_EMIT c.imgSplitter->MouseDown();
    QCOMPARE(c.picSplitter.Left(), 1200);
    Q_EMIT c.imgSplitter->MouseUp();
    QCOMPARE(c.tvTreeView.Width(), 1500);
    QCOMPARE(c.imgSplitter.Left(), 1500);
    QCOMPARE(c.lvListView.Left(), 1580);
}

void TestLayout::splitter_is_moved_by_the_mouse()
{
    const Form form;
    SplitterGrip& grip = *form.controls.imgSplitter;
    const int before = form.controls.imgSplitter.Left();
    const QPoint start(2, 40);
    QTest::mousePress(&grip, Qt::LeftButton, {}, start);
    QTest::mouseMove(&grip, start + QPoint(60, 0));
    QTest::mouseRelease(&grip, Qt::LeftButton, {}, start + QPoint(60, 0));
    QCOMPARE(form.controls.tvTreeView.Width(), before + to_twips(62)); // the bar stands where the mouse is
    QVERIFY(form.controls.picSplitter->isHidden());
}

void TestLayout::splitter_is_moved_by_keys_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("to");
    QTest::newRow("Left") << 6000 << int(Qt::Key_Left) << 5760;
    QTest::newRow("Right") << 6000 << int(Qt::Key_Right) << 6240;
    QTest::newRow("Left stops at the pane's limit") << 1600 << int(Qt::Key_Left) << 1500;
    QTest::newRow("Left at the limit") << 1500 << int(Qt::Key_Left) << 1500;
    QTest::newRow("Right stops at the pane's limit") << width - 1600 << int(Qt::Key_Right) << width - 1500;
    QTest::newRow("another key") << 6000 << int(Qt::Key_Down) << 6000;
}

void TestLayout::splitter_is_moved_by_keys()
{
    QFETCH(const int, from);
    QFETCH(const int, key);
    QFETCH(const int, to);
    Form form;
    const MainControls& c = form.controls;
    form.layout.SizeControls(static_cast<float>(from));
    QTest::keyClick(&*c.imgSplitter, static_cast<Qt::Key>(key));
    QCOMPARE(c.imgSplitter.Left(), to);
    QCOMPARE(c.tvTreeView.Width(), to);
    QCOMPARE(c.lvListView.Left(), to + 80);
    QCOMPARE(c.lvListView.Width(), width - (to + 140));
    QVERIFY(c.picSplitter->isHidden());
    QTest::keyClick(&*c.imgSplitter, static_cast<Qt::Key>(key), Qt::AltModifier);
    QCOMPARE(c.imgSplitter.Left(), to);

    // While the mouse has it, keys leave it alone.
    Q_EMIT c.imgSplitter->MouseDown();
    QTest::keyClick(&*c.imgSplitter, static_cast<Qt::Key>(key));
    QCOMPARE(c.imgSplitter.Left(), to);
    Q_EMIT c.imgSplitter->MouseUp();
}

void TestLayout::splitter_is_known_by_keyboard_and_assistive_programs()
{
    const TestDisk disk;
    QuilmoMain window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto* grip = window.findChild<SplitterGrip*>(u"imgSplitter"_s);
    const QImage unfocused = grip->grab().toImage();
    auto* tree = window.findChild<QWidget*>(u"tvTreeView"_s);
    tree->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(grip->hasFocus());
    QVERIFY(grip->grab().toImage() != unfocused);
    QTest::keyClick(grip, Qt::Key_Tab);
    QVERIFY(!grip->hasFocus());
    QCOMPARE(grip->grab().toImage(), unfocused);

    const QWidget* before = QApplication::focusWidget();
    QTest::mouseClick(grip, Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), before);

    const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(grip);
    QCOMPARE(face->role(), QAccessible::Splitter);
    QVERIFY(!face->text(QAccessible::Name).isEmpty());
}

void TestLayout::a_placed_control_stands_on_the_nearest_pixels()
{
    QWidget form;
    auto* control = new QWidget(&form);
    Placed<QWidget> placed(*control, Place(*control, 50, 100, 200, 200));
    QCOMPARE(control->geometry(), QRect(QPoint(3, 7), QPoint(16, 19))); // 3.33 6.67 to 16.67 20
    placed.set_Left(53);
    QCOMPARE(placed.Left(), 53);
    QCOMPARE(control->x(), 4);
    placed.set_Left(50);
    placed.set_Width(187); // ends at 15.8
    QCOMPARE(control->geometry().right(), 15);
}

void TestLayout::small_screens_freeze_the_window_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<bool>("frozen");
    QTest::newRow("800 x 600") << QSize(800, 600) << true;
    QTest::newRow("1023 x 767") << QSize(1023, 767) << true;
    QTest::newRow("1024 x 768") << QSize(1024, 768) << false;
    QTest::newRow("only the width is small") << QSize(1023, 768) << false;
    QTest::newRow("only the height is small") << QSize(1024, 767) << false;
}

void TestLayout::small_screens_freeze_the_window()
{
    QFETCH(const QSize, screen);
    QFETCH(const bool, frozen);
    QWidget window;
    window.resize(640, 480);
    freeze_on_small_screen(window, screen);
    QCOMPARE(window.minimumSize() == window.maximumSize(), frozen);
    QCOMPARE(window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint), !frozen);
    window.resize(800, 500);
    QCOMPARE(window.size(), frozen ? QSize(640, 480) : QSize(800, 500));
}

// It runs on a large screen and on a small one.
void TestLayout::the_window_obeys_the_screen_that_it_is_on()
{
    const TestDisk disk;
    QuilmoMain window;
    const bool small = qEnvironmentVariableIsSet("QUILMO_SMALL_SCREEN");
    QCOMPARE(window.minimumSize() == window.maximumSize(), small);
    QCOMPARE(window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint), !small);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto* form = window.findChild<QWidget*>(u"form"_s);
    QCOMPARE(form->size(), QSize(to_pixels(shared.min_form_width), to_pixels(shared.min_form_height)));
}

void TestLayout::the_window_grows_and_shrinks()
{
    const TestDisk disk;
    QuilmoMain window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto* burn = window.findChild<QWidget*>(u"cmdBurn"_s);
    const auto* save = window.findChild<QWidget*>(u"cmdSave"_s);
    const auto* tree = window.findChild<QWidget*>(u"tvTreeView"_s);
    const QSize size = window.size();
    const QPoint burn_place = burn->pos();
    const QPoint save_place = save->pos();
    const int tree_height = tree->height();

    window.resize(size + QSize(90, 60));
    QTRY_COMPARE(burn->pos(), burn_place + QPoint(90, 0));
    QCOMPARE(save->pos(), save_place + QPoint(0, 60));
    QCOMPARE(tree->height(), tree_height + 60);

    window.resize(size);
    QTRY_COMPARE(burn->pos(), burn_place);
    QCOMPARE(save->pos(), save_place);
    QCOMPARE(tree->height(), tree_height);
}

void TestLayout::the_window_keeps_its_size_at_start_as_minimum()
{
    const TestDisk disk;
    QuilmoMain window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto* form = window.findChild<QWidget*>(u"form"_s);
    QCOMPARE(form->size(), QSize(to_pixels(shared.min_form_width), to_pixels(shared.min_form_height)));
    const QSize size = window.size();
    window.resize(size - QSize(200, 200));
    QCoreApplication::processEvents();
    QCOMPARE(window.size(), size);
}

void TestLayout::a_window_forced_below_its_minimum_comes_back()
{
    const TestDisk disk;
    QuilmoMain window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* form = window.findChild<QWidget*>(u"form"_s);
    const QSize size = form->size();
    form->setMinimumSize(0, 0);
    window.setMinimumSize(1, 1);
    window.resize(window.size() - QSize(100, 50));
    QTRY_COMPARE(form->size(), size);
    const auto* burn = window.findChild<QWidget*>(u"cmdBurn"_s);
    const QPoint place = burn->pos();
    window.resize(window.size() + QSize(30, 0));
    QTRY_COMPARE(burn->pos(), place + QPoint(30, 0));
}

QUILMO_UI_TEST(TestLayout)
#include "test_layout.moc"
