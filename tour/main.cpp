// The guided tour: starts the real forms on a sample collection, drives the main job with input events and saves a
// picture after each step, once in each language. Its one argument is the folder for the pictures.

#include "Album.h"
#include "TourMachine.h"
#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "frame/Splash_Dlg.h"
#include "frame/look.h"
#include "main_job.h"
#include "platform/controls/message_window.h"
#include "platform/controls/toolkit_words.h"
#include "platform/language.h"

#include <QApplication>
#include <QTest>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

struct Chapter
{
    Language language;
    const char16_t* folder;
};

constexpr Chapter chapters[] = {{english, u"english"}, {korean, u"korean"}, {german, u"german"}};

/// What the toolkit's display without a screen can't do is no news; what ends the tour is.
void print_serious(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

/// Starts the program in one language, takes the tour and gives how many pictures it took.
int play(Language language, const QString& folder)
{
    const TourMachine machine;
    shared = {};
    set_program_language(language);
    translate_toolkit();
    Album album(folder);

    std::unique_ptr<QuilmoMain> form;
    auto* splash = new Splash_Dlg([&form] {
        form = std::make_unique<QuilmoMain>();
        form->show();
    });
    splash->show(); // it deletes itself
    album.take(*splash, u"splash"_s);
    while (form == nullptr)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (!QTest::qWaitForWindowExposed(form.get()))
        qFatal("the main window did not come");
    play_main_job(*form, album);
    form->close();
    return album.count();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\nPlays the guided tour and saves its pictures in FOLDER.\n", argv[0]);
        return 2;
    }
    qInstallMessageHandler(print_serious);
    qputenv("SDL_AUDIODRIVER", "dummy"); // the tour plays without a sound
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    apply_look();
    apply_icon();
    install_message_window(application_title());

    const QDir folder(QFile::decodeName(argv[1]));
    int pictures = 0;
    for (const Chapter& chapter : chapters)
        pictures += play(chapter.language, folder.filePath(QString::fromUtf16(chapter.folder)));
    std::printf("%d pictures in %s\n", pictures, qPrintable(folder.absolutePath()));
    return 0;
}
