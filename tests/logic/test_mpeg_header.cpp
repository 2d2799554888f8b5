#include "test_main.h"

#include "mp3/mpeg_header.h"

#include <QTest>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// 128 kbit/s, 44100 Hz, joint stereo, no CRC, original.
const QByteArray usual_header = QByteArray::fromHex("fffb9064");

const std::array<std::array<int, 15>, 3> rates_by_layer{{
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
}};
constexpr std::array<int, 4> hz_by_index{44100, 48000, 32000, 0};

/// `content` as the beginning of a file of `length` bytes, 0 for no more than the content.
HeaderAnalysis analysed(const QByteArray& content, qint64 length = 0, HeaderAnalysis analysis = {})
{
    analysis.facts = {};
    const QByteArray start = content.left(analysed_bytes);
    analyse_header(std::span(start.constData(), static_cast<std::size_t>(start.size())),
                   length == 0 ? content.size() : length, analysis);
    return analysis;
}

/// `header` at `position`, counted from 1, in a file of 6000 bytes.
QByteArray file_with(const QByteArray& header, int position)
{
    return QByteArray(6000, '\0').replace(position - 1, header.size(), header);
}

/// A file without a frame whose first three bytes make a header of any layer.
QByteArray file_without_frame(int layer_bits, int rate_index, int hz_index)
{
    QByteArray content(200, '\0');
    content[0] = '\x80';
    content[1] = static_cast<char>(0xF9 | (layer_bits << 1));
    content[2] = static_cast<char>((rate_index << 4) | (hz_index << 2));
    return content;
}

ByteSlots slots_of(const QByteArray& four_bytes)
{
    ByteSlots bytes{};
    std::ranges::copy(four_bytes, bytes.begin() + 1);
    return bytes;
}

BitText bits_of(const QByteArray& text)
{
    return {.number = text.toUInt(nullptr, 2), .size = static_cast<int>(text.size())};
}

} // namespace

class TestMpegHeader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bits_are_text_without_leading_zeros_data();
    void bits_are_text_without_leading_zeros();
    void text_means_a_number_data();
    void text_means_a_number();
    void a_number_beyond_31_bits_overflows();
    void the_usual_header_gives_its_facts();
    void the_first_frame_is_found_data();
    void the_first_frame_is_found();
    void a_later_pair_is_taken_behind_other_syncs();
    void a_file_without_a_frame_is_made_up_of_its_first_bytes_data();
    void a_file_without_a_frame_is_made_up_of_its_first_bytes();
    void every_mode_and_emphasis();
    void every_single_bit_data();
    void every_single_bit();
    void padding_changes_nothing();
    void every_bit_rate_and_sampling_rate_of_a_frame();
    void every_bit_rate_of_every_layer_without_a_frame();
    void layer_1_frame_lengths_data();
    void layer_1_frame_lengths();
    void a_header_without_layer_ends_at_its_bit_rate();
    void seconds_and_frames_data();
    void seconds_and_frames();
    void without_sampling_rate_the_frame_length_of_before_counts();
    void a_variable_bit_rate_counts_as_the_first_frames();
    void free_format_counts_frames_backwards_data();
    void free_format_counts_frames_backwards();
    void the_number_behind_the_frame_is_provisional_data();
    void the_number_behind_the_frame_is_provisional();
    void a_frame_at_the_very_end_has_zeros_behind_it();
    void InfoString_lists_the_facts();
    void InfoString_outlives_a_file_without_frame();
};

void TestMpegHeader::bits_are_text_without_leading_zeros_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("bits");
    QTest::newRow("zeros") << QByteArray::fromHex("00000000") << QByteArray();
    QTest::newRow("a frame header") << usual_header << QByteArray("11111111111110111001000001100100");
    QTest::newRow("three bytes behind a zero")
        << QByteArray::fromHex("00800001") << QByteArray("100000000000000000000001");
    QTest::newRow("a small number") << QByteArray::fromHex("00000005") << QByteArray("101");
    QTest::newRow("zeros behind a bit stay")
        << QByteArray::fromHex("01000000") << QByteArray("1") + QByteArray(24, '0');
}

void TestMpegHeader::bits_are_text_without_leading_zeros()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QByteArray, bits);
    ByteSlots slots = slots_of(bytes);
    slots[0] = 7;
    const BitText number = byte_to_bit(slots);
    QCOMPARE(number.number, bits_of(bits).number);
    QCOMPARE(number.size, bits_of(bits).size);
    QCOMPARE(slots, (ByteSlots{7, 0, 0, 0, 0}));
}

void TestMpegHeader::text_means_a_number_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<i32>("number");
    QTest::newRow("no text") << QByteArray() << 0;
    QTest::newRow("0") << QByteArray("0") << 0;
    QTest::newRow("1") << QByteArray("1") << 1;
    QTest::newRow("1101") << QByteArray("1101") << 13;
    QTest::newRow("leading zeros") << QByteArray("0010") << 2;
    QTest::newRow("31 bits") << QByteArray(31, '1') << 2147483647;
    QTest::newRow("32 characters with a zero before") << '0' + QByteArray(31, '1') << 2147483647;
}

void TestMpegHeader::text_means_a_number()
{
    QFETCH(const QByteArray, text);
    QTEST(bin_to_dec(bits_of(text)), "number");
}

void TestMpegHeader::a_number_beyond_31_bits_overflows()
{
    QVERIFY_THROWS_EXCEPTION(RunTimeError, bin_to_dec(bits_of('1' + QByteArray(31, '0'))));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, bin_to_dec(bits_of(QByteArray(32, '1'))));
}

void TestMpegHeader::the_usual_header_gives_its_facts()
{
    const HeaderAnalysis analysis = analysed(usual_header, 4'000'000);
    const MpegFacts& facts = analysis.facts;
    QCOMPARE(facts.FileBytes, 4'000'000);
    QCOMPARE(int{facts.MpegVersion}, 1);
    QCOMPARE(int{facts.LayerVersion}, 3);
    QCOMPARE(int{facts.Kbits}, 128);
    QCOMPARE(facts.Hz, 44100);
    QCOMPARE(facts.Mode, u"Joint Stereo"_s);
    QCOMPARE(int{facts.Channels}, 2);
    QCOMPARE(facts.PrivateBit, u"No"_s);
    QCOMPARE(facts.CRCs, u"No"_s);
    QCOMPARE(facts.Copyrighted, u"No"_s);
    QCOMPARE(facts.Original, u"Yes"_s);
    QCOMPARE(facts.Emphasis, u"None"_s);
    QCOMPARE(analysis.FrameLengthInBytes, 417);
    QCOMPARE(int{analysis.Pad}, 0);
    QCOMPARE(int{facts.Seconds}, 250);
    QCOMPARE(facts.Frames, 9592);
}

void TestMpegHeader::the_first_frame_is_found_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("found");
    const QByteArray with_crc = QByteArray::fromHex("fffa9064");
    QTest::newRow("at the beginning") << usual_header << 1 << true;
    QTest::newRow("with CRC") << with_crc << 1 << true;
    QTest::newRow("behind other data") << usual_header << 700 << true;
    QTest::newRow("at 4999") << usual_header << 4999 << true;
    QTest::newRow("at 5000, its second byte at 5001") << usual_header << 5000 << true;
    QTest::newRow("at 5001") << usual_header << 5001 << false;
    QTest::newRow("behind other bytes 0xFF") << QByteArray("\xFF\xFF\xFF") + usual_header << 90 << true;
    QTest::newRow("MPEG-2") << QByteArray::fromHex("fff39064") << 1 << false;
    QTest::newRow("MPEG-1 Layer II") << QByteArray::fromHex("fffd9064") << 1 << false;
    QTest::newRow("MPEG-1 Layer II with CRC") << QByteArray::fromHex("fffc9064") << 1 << false;
    QTest::newRow("MPEG-1 Layer I") << QByteArray::fromHex("ffff9064") << 1 << false;
    QTest::newRow("MPEG-2.5") << QByteArray::fromHex("ffe39064") << 1 << false;
}

void TestMpegHeader::the_first_frame_is_found()
{
    QFETCH(const QByteArray, header);
    QFETCH(const int, position);
    QFETCH(const bool, found);
    const MpegFacts facts = analysed(file_with(header, position)).facts;
    QCOMPARE(facts.Kbits == 128 && facts.Hz == 44100 && facts.MpegVersion == 1, found);
    QCOMPARE(facts.FileBytes, 6000);
}

void TestMpegHeader::a_later_pair_is_taken_behind_other_syncs()
{
    QByteArray content = file_with(QByteArray::fromHex("fffd9064"), 1);
    content.replace(2000, 4, QByteArray::fromHex("fffaa4c0"));
    const MpegFacts facts = analysed(content).facts;
    QCOMPARE(int{facts.LayerVersion}, 3);
    QCOMPARE(int{facts.Kbits}, 160);
    QCOMPARE(facts.Hz, 48000);
    QCOMPARE(facts.CRCs, u"Yes"_s);
    QCOMPARE(int{facts.Channels}, 1);
}

void TestMpegHeader::a_file_without_a_frame_is_made_up_of_its_first_bytes_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("layer");
    QTest::newRow("an empty file") << QByteArray() << 25 << 0;
    QTest::newRow("one byte") << QByteArray("I") << 25 << 0;
    QTest::newRow("zeros") << QByteArray(300, '\0') << 25 << 0;
    QTest::newRow("a block of another tag") << QByteArray("ID3\3").leftJustified(400, '\0') << 0 << 0;
    QTest::newRow("a block of another tag before a frame at 5001")
        << QByteArray("ID3\3").leftJustified(5000, '\0') + usual_header << 0 << 0;
    QTest::newRow("a tag of the end at the beginning") << QByteArray("TAG").leftJustified(128, ' ') << 25 << 3;
    QTest::newRow("a RIFF file") << QByteArray("RIFF").leftJustified(128, '\0') << 2 << 3;
    QTest::newRow("a header of MPEG-2 behind a zero") << QByteArray::fromHex("80f39064") << 2 << 3;
    QTest::newRow("a header of MPEG-2.5 behind a zero") << QByteArray::fromHex("80e39064") << 25 << 3;
    QTest::newRow("a header of the reserved version") << QByteArray::fromHex("80eb9064") << 0 << 3;
}

void TestMpegHeader::a_file_without_a_frame_is_made_up_of_its_first_bytes()
{
    QFETCH(const QByteArray, start);
    const HeaderAnalysis analysis = analysed(start);
    const MpegFacts& facts = analysis.facts;
    QTEST(int{facts.MpegVersion}, "version");
    QTEST(int{facts.LayerVersion}, "layer");
    QCOMPARE(facts.FileBytes, start.size());
    QCOMPARE(facts.Mode, u"Stereo"_s);
    QCOMPARE(facts.Emphasis, u"None"_s);
    QCOMPARE(int{facts.Channels}, 2);
    QCOMPARE(facts.Hz, 0);
    QCOMPARE(int{facts.Kbits}, 0);
    QCOMPARE(int{facts.Seconds}, 0);
    QCOMPARE(facts.CRCs, QString());
    QCOMPARE(analysis.InfoString(), QString());
}

void TestMpegHeader::every_mode_and_emphasis()
{
    const QStringList modes{u"Stereo"_s, u"Joint Stereo"_s, u"Dual Channel"_s, u"Single Channel"_s};
    const QStringList emphases{u"None"_s, u"50/15"_s, u"Reserved"_s, u"CCITT J 17"_s};
    for (int mode = 0; mode < 4; ++mode) {
        for (int emphasis = 0; emphasis < 4; ++emphasis) {
            QByteArray header = usual_header;
            header[3] = static_cast<char>((mode << 6) | emphasis);
            const MpegFacts facts = analysed(header).facts;
            QCOMPARE(facts.Mode, modes[mode]);
            QCOMPARE(int{facts.Channels}, mode == 3 ? 1 : 2);
            QCOMPARE(facts.Emphasis, emphases[emphasis]);
        }
    }
}

void TestMpegHeader::every_single_bit_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QStringList>("private_crcs_copyrighted_original");
    QTest::newRow("none set") << QByteArray::fromHex("fffa9000") << QStringList{u"No"_s, u"Yes"_s, u"No"_s, u"No"_s};
    QTest::newRow("protection") << QByteArray::fromHex("fffb9000") << QStringList{u"No"_s, u"No"_s, u"No"_s, u"No"_s};
    QTest::newRow("private") << QByteArray::fromHex("fffa9100") << QStringList{u"Yes"_s, u"Yes"_s, u"No"_s, u"No"_s};
    QTest::newRow("copyright") << QByteArray::fromHex("fffa9008") << QStringList{u"No"_s, u"Yes"_s, u"Yes"_s, u"No"_s};
    QTest::newRow("original") << QByteArray::fromHex("fffa9004") << QStringList{u"No"_s, u"Yes"_s, u"No"_s, u"Yes"_s};
}

void TestMpegHeader::every_single_bit()
{
    QFETCH(const QByteArray, header);
    const MpegFacts facts = analysed(header).facts;
    const QStringList answers{facts.PrivateBit.toString(), facts.CRCs.toString(), facts.Copyrighted.toString(),
                              facts.Original.toString()};
    QTEST(answers, "private_crcs_copyrighted_original");
}

void TestMpegHeader::padding_changes_nothing()
{
    const HeaderAnalysis analysis = analysed(QByteArray::fromHex("fffb9264"), 4'000'000);
    QCOMPARE(int{analysis.Pad}, 0);
    QCOMPARE(analysis.FrameLengthInBytes, 417);
    QCOMPARE(analysis.facts.Frames, 9592);
}

void TestMpegHeader::every_bit_rate_and_sampling_rate_of_a_frame()
{
    // Worked out by hand, by bit rate, for 44100, 48000 and 32000 Hz.
    const std::array<std::array<int, 3>, 15> frame_lengths{{
        {-1, -1, -1},
        {103, 95, 143},
        {130, 119, 179},
        {156, 143, 215},
        {182, 167, 251},
        {208, 191, 287},
        {260, 239, 359},
        {312, 287, 431},
        {365, 335, 503},
        {417, 383, 575},
        {521, 479, 719},
        {626, 575, 863},
        {730, 671, 1007},
        {835, 767, 1151},
        {1044, 959, 1439},
    }};
    for (int rate = 0; rate < 15; ++rate) {
        for (int hz = 0; hz < 3; ++hz) {
            QByteArray header = usual_header;
            header[2] = static_cast<char>((rate << 4) | (hz << 2));
            const HeaderAnalysis analysis = analysed(header, 1'000'000);
            QCOMPARE(int{analysis.facts.Kbits}, rates_by_layer[2][rate]);
            QCOMPARE(analysis.facts.Hz, hz_by_index[hz]);
            QCOMPARE(analysis.FrameLengthInBytes, frame_lengths[rate][hz]);
            QCOMPARE(analysis.facts.Frames, rate == 0 ? -1'000'000 : 1'000'000 / frame_lengths[rate][hz]);
            QCOMPARE(int{analysis.facts.Seconds}, rate == 0 ? 0 : 8000 / rates_by_layer[2][rate]);
        }
    }
}

void TestMpegHeader::every_bit_rate_of_every_layer_without_a_frame()
{
    for (int layer = 1; layer <= 3; ++layer) {
        for (int rate = 0; rate < 16; ++rate) {
            for (int hz = 0; hz < 4; ++hz) {
                const MpegFacts facts = analysed(file_without_frame(4 - layer, rate, hz), 1'000'000).facts;
                const int kbits = rate == 15 ? 0 : rates_by_layer[layer - 1][rate];
                QCOMPARE(int{facts.MpegVersion}, 1);
                QCOMPARE(int{facts.LayerVersion}, layer);
                QCOMPARE(int{facts.Kbits}, kbits);
                QCOMPARE(facts.Hz, hz_by_index[hz]);
                QCOMPARE(int{facts.Seconds}, kbits == 0 ? 0 : 8000 / kbits);
                QCOMPARE(facts.Mode, u"Stereo"_s);
                QCOMPARE(facts.Original, u"No"_s);
            }
        }
    }
}

void TestMpegHeader::layer_1_frame_lengths_data()
{
    QTest::addColumn<int>("rate_index");
    QTest::addColumn<int>("hz_index");
    QTest::addColumn<i32>("frame_length");
    QTest::newRow("free format") << 0 << 0 << -1;
    QTest::newRow("32 at 44100: -0.97") << 1 << 0 << -1;
    QTest::newRow("448 at 44100: -0.51") << 14 << 0 << -1;
    QTest::newRow("448 at 48000: -0.55") << 14 << 1 << -1;
    QTest::newRow("320 at 32000: -0.52") << 10 << 2 << -1;
    QTest::newRow("352 at 32000: -0.47") << 11 << 2 << 0;
    QTest::newRow("448 at 32000: -0.33") << 14 << 2 << 0;
}

void TestMpegHeader::layer_1_frame_lengths()
{
    QFETCH(const int, rate_index);
    QFETCH(const int, hz_index);
    QFETCH(const i32, frame_length);
    QByteArray content = file_without_frame(3, rate_index, hz_index);
    content.replace(43, 4, QByteArray::fromHex("00000102"));
    const HeaderAnalysis analysis =
        analysed(content, 0, {.facts = {}, .FrameLengthInBytes = 417, .Pad = 0, .listed = {}});
    QCOMPARE(analysis.FrameLengthInBytes, frame_length);
    // A length of 0 can't divide, and the number from behind the frame stays.
    QCOMPARE(analysis.facts.Frames, frame_length == 0 ? 0x102 : -200);
}

void TestMpegHeader::a_header_without_layer_ends_at_its_bit_rate()
{
    const HeaderAnalysis analysis = analysed(file_without_frame(0, 9, 1), 1'000'000);
    const MpegFacts& facts = analysis.facts;
    QCOMPARE(int{facts.MpegVersion}, 1);
    QCOMPARE(int{facts.LayerVersion}, 0);
    QCOMPARE(facts.Hz, 48000);
    QCOMPARE(int{facts.Kbits}, 1);
    QCOMPARE(int{facts.Seconds}, 0);
    QCOMPARE(facts.Original, QString());
    QCOMPARE(analysis.FrameLengthInBytes, 0);
    QCOMPARE(analysis.InfoString(), QString());
}

void TestMpegHeader::seconds_and_frames_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<qint64>("length");
    QTest::addColumn<i32>("file_bytes");
    QTest::addColumn<int>("seconds");
    QTest::addColumn<i32>("frames");
    const QByteArray at_320 = QByteArray::fromHex("fffbe064");
    const QByteArray at_32 = QByteArray::fromHex("fffb1064");
    const auto row = [](const char* name, const QByteArray& header, qint64 length, i32 file_bytes, int seconds,
                        i32 frames) { QTest::newRow(name) << header << length << file_bytes << seconds << frames; };
    row("four million bytes", usual_header, 4'000'000, 4'000'000, 250, 9592);
    row("seconds are rounded down", usual_header, 3'999'999, 3'999'999, 249, 9592);
    row("frames are rounded down", usual_header, 417 * 2 - 1, 833, 0, 1);
    row("the last length whose bits 32 bits hold", usual_header, 268'435'455, 268'435'455, 16777, 643730);
    row("the first one beyond", usual_header, 268'435'456, 268'435'456, 0, 643730);
    row("the most seconds that 16 bits hold", at_32, 131'071'999, 131'071'999, 32767, 1272543);
    row("one second more", at_32, 131'072'000, 131'072'000, 0, 1272543);
    row("300 MB", at_320, 300'000'000, 300'000'000, 0, 287356);
    row("the last length that 32 bits hold", at_320, 2'147'483'647, 2'147'483'647, 0, 2056976);
    row("a length beyond 32 bits is not taken", at_320, 2'147'483'648, 0, 0, 0);
    row("5 GB", at_320, 5'000'000'000, 0, 0, 0);
}

void TestMpegHeader::seconds_and_frames()
{
    QFETCH(const QByteArray, header);
    QFETCH(const qint64, length);
    const MpegFacts facts = analysed(header, length).facts;
    QTEST(facts.FileBytes, "file_bytes");
    QTEST(int{facts.Seconds}, "seconds");
    QTEST(facts.Frames, "frames");
}

void TestMpegHeader::without_sampling_rate_the_frame_length_of_before_counts()
{
    const QByteArray reserved_rate = QByteArray::fromHex("fffb9c64") + QByteArray(200, '\0');
    const HeaderAnalysis fresh = analysed(reserved_rate, 4'000'000);
    QCOMPARE(fresh.facts.Hz, 0);
    QCOMPARE(fresh.FrameLengthInBytes, 0);
    QCOMPARE(fresh.facts.Frames, 0);
    QCOMPARE(int{fresh.facts.Seconds}, 250);
    QVERIFY(fresh.InfoString().contains(u"\r\n0hz Joint Stereo\r\n"_s));

    const HeaderAnalysis later = analysed(reserved_rate, 4'000'000, analysed(usual_header));
    QCOMPARE(later.facts.Hz, 0);
    QCOMPARE(later.FrameLengthInBytes, 417);
    QCOMPARE(later.facts.Frames, 9592);
}

void TestMpegHeader::a_variable_bit_rate_counts_as_the_first_frames()
{
    QByteArray content = usual_header.leftJustified(600, '\0');
    content.replace(36, 12, "Xing" + QByteArray::fromHex("0000000100000007"));
    content.replace(417, 4, QByteArray::fromHex("fffbe064"));
    const HeaderAnalysis analysis = analysed(content, 4'000'000);
    QCOMPARE(analysis.InfoString(), analysed(usual_header, 4'000'000).InfoString());
    QCOMPARE(analysis.facts.Frames, 9592);
    QCOMPARE(int{analysis.facts.Seconds}, 250);
}

void TestMpegHeader::free_format_counts_frames_backwards_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::newRow("bit-rate index 0") << QByteArray::fromHex("fffb0064");
    QTest::newRow("bit-rate index 15") << QByteArray::fromHex("fffbf064");
}

void TestMpegHeader::free_format_counts_frames_backwards()
{
    QFETCH(const QByteArray, header);
    const HeaderAnalysis analysis = analysed(header, 4'000'000, analysed(usual_header));
    QCOMPARE(int{analysis.facts.Kbits}, 0);
    QCOMPARE(analysis.FrameLengthInBytes, -1);
    QCOMPARE(int{analysis.facts.Seconds}, 0);
    QCOMPARE(analysis.facts.Frames, -4'000'000);
    QVERIFY(analysis.InfoString().contains(u"\r\n0kbit, -4000000 frames\r\n"_s));
}

void TestMpegHeader::the_number_behind_the_frame_is_provisional_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<i32>("frames");
    const QByteArray nothing(200, '\0');
    // With the reserved sampling rate and no frame length of before, the number is what remains.
    const QByteArray frame = QByteArray::fromHex("fffb9c64").leftJustified(200, '\0');
    const QByteArray number = QByteArray::fromHex("00012345");
    QTest::newRow("no frame, at 44 to 47") << QByteArray(nothing).replace(43, 4, number) << 0x12345;
    QTest::newRow("no frame, one byte early") << QByteArray(nothing).replace(42, 4, number) << 0x1234500;
    QTest::newRow("a frame, 44 bytes behind its beginning") << QByteArray(frame).replace(44, 4, number) << 0x12345;
    QTest::newRow("a later frame") << QByteArray(100, '\0') + QByteArray(frame).replace(44, 4, number) << 0x12345;
    QTest::newRow("31 bits") << QByteArray(nothing).replace(43, 4, QByteArray::fromHex("7ffffffe")) << 0x7ffffffe;
    QTest::newRow("the top bit set") << QByteArray(nothing).replace(43, 4, QByteArray::fromHex("80000001")) << 0;
    QTest::newRow("the file ends before it") << nothing.left(43) << 0;
    QTest::newRow("the file ends within it") << nothing.left(43) + "\x01\x02" << 0x01020000;
    QTest::newRow("at the limit of the search")
        << QByteArray(4999, '\0') + QByteArray(frame).replace(44, 4, number) << 0x12345;
}

void TestMpegHeader::the_number_behind_the_frame_is_provisional()
{
    QFETCH(const QByteArray, content);
    QTEST(analysed(content).facts.Frames, "frames");
}

void TestMpegHeader::a_frame_at_the_very_end_has_zeros_behind_it()
{
    const HeaderAnalysis analysis = analysed(QByteArray(10, 'x') + "\xFF\xFB");
    QCOMPARE(int{analysis.facts.LayerVersion}, 3);
    QCOMPARE(int{analysis.facts.Kbits}, 0);
    QCOMPARE(analysis.facts.Hz, 44100);
    QCOMPARE(analysis.facts.Frames, -12);
    QCOMPARE(int{analysed(QByteArray(10, 'x') + '\xFF').facts.MpegVersion}, 2);
}

void TestMpegHeader::InfoString_lists_the_facts()
{
    QCOMPARE(analysed(usual_header, 4'000'000).InfoString(),
             u"Size: 4000000 bytes\r\nLength: 250 seconds\r\nMPEG 1.0 layer 3\r\n128kbit, 9592 frames\r\n"
             "44100hz Joint Stereo\r\nPrivate: No\r\nCRCs: No\r\nCopyrighted: No\r\nOriginal: Yes\r\nEmphasis: None"_s);
    QCOMPARE(analysed(QByteArray::fromHex("fffae5cb"), 1000).InfoString(),
             u"Size: 1000 bytes\r\nLength: 0 seconds\r\nMPEG 1.0 layer 3\r\n320kbit, 1 frames\r\n"
             "48000hz Single Channel\r\nPrivate: Yes\r\nCRCs: Yes\r\nCopyrighted: Yes\r\nOriginal: No\r\n"
             "Emphasis: CCITT J 17"_s);
}

void TestMpegHeader::InfoString_outlives_a_file_without_frame()
{
    const HeaderAnalysis first = analysed(usual_header, 4'000'000);
    const HeaderAnalysis second = analysed(QByteArray(300, '\0'), 0, first);
    QCOMPARE(second.InfoString(), first.InfoString());
    QCOMPARE(second.FrameLengthInBytes, 417);
    QCOMPARE(second.facts.FileBytes, 300);
    QCOMPARE(int{second.facts.Kbits}, 0);
    const HeaderAnalysis third = analysed(usual_header, 1'000'000, second);
    QVERIFY(third.InfoString().startsWith(u"Size: 1000000 bytes\r\n"_s));
}

QUILMO_LOGIC_TEST(TestMpegHeader)

#include "test_mpeg_header.moc"
