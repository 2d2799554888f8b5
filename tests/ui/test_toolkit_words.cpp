#include "core/mod_of_grobal_var.h"
#include "frame/look.h"
#include "platform/MsgBox.h"
#include "platform/controls/message_window.h"
#include "platform/controls/toolkit_words.h"
#include "platform/language.h"
#include "test_main.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace {

/// The texts of the toolkit's chooser of a file: labels, buttons, tips, headers.
QStringList chooser_texts()
{
    const QFileDialog chooser(nullptr, u"Title"_s, u"/"_s);
    QStringList texts;
    for (const QLabel* label : chooser.findChildren<QLabel*>())
        texts.append(label->text());
    for (const QAbstractButton* button : chooser.findChildren<QAbstractButton*>()) {
        texts.append(button->text());
        texts.append(button->toolTip());
    }
    const QAbstractItemModel& files = *chooser.findChild<QTreeView*>()->model();
    for (int column = 0; column < files.columnCount(); ++column)
        texts.append(files.headerData(column, Qt::Horizontal).toString());
    texts.removeAll(QString());
    return texts;
}

/// The entries of a text box's own menu, without their keys.
QStringList text_menu()
{
    QLineEdit box;
    const std::unique_ptr<QMenu> menu(box.createStandardContextMenu());
    QStringList texts;
    for (const QAction* entry : menu->actions())
        texts.append(entry->text().section(u'\t', 0, 0).remove(u'&'));
    texts.removeAll(QString());
    return texts;
}

QString cancel_text()
{
    const QDialogButtonBox box(QDialogButtonBox::Cancel);
    return box.button(QDialogButtonBox::Cancel)->text().remove(u'&');
}

void speak(Language language)
{
    set_program_language(language);
    translate_toolkit();
}

} // namespace

class TestToolkitWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup() { speak(english); }

    void the_toolkit_speaks_the_language_data();
    void the_toolkit_speaks_the_language();
    void nothing_of_the_chooser_is_left_in_english_data();
    void nothing_of_the_chooser_is_left_in_english();
    void it_stays_english_without_translations();
    void message_boxes_need_no_translations_data();
    void message_boxes_need_no_translations();
    void dates_and_sizes_follow_the_language_data();
    void dates_and_sizes_follow_the_language();

private:
    QStringList english_chooser_;
    QStringList english_menu_;
};

void TestToolkitWords::initTestCase()
{
    apply_look();
    english_chooser_ = chooser_texts();
    english_menu_ = text_menu();
    QVERIFY(english_chooser_.contains(u"Look in:"_s));
    QVERIFY(english_menu_.contains(u"Select All"_s));
}

void TestToolkitWords::the_toolkit_speaks_the_language_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("cancel");
    QTest::addColumn<QString>("look_in");
    QTest::addColumn<QString>("select_all");

    QTest::newRow("Korean") << korean << u"취소"_s << u"다음에서 찾기:"_s << u"모두 선택"_s;
    QTest::newRow("German") << german << u"Abbrechen"_s << u"Suchen in:"_s << u"Alles auswählen"_s;
}

void TestToolkitWords::the_toolkit_speaks_the_language()
{
    QFETCH(Language, language);
    QFETCH(QString, cancel);
    QFETCH(QString, look_in);
    QFETCH(QString, select_all);

    speak(language);
    QCOMPARE(cancel_text(), cancel);
    QVERIFY(chooser_texts().contains(look_in));
    QVERIFY(text_menu().contains(select_all));

    speak(english);
    QCOMPARE(cancel_text(), u"Cancel"_s);
    QCOMPARE(chooser_texts(), english_chooser_);
    QCOMPARE(text_menu(), english_menu_);
}

void TestToolkitWords::nothing_of_the_chooser_is_left_in_english_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("same"); ///< the words that both languages share

    QTest::newRow("Korean") << korean << QStringList();
    QTest::newRow("German") << german << QStringList{u"Name"_s};
}

void TestToolkitWords::nothing_of_the_chooser_is_left_in_english()
{
    QFETCH(Language, language);
    QFETCH(QStringList, same);

    speak(language);
    for (const QStringList& texts : {chooser_texts(), text_menu()}) {
        for (const QString& text : texts)
            QVERIFY2(same.contains(text) || !(english_chooser_ + english_menu_).contains(text), qPrintable(text));
    }
}

void TestToolkitWords::it_stays_english_without_translations()
{
    const QTemporaryDir empty;
    for (const Language language : {korean, german}) {
        set_program_language(language);
        translate_toolkit(empty.path());
        QCOMPARE(cancel_text(), u"Cancel"_s);
        QCOMPARE(chooser_texts(), english_chooser_);
    }
}

void TestToolkitWords::message_boxes_need_no_translations_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("ok");

    QTest::newRow("English") << english << u"OK"_s;
    QTest::newRow("Korean") << korean << u"확인"_s;
    QTest::newRow("German") << german << u"OK"_s;
}

void TestToolkitWords::message_boxes_need_no_translations()
{
    QFETCH(Language, language);
    QFETCH(QString, ok);

    const QTemporaryDir empty;
    set_program_language(language);
    translate_toolkit(empty.path());
    install_message_window(u"Title"_s);
    QString shown;
    QTimer looks;
    connect(&looks, &QTimer::timeout, this, [&shown] {
        if (const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            shown = box->button(QMessageBox::Ok)->text();
            box->button(QMessageBox::Ok)->click();
        }
    });
    looks.start(5);
    MsgBox(u"Text"_s, message_box_information, u"Title"_s);
    set_message_box({});
    QCOMPARE(shown, ok);
}

void TestToolkitWords::dates_and_sizes_follow_the_language_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QLocale>("locale");

    QTest::newRow("English writes as the desktop does") << english << QLocale::system();
    QTest::newRow("Korean") << korean << QLocale(QLocale::Korean);
    QTest::newRow("German") << german << QLocale(QLocale::German);
}

void TestToolkitWords::dates_and_sizes_follow_the_language()
{
    QFETCH(Language, language);
    QFETCH(QLocale, locale);

    set_program_language(language);
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, "a");
    const File file = shared.fso.GetFolder(u"C:\\"_s).Files(u".mp3"_s).front();
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(file.modified_seconds);
    QCOMPARE(file.DateLastModified(), locale.toString(moment.date(), QLocale::ShortFormat) + u' ' +
                                          locale.toString(moment.time(), QLocale::ShortFormat));
    QCOMPARE(program_locale().formattedDataSize(12), locale.formattedDataSize(12));
}

QUILMO_UI_TEST(TestToolkitWords)

#include "test_toolkit_words.moc"
