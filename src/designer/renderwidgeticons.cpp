// Build-time tool: renders the widget-box icons from their SVG sources, so
// that the repository holds only the sources.
//   renderwidgeticons <size> <out.png> <in.svg>

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s <size> <out.png> <in.svg>\n", argv[0]);
        return 2;
    }
    const int size = QByteArray(argv[1]).toInt();
    QSvgRenderer renderer(QString::fromLocal8Bit(argv[3]));
    if (size <= 0 || !renderer.isValid()) {
        std::fprintf(stderr, "renderwidgeticons: cannot render %s\n", argv[3]);
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    painter.end();
    return image.save(QString::fromLocal8Bit(argv[2]), "PNG") ? 0 : 1;
}
