#include "convert/BatchConversion.h"
#include "core/mod_of_grobal_var.h"
#include "player/Transport.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "test_main.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Notes what a converter asks of the player, and what stood on disk at that moment.
class NotedTransport : public Transport
{
public:
    explicit NotedTransport(const TestDisk& disk) : disk_(disk) {}

    void release() override { note(u"release"_s); }
    void mp3_play(const QString& name) override
    {
        note(u"play "_s + name);
        shared.is_playing = 1;
        shared.playing_mp3_path = shared.selected_mp3_path;
    }
    void mp3_stop() override
    {
        note(u"stop"_s);
        shared.is_playing = 0;
    }
    void PlayBtn_Click() override { note(u"play button"_s); }
    void StopBtn_Click() override { note(u"stop button"_s); }

    QString watched; ///< path whose being there is noted with each call
    QStringList calls;

private:
    void note(const QString& call)
    {
        calls.append(call + (disk_.exists(watched) ? u" (old name)"_s : u" (new name)"_s));
    }

    const TestDisk& disk_;
};

QByteArray tagged(const QByteArray& artist, const QByteArray& title, unsigned char genre = 17)
{
    return sample_audio({.frames = 2}) +
           sample_tag({.title = title, .artist = artist, .album = "Album", .year = "1999", .genre = genre});
}

QByteArray tag_of(const QByteArray& content)
{
    return content.right(128);
}

} // namespace

class TestBatchConversion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void composes_from_the_tag_data();
    void composes_from_the_tag();
    void renames_file_and_record();
    void without_a_tag_the_last_texts_serve();
    void a_name_that_is_too_long_leaves_all_as_it_was();
    void a_tag_that_cleans_to_nothing_leaves_all_as_it_was();
    void an_existing_target_is_never_replaced();
    void of_two_files_with_one_new_name_the_second_stays();
    void unmarked_files_stay_untouched();
    void tags_of_fif_names_are_rewritten_data();
    void tags_of_fif_names_are_rewritten();
    void the_file_in_the_player_is_released_first_data();
    void the_file_in_the_player_is_released_first();
    void a_file_that_keeps_its_name_comes_back_into_the_player();
    void a_refused_name_still_goes_to_the_player();
    void the_tag_of_the_fif_file_in_the_player_is_left_alone();
    void the_caller_is_told_between_files();

private:
    void list(const QString& name, const QByteArray& content);

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    std::unique_ptr<NotedTransport> transport_;
    std::unique_ptr<BatchConversion> batch_;
    QString folder_;
};

void TestBatchConversion::init()
{
    disk_ = std::make_unique<TestDisk>();
    messages_ = std::make_unique<NotedMessages>();
    transport_ = std::make_unique<NotedTransport>(*disk_);
    batch_ = std::make_unique<BatchConversion>(*transport_);
    folder_ = disk_->make_folder(u"C:\\Music"_s);
    shared.current_folder = folder_;
}

void TestBatchConversion::cleanup()
{
    batch_.reset();
    transport_.reset();
    messages_.reset();
    disk_.reset();
}

void TestBatchConversion::list(const QString& name, const QByteArray& content)
{
    disk_->write(folder_ + name, content);
    QCOMPARE(add_to_final_list(name, folder_, folder_ + name, static_cast<i32>(content.size()), {}, {}), added);
    set_convert_mark(name, 1);
}

void TestBatchConversion::composes_from_the_tag_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("artist");
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<int>("genre");
    QTest::addColumn<QString>("name");

    const QByteArray korean = korean_bytes(u"가나다"_s);
    QTest::newRow("type 1 carries the genre") << 1 << "Ann"_ba
                                              << "Sea"_ba << 17 << u"[Ann][Sea][Rock].mp3"_s;
    QTest::newRow("type 2 carries none") << 2 << "Ann"_ba
                                         << "Sea"_ba << 17 << u"[Ann][Sea].mp3"_s;
    QTest::newRow("type 3 in round brackets") << 3 << "Ann"_ba
                                              << "Sea"_ba << 17 << u"(Ann)(Sea)(Rock).mp3"_s;
    QTest::newRow("type 4 in round brackets") << 4 << "Ann"_ba
                                              << "Sea"_ba << 17 << u"(Ann)(Sea).mp3"_s;
    QTest::newRow("type 5 with dashes") << 5 << "Ann"_ba
                                        << "Sea"_ba << 17 << u"Ann-Sea-Rock.mp3"_s;
    QTest::newRow("type 6 with a dash") << 6 << "Ann"_ba
                                        << "Sea"_ba << 17 << u"Ann-Sea.mp3"_s;
    QTest::newRow("a genre with a slash gets its underscore") << 1 << "Ann"_ba
                                                              << "Sea"_ba << 81 << u"[Ann][Sea][Folk_Rock].mp3"_s;
    QTest::newRow("a genre without a name leaves two fields") << 1 << "Ann"_ba
                                                              << "Sea"_ba << 200 << u"[Ann][Sea].mp3"_s;
    QTest::newRow("blanks go before the cleaning") << 1 << "  Ann? "_ba
                                                   << " Sea"_ba << 17 << u"[Ann][Sea][Rock].mp3"_s;
    QTest::newRow("what stands behind a NUL is dropped")
        << 2 << "Ann\0x"_ba.replace('x', "rest") << "Sea"_ba << 17 << u"[Ann][Sea].mp3"_s;
    QTest::newRow("Korean text") << 2 << korean << "Sea"_ba << 17 << u"[가나다][Sea].mp3"_s;
    QTest::newRow("Western text") << 2 << "Bj\xf6rk"_ba
                                  << "Caf\xe9"_ba << 17 << u"[Björk][Café].mp3"_s;
}

void TestBatchConversion::composes_from_the_tag()
{
    QFETCH(int, type);
    QFETCH(QByteArray, artist);
    QFETCH(QByteArray, title);
    QFETCH(int, genre);
    QFETCH(QString, name);

    shared.fif_type = static_cast<i16>(type);
    const QByteArray content = tagged(artist, title, static_cast<unsigned char>(genre));
    disk_->write(folder_ + u"a.mp3"_s, content);
    QCOMPARE(batch_->rename_to_fif(folder_, u"a.mp3"_s, 0), name);
    QCOMPARE(disk_->read(folder_ + u"a.mp3"_s), content);
    QVERIFY(messages_->take().isEmpty());
}

void TestBatchConversion::renames_file_and_record()
{
    const QByteArray content = tagged("Ann", "Sea");
    list(u"a.mp3"_s, content);
    QCOMPARE(batch_->rename_to_fif(folder_, u"a.mp3"_s, 1), u"[Ann][Sea][Rock].mp3"_s);
    QVERIFY(!disk_->exists(folder_ + u"a.mp3"_s));
    QCOMPARE(disk_->read(folder_ + u"[Ann][Sea][Rock].mp3"_s), content);
    const FinalListEntry& record = shared.final_list[0];
    QCOMPARE(record.name, u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(record.full_path, folder_ + u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(record.kind, i16(1));
}

void TestBatchConversion::without_a_tag_the_last_texts_serve()
{
    disk_->write(folder_ + u"a.mp3"_s, tagged("Ann", "Sea"));
    disk_->write(folder_ + u"b.mp3"_s, sample_audio());
    QCOMPARE(batch_->rename_to_fif(folder_, u"b.mp3"_s, 0), QString());
    batch_->rename_to_fif(folder_, u"a.mp3"_s, 0);
    QCOMPARE(batch_->rename_to_fif(folder_, u"b.mp3"_s, 0), u"[Ann][Sea][Rock].mp3"_s);
}

void TestBatchConversion::a_name_that_is_too_long_leaves_all_as_it_was()
{
    shared.fif_type = 1;
    // 30 bytes of artist and the longest genre, 22 bytes, leave no room: 52 bytes where 50 are the limit.
    const QByteArray content = tagged(QByteArray(30, 'A'), "T23456789", 140);
    list(u"a.mp3"_s, content);
    batch_->Change_FIF([] {});
    QCOMPARE(messages_->take(), QStringList{u"Unable to Convert! Artist's name is too long"_s});
    QCOMPARE(disk_->read(folder_ + u"a.mp3"_s), content);
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
    QCOMPARE(shared.final_list[0].kind, i16(2));
}

void TestBatchConversion::a_tag_that_cleans_to_nothing_leaves_all_as_it_was()
{
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    const QByteArray blanked = tagged("???", "Sea");
    disk_->write(folder_ + u"a.mp3"_s, blanked);
    batch_->Change_FIF([] {});
    QVERIFY(messages_->take().isEmpty());
    QCOMPARE(disk_->read(folder_ + u"a.mp3"_s), blanked);
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
}

void TestBatchConversion::an_existing_target_is_never_replaced()
{
    const QByteArray content = tagged("Ann", "Sea");
    const QByteArray other = sample_audio({.frames = 5});
    list(u"a.mp3"_s, content);
    disk_->write(folder_ + u"[Ann][Sea][Rock].mp3"_s, other);
    batch_->Change_FIF([] {});
    QVERIFY(messages_->take().isEmpty());
    QCOMPARE(disk_->read(folder_ + u"a.mp3"_s), content);
    QCOMPARE(disk_->read(folder_ + u"[Ann][Sea][Rock].mp3"_s), other);
    QCOMPARE(shared.final_list[0].name, u"[Ann][Sea][Rock].mp3"_s);
}

void TestBatchConversion::of_two_files_with_one_new_name_the_second_stays()
{
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    const QByteArray second = tagged("Ann", "Sea");
    list(u"b.mp3"_s, second);
    batch_->Change_FIF([] {});
    QCOMPARE(messages_->take(), QStringList{u"[Ann][Sea][Rock].mp3 already exists in MP3 File List"_s});
    QVERIFY(!disk_->exists(folder_ + u"a.mp3"_s));
    QVERIFY(disk_->exists(folder_ + u"[Ann][Sea][Rock].mp3"_s));
    QCOMPARE(disk_->read(folder_ + u"b.mp3"_s), second);
    QCOMPARE(shared.final_list[1].name, u"b.mp3"_s);
    QCOMPARE(shared.final_list[1].kind, i16(2));
}

void TestBatchConversion::unmarked_files_stay_untouched()
{
    const QByteArray content = tagged("Ann", "Sea");
    list(u"a.mp3"_s, content);
    set_convert_mark(u"a.mp3"_s, 0);
    batch_->Change_FIF([] {});
    QCOMPARE(disk_->read(folder_ + u"a.mp3"_s), content);
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
}

void TestBatchConversion::tags_of_fif_names_are_rewritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("artist");
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<int>("genre");

    QTest::newRow("three fields in square brackets") << u"[New][Song][Hip_Hop].mp3"_s << "New"_ba
                                                     << "Song"_ba << 7;
    QTest::newRow("two fields keep the tag's genre") << u"[New][Song].mp3"_s << "New"_ba
                                                     << "Song"_ba << 200;
    QTest::newRow("round brackets") << u"(New)(Song)(Blues).mp3"_s << "New"_ba
                                    << "Song"_ba << 0;
    QTest::newRow("dashes") << u"New-Song-Jazz.mp3"_s << "New"_ba
                            << "Song"_ba << 8;
    QTest::newRow("an unknown genre keeps the tag's") << u"[New][Song][Nonsense].mp3"_s << "New"_ba
                                                      << "Song"_ba << 200;
}

void TestBatchConversion::tags_of_fif_names_are_rewritten()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, artist);
    QFETCH(QByteArray, title);
    QFETCH(int, genre);

    const QByteArray content = tagged("Old", "Old title", 200);
    list(name, content);
    batch_->Change_FIF([] {});
    const SampleTag expected = {.title = title.leftJustified(30, ' '),
                                .artist = artist.leftJustified(30, ' '),
                                .album = "Album",
                                .year = "1999",
                                .genre = static_cast<unsigned char>(genre)};
    const QByteArray after = disk_->read(folder_ + name);
    QCOMPARE(tag_of(after), sample_tag(expected));
    QCOMPARE(after.chopped(128), content.chopped(128));
    QVERIFY(messages_->take().isEmpty());
}

void TestBatchConversion::the_file_in_the_player_is_released_first_data()
{
    QTest::addColumn<bool>("playing");
    QTest::addColumn<QStringList>("calls");

    const QStringList playing = {u"release (old name)"_s, u"play [Ann][Sea][Rock].mp3 (new name)"_s};
    QTest::newRow("a playing file plays on") << true << playing;
    QTest::newRow("a stopped file stands stopped") << false << playing + QStringList{u"stop (new name)"_s};
}

void TestBatchConversion::the_file_in_the_player_is_released_first()
{
    QFETCH(bool, playing);
    QFETCH(QStringList, calls);

    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    shared.playing_mp3_path = transport_->watched = folder_ + u"a.mp3"_s;
    shared.is_playing = playing ? 1 : 0;
    batch_->Change_FIF([] {});
    QCOMPARE(transport_->calls, calls);
    QCOMPARE(shared.is_playing, i16(playing ? 1 : 0));
    QCOMPARE(shared.selected_mp3_name, u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(shared.selected_mp3_path, folder_ + u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(shared.selected_mp3_full, shared.selected_mp3_path);
}

void TestBatchConversion::a_file_that_keeps_its_name_comes_back_into_the_player()
{
    list(u"a.mp3"_s, tagged(QByteArray(30, 'A'), "T23456789", 140));
    shared.playing_mp3_path = transport_->watched = folder_ + u"a.mp3"_s;
    shared.is_playing = 1;
    batch_->Change_FIF([] {});
    QCOMPARE(transport_->calls, (QStringList{u"release (old name)"_s, u"play a.mp3 (old name)"_s}));
    QCOMPARE(shared.selected_mp3_path, folder_ + u"a.mp3"_s);
}

void TestBatchConversion::a_refused_name_still_goes_to_the_player()
{
    list(u"[Ann][Sea][Rock].mp3"_s, tagged("Ann", "Sea"));
    const QByteArray content = tagged("Ann", "Sea");
    list(u"a.mp3"_s, content);
    shared.playing_mp3_path = transport_->watched = folder_ + u"a.mp3"_s;
    batch_->Change_FIF([] {});
    QCOMPARE(messages_->take(), QStringList{u"[Ann][Sea][Rock].mp3 already exists in MP3 File List"_s});
    QCOMPARE(transport_->calls,
             (QStringList{u"release (old name)"_s, u"play [Ann][Sea][Rock].mp3 (old name)"_s, u"stop (old name)"_s}));
    QCOMPARE(shared.selected_mp3_path, folder_ + u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(disk_->read(folder_ + u"a.mp3"_s), content);
    QCOMPARE(shared.final_list[1].name, u"a.mp3"_s);
}

void TestBatchConversion::the_caller_is_told_between_files()
{
    list(u"[New][Song].mp3"_s, tagged("Old", "Old title"));
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    list(u"bare.mp3"_s, sample_audio());
    int told = 0;
    batch_->Change_FIF([&told] { ++told; });
    QCOMPARE(told, 2); // one tag rewritten, one file renamed
}

void TestBatchConversion::the_tag_of_the_fif_file_in_the_player_is_left_alone()
{
    const QByteArray content = tagged("Old", "Old title");
    list(u"[New][Song].mp3"_s, content);
    shared.playing_mp3_path = folder_ + u"[New][Song].mp3"_s;
    batch_->Change_FIF([] {});
    QCOMPARE(disk_->read(folder_ + u"[New][Song].mp3"_s), content);
    QVERIFY(transport_->calls.isEmpty());
}

QUILMO_UI_TEST(TestBatchConversion)
#include "test_batch_conversion.moc"
