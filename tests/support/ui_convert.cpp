#include "ui_convert.h"

#include "core/mod_of_grobal_var.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/TextBox.h"

#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

void start()
{
    NotedTransport::load(shared.selected_mp3_path, true);
}

QByteArray without_filling(QByteArray field)
{
    while (field.endsWith(' ') || field.endsWith('\0'))
        field.chop(1);
    return field;
}

} // namespace

void NotedTransport::release()
{
    calls_.append(u"release"_s);
    if (on_release)
        on_release();
}

void NotedTransport::mp3_play(const QString& name)
{
    calls_.append(u"play %1 as %2"_s.arg(shared.selected_mp3_path, name));
    start();
}

void NotedTransport::mp3_stop()
{
    calls_.append(u"stop"_s);
    shared.is_playing = 0;
}

void NotedTransport::PlayBtn_Click()
{
    calls_.append(u"PlayBtn "_s + shared.selected_mp3_path);
    start();
}

void NotedTransport::StopBtn_Click()
{
    calls_.append(u"StopBtn"_s);
    shared.is_playing = 0;
}

QStringList NotedTransport::take()
{
    return std::exchange(calls_, {});
}

void NotedTransport::load(const QString& path, bool playing)
{
    shared.playing_mp3_path = path;
    shared.is_playing = playing ? 1 : 0;
}

char* toString(const TagTexts& tag)
{
    return QTest::toString(tag.artist + " / " + tag.title + " / " + QByteArray::number(tag.genre));
}

TagTexts tag_in(const QByteArray& content)
{
    const QByteArray block = content.right(128);
    if (block.size() < 128 || !block.startsWith("TAG"))
        return {};
    return {.artist = without_filling(block.mid(33, 30)),
            .title = without_filling(block.mid(3, 30)),
            .genre = static_cast<unsigned char>(block.back())};
}

void type_into(TextBox& box, const QString& text)
{
    QTest::mouseClick(&box, Qt::LeftButton);
    QTest::keySequence(&box, QKeySequence::SelectAll);
    QTest::keyClick(&box, Qt::Key_Delete);
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, QString(character), Qt::NoModifier);
    QCOMPARE(box.Text(), text);
}

void pick_genre(ComboBox& box, const QString& beginning)
{
    box.setFocus();
    QTest::keyClicks(&box, beginning);
}
