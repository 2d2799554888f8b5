#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

/// Draws a square icon for the menus of desktops:  quilmo-draw-icon SVG SIZE PNG, the size in pixels. Exit status 1
/// where the drawing can't be read or the picture not be written.
int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    const int size = QByteArray(argv[2]).toInt();
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid() || size < 1)
        return 1;
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    return picture.save(QString::fromLocal8Bit(argv[3]), "PNG") ? 0 : 1;
}
