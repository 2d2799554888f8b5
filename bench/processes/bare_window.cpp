// The least program with a window:  bare_window WIDTH HEIGHT

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    const QStringList arguments = QApplication::arguments();
    window.resize(arguments.value(1).toInt(), arguments.value(2).toInt());
    window.show();
    return QApplication::exec();
}
