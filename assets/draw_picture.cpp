#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace {

bool save_pixels(const QImage& picture, const QString& path)
{
    QFile file(path);
    return file.open(QFile::WriteOnly) && file.write(reinterpret_cast<const char*>(picture.constBits()),
                                                     picture.sizeInBytes()) == picture.sizeInBytes();
}

} // namespace

/// Draws an SVG file while the program is built:  quilmo-draw-picture SVG WIDTH HEIGHT FILE, the size in pixels. A file
/// that ends in ".png" is written as such, any other holds the bare pixels, 32 bits each as a QImage keeps them. Exit
/// status 1 where the drawing can't be read or the file not be written.
int main(int argc, char** argv)
{
    if (argc != 5)
        return 2;
    const QSize size(QByteArray(argv[2]).toInt(), QByteArray(argv[3]).toInt());
    const QString path = QString::fromLocal8Bit(argv[4]);
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid() || size.isEmpty())
        return 1;
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    const bool saved = path.endsWith(QStringLiteral(".png")) ? picture.save(path, "PNG") : save_pixels(picture, path);
    return saved ? 0 : 1;
}
