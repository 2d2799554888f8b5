#include "frame/Splash_Dlg.h"
#include "platform/controls/faces.h"
#include "platform/controls/palette.h"

#include "test_main.h"
#include "ui_contrast.h"

#include <QApplication>
#include <QDirIterator>
#include <QImage>
#include <QSvgRenderer>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize face_size(96, 26);

QImage drawn(const Picture& picture, double ratio = 1, const QColor& ground = Qt::transparent)
{
    QImage image(picture.size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(ground);
    QPainter painter(&image);
    picture.draw(painter, QRectF(QPointF(), picture.size));
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

/// The pixels that differ between two pictures of one size.
QRect difference(const QImage& one, const QImage& other)
{
    QRect found;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
            if (one.pixel(x, y) != other.pixel(x, y))
                found |= QRect(x, y, 1, 1);
    return found;
}

QColor lightest(const QImage& image, const QRect& rect)
{
    QColor found(Qt::black);
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            if (luminance(image.pixelColor(x, y)) > luminance(found))
                found = image.pixelColor(x, y);
    return found;
}

const QStringList expected_pictures{
    u"back_5"_s,     u"box_critical"_s, u"box_information"_s, u"box_question"_s, u"box_warning"_s,   u"cd_drive"_s,
    u"computer"_s,   u"copy"_s,         u"delete"_s,          u"drive"_s,        u"fif"_s,           u"folder"_s,
    u"forward_5"_s,  u"more"_s,         u"muted"_s,           u"muted_over"_s,   u"network"_s,       u"network_drive"_s,
    u"new_folder"_s, u"next"_s,         u"not_fif"_s,         u"open_folder"_s,  u"paste"_s,         u"play"_s,
    u"previous"_s,   u"refresh"_s,      u"removable"_s,       u"sound_on"_s,     u"sound_on_over"_s, u"stop"_s,
    u"track"_s};

void add_face_states()
{
    QTest::addColumn<FaceState>("state");
    QTest::newRow("at rest") << FaceState::up;
    QTest::newRow("pressed") << FaceState::down;
    QTest::newRow("under the mouse") << FaceState::hover;
}

} // namespace

Q_DECLARE_METATYPE(FaceState)

class TestPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { svg_picture({}, {}); } // which brings the pictures in

    void every_picture_is_there()
    {
        QStringList found;
        QDirIterator icons(u":/icons"_s);
        while (icons.hasNext()) {
            icons.next();
            found.append(icons.fileInfo().completeBaseName());
        }
        found.sort();
        QCOMPARE(found, expected_pictures);
    }

    void drawings_data()
    {
        QTest::addColumn<QString>("resource");
        for (const QString& name : expected_pictures)
            QTest::newRow(qPrintable(name)) << u":/icons/%1.svg"_s.arg(name);
        QTest::newRow("program icon") << u":/quilmo.svg"_s;
        QTest::newRow("splash") << u":/splash.svg"_s;
    }

    void drawings()
    {
        QFETCH(const QString, resource);
        QVERIFY(QSvgRenderer(resource).isValid());
        for (const double ratio : {1.0, 2.0, 3.0}) {
            const QImage image = drawn(svg_picture(resource, {16, 16}), ratio);
            QImage empty(image.size(), image.format());
            empty.fill(Qt::transparent);
            const QRect ink = difference(image, empty);
            QVERIFY2(ink.width() > image.width() / 3 && ink.height() > image.height() / 3, "hardly anything is drawn");
        }
    }

    void the_splash_is_ready_for_usual_screens()
    {
        for (const QString& size : {u"480x300"_s, u"960x600"_s})
            QVERIFY2(QFile::exists(u":/splash_%1.pixels"_s.arg(size)), qPrintable(size));
    }

    void the_splash_looks_the_same_however_it_is_drawn_data()
    {
        QTest::addColumn<double>("ratio");
        QTest::newRow("pixels of a usual screen") << 1.0;
        QTest::newRow("pixels of a fine screen") << 2.0;
        QTest::newRow("drawn, for any other screen") << 1.5;
    }

    void the_splash_looks_the_same_however_it_is_drawn()
    {
        QFETCH(const double, ratio);
        const Picture splash = splash_picture();
        QCOMPARE(drawn(splash, ratio), drawn(svg_picture(u":/splash.svg"_s, splash.size), ratio));
    }

    void each_drawing_is_its_own()
    {
        QList<QImage> seen;
        for (const QString& name : expected_pictures) {
            const QImage image = drawn(svg_picture(u":/icons/%1.svg"_s.arg(name), {24, 24}));
            QVERIFY2(!seen.contains(image), qPrintable(name));
            seen.append(image);
        }
    }

    void fif_and_other_files_differ_without_colour()
    {
        const auto shape = [](const QString& name) {
            return drawn(svg_picture(u":/icons/%1.svg"_s.arg(name), {16, 16})).convertToFormat(QImage::Format_Alpha8);
        };
        const QRect where = difference(shape(u"fif"_s), shape(u"not_fif"_s));
        QVERIFY(where.width() > 8 && where.height() > 8);
    }

    void a_missing_drawing_draws_nothing()
    {
        QTest::ignoreMessage(QtWarningMsg, "Cannot open file ':/icons/none.svg', because: No such file or directory");
        const QImage image = drawn(svg_picture(u":/icons/none.svg"_s, {16, 16}));
        QImage empty(image.size(), image.format());
        empty.fill(Qt::transparent);
        QCOMPARE(image, empty);
    }

    void icons_are_drawn_at_the_size_asked_for_data()
    {
        QTest::addColumn<double>("ratio");
        QTest::newRow("plain screen") << 1.0;
        QTest::newRow("screen of double density") << 2.0;
        QTest::newRow("screen of triple density") << 3.0;
    }

    void icons_are_drawn_at_the_size_asked_for()
    {
        QFETCH(const double, ratio);
        const Picture picture = svg_picture(u":/icons/folder.svg"_s, {16, 16});
        const QPixmap pixmap = icon_of(picture).pixmap(QSize(16, 16), ratio);
        QCOMPARE(pixmap.size(), QSize(16, 16) * ratio);
        QCOMPARE(
            pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied).pixelColor(pixmap.rect().center()),
            drawn(picture, ratio).pixelColor(pixmap.rect().center()));
    }

    void an_icon_paints_itself_in_a_view()
    {
        const QIcon icon = icon_of(svg_picture(u":/icons/folder.svg"_s, {16, 16}));
        QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(2);
        image.fill(Qt::white);
        QPainter painter(&image);
        icon.paint(&painter, QRect(4, 4, 16, 16));
        painter.end();
        QCOMPARE(image.pixelColor(24, 28), palette::folder);
        QCOMPARE(image.pixelColor(2, 2), QColor(Qt::white));
    }

    void a_disabled_icon_is_paler()
    {
        const QIcon icon = icon_of(svg_picture(u":/icons/folder.svg"_s, {16, 16}));
        const QImage plain = icon.pixmap(16, QIcon::Normal).toImage();
        const QImage disabled = icon.pixmap(16, QIcon::Disabled).toImage();
        QVERIFY(disabled.pixelColor(8, 10).alpha() < plain.pixelColor(8, 10).alpha() / 2);
    }

    void an_icon_in_a_selected_row_stands_on_paper()
    {
        const QIcon icon = icon_of(svg_picture(u":/icons/fif.svg"_s, {16, 16}));
        const auto ground = [&icon](QIcon::Mode mode) { return icon.pixmap(16, mode).toImage().pixelColor(8, 1); };
        QCOMPARE(ground(QIcon::Normal).alpha(), 0);
        QCOMPARE(ground(QIcon::Selected), palette::paper);
    }

    void an_icon_without_picture_is_no_icon()
    {
        QVERIFY(icon_of({}).isNull());
        QVERIFY(!icon_of(svg_picture(u":/icons/folder.svg"_s, {16, 16})).isNull());
    }

    void caption_contrast_data() { add_face_states(); }

    void caption_contrast()
    {
        QFETCH(const FaceState, state);
        const QImage face = drawn(button_face({}, state, face_size));
        const QRect caption_ground = face.rect().adjusted(5, 3, -5, -3);
        QVERIFY(contrast(palette::on_accent, lightest(face, caption_ground)) >= 4.5);
    }

    void label_contrast()
    {
        for (const QColor& ground : {palette::panel, palette::panel_dark, palette::paper})
            QVERIFY(contrast(palette::soft_ink, ground) >= 4.5);
    }

    void states_look_different()
    {
        const QImage up = drawn(button_face(u"Burn"_s, FaceState::up, face_size));
        const QImage down = drawn(button_face(u"Burn"_s, FaceState::down, face_size));
        const QImage hover = drawn(button_face(u"Burn"_s, FaceState::hover, face_size));
        const auto middle = [](const QImage& image) { return luminance(image.pixelColor(8, 13)); };
        QVERIFY(middle(down) < middle(up));
        QVERIFY(middle(up) < middle(hover));
    }

    void captions_are_whole_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::newRow("short") << u"Burn"_s;
        QTest::newRow("wider than the face") << u"Brenner Programm sofort starten"_s;
        QTest::newRow("several times the face") << QString(u'W').repeated(60);
        QTest::newRow("Korean") << u"현재 폴더의 파일을 모두 선택합니다"_s;
        QTest::newRow("with an ampersand") << u"Rock & Roll"_s;
        QTest::newRow("with markup") << u"<b>a</b>"_s;
    }

    void captions_are_whole()
    {
        QFETCH(const QString, caption);
        for (const FaceState state : {FaceState::up, FaceState::down, FaceState::hover}) {
            const QImage bare = drawn(button_face({}, state, face_size), 2);
            const QImage face = drawn(button_face(caption, state, face_size), 2);
            // The last letter in sight: without it the picture is another, and all ink lies inside the face.
            const QRect ink = difference(bare, face);
            QVERIFY(!ink.isEmpty());
            QVERIFY(face.rect().adjusted(8, 2, -8, -2).contains(ink));
            const QImage without_last = drawn(button_face(caption.chopped(1), state, face_size), 2);
            QVERIFY(without_last != face);
            QVERIFY(std::abs((ink.left() + ink.right() + 1) / 2.0 - face.width() / 2.0) < 6);
        }
    }

    void a_wide_caption_is_smaller()
    {
        const QImage bare = drawn(button_face({}, FaceState::up, face_size), 3);
        const QImage fits = drawn(button_face(u"MMM"_s, FaceState::up, face_size), 3);
        const QImage wide = drawn(button_face(QString(u'M').repeated(14), FaceState::up, face_size), 3);
        const QImage wider = drawn(button_face(QString(u'M').repeated(40), FaceState::up, face_size), 3);
        const int height = difference(bare, fits).height();
        const int less = difference(bare, wide).height();
        QVERIFY(less < height);
        QVERIFY(difference(bare, wider).height() < less);
    }

    void a_pressed_caption_gives_way_by_a_pixel()
    {
        const auto top = [](FaceState state) {
            return difference(drawn(button_face({}, state, face_size)), drawn(button_face(u"H"_s, state, face_size)))
                .top();
        };
        QCOMPARE(top(FaceState::down), top(FaceState::up) + 1);
        QCOMPARE(top(FaceState::hover), top(FaceState::up));
    }

    void signs_are_white_and_in_the_middle_data() { add_face_states(); }

    void signs_are_white_and_in_the_middle()
    {
        QFETCH(const FaceState, state);
        const QSize size(34, 26);
        const QImage face = drawn(sign_face(u":/icons/stop.svg"_s, state, size));
        QCOMPARE(face.pixelColor(17, 13), palette::on_accent);
        const QRect sign = difference(drawn(button_face({}, state, size)), face);
        const double moved = state == FaceState::down ? 1 : 0;
        QVERIFY(std::abs(QRectF(sign).center().x() - 17) <= 0.5);
        QVERIFY(std::abs(QRectF(sign).center().y() - 13 - moved) <= 0.5);
    }

    void labels_stand_on_the_ground_of_the_form()
    {
        const QImage label = drawn(label_face(u"Artist"_s, {64, 22}), 2, palette::panel);
        QImage ground(label.size(), label.format());
        ground.fill(palette::panel);
        const QRect ink = difference(label, ground);
        QVERIFY(!ink.isEmpty());
        QVERIFY(ink.left() < 6);
        QCOMPARE(label.pixelColor(label.width() - 1, label.height() - 1), palette::panel);
        const QImage wide = drawn(label_face(QString(u'W').repeated(40), {64, 22}), 2, palette::panel);
        QVERIFY(difference(wide, ground).width() > 120);
    }
};

QUILMO_UI_TEST(TestPictures)

#include "test_pictures.moc"
