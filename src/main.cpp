#include "core/Mod_of_nation.h"
#include "frame/QuilmoMain.h"
#include "frame/Splash_Dlg.h"
#include "frame/look.h"
#include "platform/controls/message_window.h"
#include "platform/controls/toolkit_words.h"
#include "platform/language.h"

#include <QApplication>

#include <memory>

static_assert(QUILMO_LANGUAGE >= english && QUILMO_LANGUAGE <= german);

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    set_program_language(Language(QUILMO_LANGUAGE));
    translate_toolkit();
    apply_look();
    install_message_window(application_title());

    std::unique_ptr<QuilmoMain> main_form;
    auto* splash = new Splash_Dlg([&main_form] {
        apply_icon();
        main_form = std::make_unique<QuilmoMain>();
        main_form->show();
    });
    splash->show(); // it deletes itself
    return QApplication::exec();
}
