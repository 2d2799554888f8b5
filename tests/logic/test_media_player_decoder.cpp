#include "heard_sound.h"
#include "platform/media_player/Decoder.h"
#include "platform/media_player/info_frame.h"
#include "sample_files.h"
#include "sample_tones.h"
#include "test_main.h"

#include <QFile>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString path = u"C:\\Music\\a.mp3"_s;
constexpr int frames = 60;
constexpr int left_step = 40;
constexpr int right_step = 60;
constexpr int gain = 206;
const std::atomic<bool> never = false;

Tone steady_tone(int, int channel)
{
    return {.step = channel == 0 ? left_step : right_step, .gain = gain};
}

/// A tone of its own for every frame.
Tone clock_tone(int frame, int channel)
{
    return {.step = 20 + frame + 100 * channel, .gain = gain};
}

ToneAudio plain()
{
    return {.frames = frames, .tone = steady_tone};
}

QByteArray with_info(const ToneAudio& audio, const ToneInfo& info)
{
    return tone_info_frame(audio, info) + tone_audio(audio);
}

} // namespace

class TestMediaPlayerDecoder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_rate_and_mode_plays_at_its_length_data()
    {
        QTest::addColumn<int>("rate");
        QTest::addColumn<int>("mode");
        for (const int rate : {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000}) {
            const auto row = [rate](const char* mode) -> QTestData& { return QTest::addRow("%d Hz, %s", rate, mode); };
            row("stereo") << rate << static_cast<int>(ToneMode::stereo);
            row("joint stereo") << rate << static_cast<int>(ToneMode::joint_stereo);
            row("dual channel") << rate << static_cast<int>(ToneMode::dual_channel);
            row("mono") << rate << static_cast<int>(ToneMode::mono);
        }
    }

    void every_rate_and_mode_plays_at_its_length()
    {
        QFETCH(const int, rate);
        QFETCH(const int, mode);
        ToneAudio audio = plain();
        audio.rate = rate;
        audio.mode = static_cast<ToneMode>(mode);
        audio.kilobits = {64};
        const TestDisk disk;
        disk.write(path, tone_audio(audio));
        const auto decoder = Decoder::open(path, never);
        QVERIFY(decoder != nullptr);
        QCOMPARE(decoder->rate(), rate);
        QCOMPARE(decoder->length(), std::int64_t{frames} * samples_per_frame(rate));
        check_tones(rest_of(*decoder), decoder->length(), audio.mode == ToneMode::mono ? left_step : right_step);
    }

    void every_kind_of_file_plays_at_its_length_data()
    {
        QTest::addColumn<QByteArray>("content");
        ToneAudio crc = plain();
        crc.has_crc = true;
        ToneAudio variable = plain();
        variable.kilobits = {64, 320, 128, 96};
        ToneAudio free_format = plain();
        free_format.free_bytes = 500;
        ToneAudio large_free_format = plain();
        large_free_format.free_bytes = 1440;
        const QByteArray audio = tone_audio(plain());
        const QByteArray tag = sample_tag({.title = "Title"});
        QTest::newRow("constant bit rate") << audio;
        QTest::newRow("with checksums") << tone_audio(crc);
        QTest::newRow("variable bit rate, header that tells frames")
            << with_info(variable, {.frames = frames, .bytes = 20000});
        QTest::newRow("constant bit rate, header that tells frames")
            << with_info(plain(), {.is_variable = false, .frames = frames});
        QTest::newRow("header of an encoder that tells its delay")
            << with_info(plain(), {.is_variable = false, .frames = frames, .delay = 576, .padding = 1000});
        QTest::newRow("header that doesn't tell frames") << with_info(variable, {.frames = 0, .bytes = 20000});
        QTest::newRow("header that tells more frames than any file of the size has")
            << with_info(plain(), {.frames = 2000000000});
        QTest::newRow("header behind an ID3v2 tag")
            << sample_id3v2(5000) + with_info(variable, {.frames = frames}) + tag;
        QTest::newRow("variable bit rate without header") << tone_audio(variable);
        QTest::newRow("free format") << tone_audio(free_format);
        QTest::newRow("free format, large frames") << tone_audio(large_free_format);
        QTest::newRow("ID3v2 tag in front") << sample_id3v2(4096) + audio;
        QTest::newRow("the shortest ID3v2 tag in front") << sample_id3v2(10) + audio;
        QTest::newRow("a large ID3v2 tag in front") << sample_id3v2(3000000) + audio;
        QTest::newRow("two ID3v2 tags in front") << sample_id3v2(300) + sample_id3v2(4096) + audio;
        QTest::newRow("ID3v1 tag behind") << audio + tag;
        QTest::newRow("both tags") << sample_id3v2(4096) + audio + tag;
        QTest::newRow("silent bytes in front") << QByteArray(100000, '\0') + audio;
        QTest::newRow("other bytes in front") << QByteArray(100000, 'x') + audio;
        QTest::newRow("other bytes behind") << audio + QByteArray(100000, 'x');
        QTest::newRow("a hole in the middle") << tone_audio({.frames = frames / 2, .tone = steady_tone}) +
                                                     QByteArray(100000, '\0') +
                                                     tone_audio({.frames = frames / 2, .tone = steady_tone});
        QTest::newRow("a part of a frame behind") << audio + audio.first(200);
    }

    void every_kind_of_file_plays_at_its_length()
    {
        QFETCH(const QByteArray, content);
        const TestDisk disk;
        disk.write(path, content);
        const auto decoder = Decoder::open(path, never);
        QVERIFY(decoder != nullptr);
        QCOMPARE(decoder->rate(), 44100);
        QCOMPARE(decoder->length(), std::int64_t{frames} * 1152);
        check_tones(rest_of(*decoder), decoder->length(), right_step);
    }

    void a_told_length_is_believed_data()
    {
        QTest::addColumn<int>("told");
        QTest::addColumn<int>("there");
        QTest::newRow("less than there is") << 10 << 60;
        QTest::newRow("more than there is") << 70 << 60;
        QTest::newRow("half of the file is missing") << 60 << 30;
    }

    void a_told_length_is_believed()
    {
        QFETCH(const int, told);
        QFETCH(const int, there);
        const TestDisk disk;
        disk.write(path, with_info({.frames = there}, {.frames = told}));
        const auto decoder = Decoder::open(path, never);
        QVERIFY(decoder != nullptr);
        QCOMPARE(decoder->length(), std::int64_t{told} * 1152);
        QCOMPARE(std::ssize(rest_of(*decoder)), std::ptrdiff_t{2} * there * 1152);
        QCOMPARE(decoder->real_length(), std::int64_t{there} * 1152);
    }

    void the_real_length_is_found_from_behind_the_end_too()
    {
        const TestDisk disk;
        disk.write(path, with_info({.frames = 30}, {.frames = frames}));
        const auto decoder = Decoder::open(path, never);
        QVERIFY(decoder != nullptr);
        decoder->seek(std::int64_t{50} * 1152);
        QVERIFY(rest_of(*decoder).empty());
        QCOMPARE(decoder->real_length(), std::int64_t{30} * 1152);
        decoder->seek(std::int64_t{29} * 1152);
        QCOMPARE(std::ssize(rest_of(*decoder)), std::ptrdiff_t{2} * 1152);
    }

    void a_seek_is_exact_to_the_sample_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<qint64>("sample");
        ToneAudio variable{.frames = 200, .kilobits = {64, 320, 96}, .tone = clock_tone};
        ToneAudio slow{.frames = 200, .rate = 22050, .kilobits = {48}, .mode = ToneMode::mono, .tone = clock_tone};
        const QByteArray told = with_info(variable, {.frames = 200});
        for (const qint64 sample : {0, 1, 1151, 1152, 1153, 50000, 100001, 114000}) {
            QTest::addRow("sample %lld of a counted file", sample) << tone_audio(variable) << sample;
            QTest::addRow("sample %lld of a told file", sample) << told << sample;
            QTest::addRow("sample %lld of a mono file", sample) << tone_audio(slow) << sample;
        }
    }

    void a_seek_is_exact_to_the_sample()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const qint64, sample);
        const TestDisk disk;
        disk.write(path, content);
        const Sound whole = sound_of(path);
        const auto decoder = Decoder::open(path, never);
        QVERIFY(decoder != nullptr);
        decoder->seek(sample);
        QVERIFY(same_sound(rest_of(*decoder), cut(whole, sample)));
        decoder->seek(sample / 2); // and back again
        QVERIFY(same_sound(cut(rest_of(*decoder), 0, 100), cut(whole, sample / 2, 100)));
    }

    void a_seek_to_the_end_gives_nothing_more()
    {
        const TestDisk disk;
        disk.write(path, tone_audio(plain()));
        const auto decoder = Decoder::open(path, never);
        decoder->seek(decoder->length() - 1);
        QCOMPARE(std::ssize(rest_of(*decoder)), std::ptrdiff_t{2});
        decoder->seek(decoder->length());
        QVERIFY(rest_of(*decoder).empty());
    }

    void a_file_without_sound_is_refused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << ""_ba;
        QTest::newRow("text") << "This is no music at all.\n"_ba.repeated(1000);
        QTest::newRow("only zeros") << QByteArray(100000, '\0');
        QTest::newRow("only sync bits") << QByteArray(100000, '\xff');
        QTest::newRow("only a tag") << sample_id3v2(4096) + sample_tag({.title = "Title"});
        QTest::newRow("a tag that ends too early") << sample_id3v2(4096).first(100);
        QTest::newRow("a part of a frame") << tone_audio({.frames = 1}).first(300);
        QTest::newRow("a header alone") << QByteArray::fromHex("fffb9064");
    }

    void a_file_without_sound_is_refused()
    {
        QFETCH(const QByteArray, content);
        const TestDisk disk;
        disk.write(path, content);
        QVERIFY(Decoder::open(path, never) == nullptr);
        QCOMPARE(open_descriptors(disk.native(path)), 0);
    }

    void what_is_no_file_is_refused_at_once_data()
    {
        QTest::addColumn<QString>("what");
        QTest::newRow("no such file") << u"C:\\none.mp3"_s;
        QTest::newRow("no such drive") << u"Q:\\none.mp3"_s;
        QTest::newRow("no path") << u"none.mp3"_s;
        QTest::newRow("nothing") << QString();
        QTest::newRow("folder") << u"C:\\Folder.mp3"_s;
        QTest::newRow("FIFO") << u"C:\\fifo.mp3"_s;
        QTest::newRow("device") << u"C:\\zero.mp3"_s;
        QTest::newRow("link to nowhere") << u"C:\\link.mp3"_s;
    }

    void what_is_no_file_is_refused_at_once()
    {
        QFETCH(const QString, what);
        const TestDisk disk;
        disk.make_folder(u"C:\\Folder.mp3"_s);
        QCOMPARE(mkfifo(disk.native(u"C:\\fifo.mp3"_s).constData(), 0600), 0);
        QCOMPARE(symlink("/dev/zero", disk.native(u"C:\\zero.mp3"_s).constData()), 0);
        QCOMPARE(symlink("/nowhere", disk.native(u"C:\\link.mp3"_s).constData()), 0);
        QVERIFY(Decoder::open(what, never) == nullptr);
    }

    void a_cancelled_file_is_given_up()
    {
        const TestDisk disk;
        disk.write(path, tone_audio(plain()));
        std::atomic<bool> cancelled = true;
        QVERIFY(Decoder::open(path, cancelled) == nullptr);
        cancelled = false;
        const auto decoder = Decoder::open(path, cancelled);
        QVERIFY(decoder != nullptr);
        cancelled = true;
        QVERIFY(rest_of(*decoder).size() < std::size_t{4} * 2304);
    }

    void a_file_of_several_rates_keeps_the_first()
    {
        const TestDisk disk;
        disk.write(path, tone_audio(plain()) + tone_audio({.frames = 10, .rate = 48000, .tone = steady_tone}));
        const auto decoder = Decoder::open(path, never);
        QVERIFY(decoder != nullptr);
        QCOMPARE(decoder->rate(), 44100);
        QVERIFY(std::ssize(rest_of(*decoder)) > std::ptrdiff_t{2} * frames * 1152);
    }

    void the_first_frame_tells_by_its_mark_data()
    {
        QTest::addColumn<quint32>("header");
        QTest::addColumn<int>("place");
        QTest::addColumn<bool>("is_there");
        QTest::newRow("MPEG 1 stereo") << 0xFFFB9064U << 32 << true;
        QTest::newRow("MPEG 1 mono") << 0xFFFB90C4U << 17 << true;
        QTest::newRow("MPEG 2 stereo") << 0xFFF39064U << 17 << true;
        QTest::newRow("MPEG 2 mono") << 0xFFF390C4U << 9 << true;
        QTest::newRow("MPEG 2.5 stereo") << 0xFFE39064U << 17 << true;
        QTest::newRow("MPEG 2.5 mono") << 0xFFE390C4U << 9 << true;
        QTest::newRow("at another place") << 0xFFFB9064U << 36 << false;
        QTest::newRow("another layer") << 0xFFFD9064U << 32 << false;
    }

    void the_first_frame_tells_by_its_mark()
    {
        QFETCH(const quint32, header);
        QFETCH(const int, place);
        QFETCH(const bool, is_there);
        const std::vector<unsigned char> told{'X', 'i', 'n', 'g', 0, 0, 0, 9, 0x01, 0x02, 0x03, 0x04};
        std::vector<unsigned char> body(static_cast<std::size_t>(place));
        body.insert(body.end(), told.begin(), told.end());
        QCOMPARE(read_info_frame(header, body).is_there, is_there);
        QCOMPARE(read_info_frame(header, body).frames, std::int64_t{is_there ? 0x01020304 : 0});
        body.pop_back();
        QVERIFY(!read_info_frame(header, body).is_there);
    }

private:
    /// Verifies that `sound` has so many samples and, in its middle, the tones of both sides.
    static void check_tones(const Sound& sound, std::int64_t length, int right)
    {
        QCOMPARE(std::ssize(sound), 2 * length);
        const double peak = tone_amplitude(gain);
        for (const std::ptrdiff_t place : {length / 5, length - 4000}) {
            QVERIFY(std::abs(tone_peak(sound, place, 0, left_step) - peak) < peak / 100);
            QVERIFY(std::abs(tone_peak(sound, place, 1, right) - peak) < peak / 100);
        }
    }
};

QUILMO_LOGIC_TEST(TestMediaPlayerDecoder)

#include "test_media_player_decoder.moc"
