// Draws the icon in the sizes that desktops ask for, when the program is built:
//
//   draw-icon ICON.svg SIZE PICTURE.png
//
// Exit codes: 0 drawn, 1 it cannot be read or written, 64 wrong usage.

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

int main(int count, char **values)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // Where programs are built there is no screen.
    const QGuiApplication application(count, values);
    const QStringList arguments = QCoreApplication::arguments();
    const int size = arguments.size() == 4 ? arguments.at(2).toInt() : 0;
    if (size <= 0) {
        return 64;
    }
    QSvgRenderer icon(arguments.at(1));
    if (!icon.isValid()) {
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.render(&painter);
    return painter.end() && image.save(arguments.at(3), "PNG") ? 0 : 1;
}
