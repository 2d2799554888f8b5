#include "frame/QuilmoMain.h"
#include "platform/twips.h"
#include "test_main.h"
#include "ui_layout.h"

#include <QTest>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int design_width = design_form_width;
constexpr int design_height = design_form_height;
constexpr QSize largest(3840, 2160); ///< logical pixels

constexpr std::size_t left = 0;
constexpr std::size_t top = 1;
constexpr std::size_t width = 2;
constexpr std::size_t height = 3;

/// The rule of the layout in plain arithmetic, case by case.
class Model
{
public:
    explicit Model(const Form& form) : at(geometry_of(form)), panel(form.controls.StatusBar1->panel_width(2)) {}

    void resize(int form_width, int form_height)
    {
        size = QSize(form_width, form_height);
        if (form_height >= design_height && form_width >= design_width) {
            go_down(form_height - last.height());
            grow_wide(form_width - last.width());
            last = size;
        } else if (form_height >= design_height) {
            go_down(form_height - last.height());
            widths_back();
            last = size = QSize(design_width, form_height);
        } else if (form_width >= design_width) {
            heights_back();
            grow_wide(form_width - last.width());
            last = size = QSize(form_width, design_height);
        } else {
            heights_back();
            widths_back();
            at[u"Picture_top_back"_s][width] = design_width;
            last = size = QSize(design_width, design_height);
        }
        set_border(at[u"imgSplitter"_s][left]);
    }

    void set_border(int x)
    {
        x = x < 1500 ? 1500 : x;
        x = x > size.width() - 1500 ? size.width() - 1500 : x;
        at[u"tvTreeView"_s][width] = x;
        at[u"imgSplitter"_s][left] = x;
        at[u"imgSplitter"_s][top] = at[u"tvTreeView"_s][top];
        at[u"imgSplitter"_s][height] = at[u"tvTreeView"_s][height];
        at[u"lvListView"_s][left] = x + 80;
        at[u"lvListView"_s][width] = size.width() - (x + 140);
        at[u"lvListView"_s][height] = at[u"tvTreeView"_s][height];
    }

    /// The panel's width stands in the geometry's shape too, so that one comparison tells all.
    Geometry geometry() const
    {
        Geometry all = at;
        all[u"panel"_s] = {0, 0, panel, 0};
        return all;
    }

    Geometry at;
    int panel;
    QSize size{design_width, design_height};

private:
    void go_down(int twips)
    {
        for (const QString& name : detail_controls())
            at[name][top] += twips;
        at[u"tvTreeView"_s][height] += twips;
    }

    void grow_wide(int twips)
    {
        for (const QString& name : {u"txtFilename"_s, u"txtArtist"_s, u"txtTitle"_s, u"Picture_top_back"_s})
            at[name][width] += twips;
        at[u"Picture_mp3_back"_s][left] = at[u"txtFilename"_s][left] + at[u"txtFilename"_s][width] + 50;
        panel += twips;
        at[u"cmdRemove"_s][left] += static_cast<int>(std::lround(twips / 3.0));
        at[u"Change_all"_s][left] += static_cast<int>(std::lround(2 * twips / 3.0));
        at[u"cmdBurn"_s][left] += twips;
    }

    void heights_back()
    {
        for (const QString& name : detail_controls())
            at[name][top] = design.at(name)[top];
        at[u"tvTreeView"_s][height] = design.at(u"tvTreeView"_s)[height];
    }

    void widths_back()
    {
        for (const QString& name : {u"txtFilename"_s, u"txtArtist"_s, u"txtTitle"_s, u"Picture_mp3_back"_s}) {
            at[name][left] = design.at(name)[left];
            at[name][width] = design.at(name)[width];
        }
        for (const QString& name : {u"cmdRemove"_s, u"Change_all"_s, u"cmdBurn"_s})
            at[name][left] = design.at(name)[left];
        panel = design_panel;
    }

    static QStringList detail_controls()
    {
        return {u"txtFilename"_s,      u"txtArtist"_s,      u"txtTitle"_s,       u"Picture_mp3_back"_s,
                u"Picture_filename"_s, u"Picture_artist"_s, u"Picture_title"_s,  u"Picture_genre"_s,
                u"cboGenre"_s,         u"txtGenre"_s,       u"Picture_length"_s, u"Label_filesize"_s,
                u"cmdSave"_s};
    }

    Geometry design = at;
    int design_panel = panel;
    QSize last = size;
};

Geometry with_panel(const Form& form)
{
    Geometry all = geometry_of(form);
    all[u"panel"_s] = {0, 0, form.controls.StatusBar1->panel_width(2), 0};
    return all;
}

/// The first control that stands elsewhere than the rule says; empty if none does.
QString difference(const Geometry& is, const Geometry& told)
{
    const auto text = [](const std::array<int, 4>& place) {
        return u"%1 %2 %3 %4"_s.arg(place[0]).arg(place[1]).arg(place[2]).arg(place[3]);
    };
    for (const auto& [name, place] : told) {
        if (is.at(name) != place)
            return u"%1 stands at %2, not at %3"_s.arg(name, text(is.at(name)), text(place));
    }
    return {};
}

/// Gives the form a size, and the sizes that come back of it.
void resize(Form& form, int form_width, int form_height)
{
    form.sizes_set.clear();
    form.layout.Resize(form_width, form_height);
    if (form.resizes_at_once)
        return;
    for (const QSize& set : std::exchange(form.sizes_set, {}))
        form.layout.Resize(set.width(), set.height());
}

void drag_border(const Form& form, int x)
{
    SplitterGrip& grip = *form.controls.imgSplitter;
    Q_EMIT grip.MouseDown();
    Q_EMIT grip.MouseMove(static_cast<float>(x - form.controls.imgSplitter.Left()));
    Q_EMIT grip.MouseUp();
}

/// Pairs of controls of which one stands on the other by design.
bool may_overlap(const QString& one, const QString& other)
{
    const auto is = [&](const QString& below, const QStringList& above) {
        return (one == below && above.contains(other)) || (other == below && above.contains(one));
    };
    return is(u"Picture_top_back"_s, {u"cmd_select_all"_s, u"cmdRemove"_s, u"Change_all"_s, u"cmdBurn"_s}) ||
           is(u"cboGenre"_s, {u"txtGenre"_s}) || is(u"Picture_back_play_index"_s, {u"play_index_button"_s}) ||
           is(u"Picture_back_volume"_s, {u"volume_button"_s});
}

/// What is cut by the ground's edges, and what stands on another control, among those placed on it; empty if nothing.
QString fault_on(const QWidget& ground, const QRect& area)
{
    QWidgetList placed;
    for (QWidget* widget : ground.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        const bool hand_placed =
            qobject_cast<Toolbar*>(widget) == nullptr && qobject_cast<StatusBar*>(widget) == nullptr;
        if (!widget->isHidden() && hand_placed)
            placed.append(widget);
    }
    for (qsizetype i = 0; i < placed.size(); ++i) {
        if (!area.contains(placed[i]->geometry()))
            return placed[i]->objectName() + u" is cut"_s;
        for (qsizetype j = i + 1; j < placed.size(); ++j) {
            if (placed[i]->geometry().intersects(placed[j]->geometry()) &&
                !may_overlap(placed[i]->objectName(), placed[j]->objectName()))
                return u"%1 and %2 overlap"_s.arg(placed[i]->objectName(), placed[j]->objectName());
        }
    }
    return {};
}

/// Likewise, the controls of the player's ground included.
QString fault_of(const Form& form, QSize pixels)
{
    const QString fault = fault_on(form.ground, QRect({}, pixels));
    const QWidget& player = *form.controls.Picture_mp3_back;
    return fault.isEmpty() ? fault_on(player, player.rect()) : fault;
}

/// Sizes from the design's to the largest, in logical pixels.
std::vector<int> steps_up(int twips, int most)
{
    constexpr int count = 5;
    const int least = to_pixels(twips);
    std::vector<int> sizes;
    for (int i = 0; i <= count; ++i)
        sizes.push_back(least + (most - least) * i / count);
    sizes.insert(sizes.begin() + 1, {least + 1, least + 2});
    return sizes;
}

} // namespace

class TestLayoutWalks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void walks_end_where_the_rule_says_data()
    {
        QTest::addColumn<unsigned>("seed");
        QTest::addColumn<bool>("at_once");
        for (const unsigned seed : {1U, 2U, 3U, 4U, 5U}) {
            QTest::addRow("walk %u, sizes come back at once", seed) << seed << true;
            QTest::addRow("walk %u, sizes come back later", seed) << seed << false;
        }
    }

    void walks_end_where_the_rule_says()
    {
        QFETCH(const unsigned, seed);
        QFETCH(const bool, at_once);
        Form form;
        form.resizes_at_once = at_once;
        Model model(form);
        std::mt19937 dice(seed);
        const auto throw_dice = [&dice](int least, int most) {
            return std::uniform_int_distribution<int>(least, most)(dice);
        };
        for (int step = 0; step < 1000; ++step) {
            QSize size = model.size;
            switch (throw_dice(0, 5)) {
            case 0:
                size = QSize(throw_dice(design_width, to_twips(largest.width())),
                             throw_dice(design_height, to_twips(largest.height())));
                break;
            case 1:
                size = QSize(throw_dice(1500, design_width + 300), throw_dice(15, design_height + 300));
                break;
            case 2:
                drag_border(form, throw_dice(-500, size.width() + 500));
                model.set_border(qBound(500, form.controls.picSplitter.Left(), size.width() - 500));
                break;
            default:
                size += QSize(throw_dice(-40, 40), throw_dice(-40, 40));
            }
            resize(form, size.width(), size.height());
            model.resize(size.width(), size.height());
            const QString wrong = difference(with_panel(form), model.geometry());
            QVERIFY2(wrong.isEmpty(), qPrintable(u"after step %1: "_s.arg(step) + wrong));
        }
    }

    void only_the_rounding_is_left_of_legal_steps_data()
    {
        QTest::addColumn<int>("grain"); ///< of the sizes, in twips
        QTest::newRow("sizes in twips") << 1;
        QTest::newRow("sizes in whole pixels leave nothing") << twips_per_pixel;
    }

    void only_the_rounding_is_left_of_legal_steps()
    {
        QFETCH(const int, grain);
        constexpr int steps = 1000;
        Form form;
        Geometry design = with_panel(form);
        std::mt19937 dice(7);
        std::uniform_int_distribution<int> more(0, 3000);
        for (int step = 0; step < steps; ++step)
            resize(form, design_width + more(dice) * grain, design_height + more(dice) * grain);
        resize(form, design_width, design_height);
        if (grain == 1) {
            for (const QString& name : {u"cmdRemove"_s, u"Change_all"_s}) {
                const int drift = std::exchange(design[name][left], geometry_of(form)[name][left]) - design[name][left];
                QVERIFY(drift != 0 && std::abs(drift) <= (steps + 1) / 3);
            }
        }
        const QString wrong = difference(with_panel(form), design);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }

    void what_stands_elsewhere_comes_back_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("too narrow") << QSize(design_width - 15, design_height + 450);
        QTest::newRow("too low") << QSize(design_width + 900, design_height - 15);
        QTest::newRow("too narrow and too low") << QSize(design_width - 15, design_height - 15);
        QTest::newRow("large enough: nothing comes back") << QSize(design_width + 900, design_height + 450);
    }

    void what_stands_elsewhere_comes_back()
    {
        QFETCH(const QSize, size);
        Form form;
        Model model(form);
        MainControls& c = form.controls;
        int by = 30;
        for (Place* place : std::initializer_list<Place*>{
                 &c.txtFilename, &c.txtArtist, &c.txtTitle, &c.Picture_mp3_back, &c.Picture_filename, &c.Picture_artist,
                 &c.Picture_title, &c.Picture_genre, &c.cboGenre, &c.txtGenre, &c.Picture_length, &c.Label_filesize,
                 &c.cmdSave, &c.cmdRemove, &c.Change_all, &c.cmdBurn, &c.tvTreeView, &c.Picture_top_back}) {
            place->Move(place->Left() + by, place->Top() + by + 3, place->Width() + by + 6, place->Height() + by + 9);
            by += 15;
        }
        c.StatusBar1->set_panel_width(2, 7777);
        model.at = geometry_of(form);
        model.panel = 7777;
        resize(form, size.width(), size.height());
        model.resize(size.width(), size.height());
        const QString wrong = difference(with_panel(form), model.geometry());
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }

    void a_jump_to_a_very_large_screen_moves_the_buttons_data()
    {
        QTest::addColumn<int>("growth");
        QTest::addColumn<int>("remove");
        QTest::addColumn<int>("change");
        QTest::newRow("the longest that 16 bits hold") << 32767 << 10922 << 21845;
        QTest::newRow("a twip more") << 32768 << 10923 << 21845;
        QTest::newRow("3840 pixels") << 42660 << 14220 << 28440;
        QTest::newRow("more than twice 16 bits") << 70001 << 23334 << 46667;
    }

    void a_jump_to_a_very_large_screen_moves_the_buttons()
    {
        QFETCH(const int, growth);
        QFETCH(const int, remove);
        QFETCH(const int, change);
        Form form;
        const Geometry design = with_panel(form);
        resize(form, design_width + growth, design_height);
        const Geometry grown = geometry_of(form);
        QCOMPARE(grown.at(u"cmdRemove"_s)[left] - design.at(u"cmdRemove"_s)[left], remove);
        QCOMPARE(grown.at(u"Change_all"_s)[left] - design.at(u"Change_all"_s)[left], change);
        QCOMPARE(grown.at(u"cmdBurn"_s)[left] - design.at(u"cmdBurn"_s)[left], growth);
        QCOMPARE(grown.at(u"lvListView"_s)[width] - design.at(u"lvListView"_s)[width], growth);
        resize(form, design_width, design_height);
        QCOMPARE(difference(with_panel(form), design), QString());
    }

    void nothing_is_cut_or_overlaps_after_a_jump()
    {
        for (const int x : steps_up(design_width, largest.width())) {
            Form form;
            for (const int y : steps_up(design_height, largest.height())) {
                resize(form, design_width, design_height);
                resize(form, to_twips(x), to_twips(y));
                for (const int border : {0, 3000, to_twips(x)}) {
                    drag_border(form, border);
                    const QString fault = fault_of(form, QSize(x, y));
                    QVERIFY2(fault.isEmpty(), qPrintable(u"at %1 x %2: %3"_s.arg(x).arg(y).arg(fault)));
                }
            }
        }
    }

    void nothing_is_cut_or_overlaps_on_the_way()
    {
        Form form;
        const auto look_at = [&form](int x, int y) {
            resize(form, to_twips(x), to_twips(y));
            const QString fault = fault_of(form, QSize(x, y));
            QVERIFY2(fault.isEmpty(), qPrintable(u"at %1 x %2: %3"_s.arg(x).arg(y).arg(fault)));
        };
        const int least_width = to_pixels(design_width);
        const int least_height = to_pixels(design_height);
        for (int x = least_width; x <= largest.width(); x += 7)
            look_at(x, least_height + (x - least_width) / 2);
        for (int x = largest.width(); x >= least_width; x -= 13)
            look_at(x, least_height + (x - least_width) / 3);
    }

    void the_largest_window_shows_all_of_itself()
    {
        const TestDisk disk;
        QuilmoMain window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto* form = window.findChild<QWidget*>(u"form"_s);
        const QSize design = form->size();
        window.resize(largest);
        QTRY_VERIFY(form->width() > 3 * design.width());
        QCOMPARE(window.size(), largest);
        QTRY_COMPARE(fault_on(*form, form->rect()), QString());
        const auto* list = window.findChild<QWidget*>(u"lvListView"_s);
        QVERIFY(list->geometry().right() > form->width() - 10);
    }
};

QUILMO_UI_TEST(TestLayoutWalks)

#include "test_layout_walks.moc"
