// svg2png SCALE IN.svg OUT.png: a build tool that renders one picture, without needing a display.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>
#include <QtDebug>

namespace {

bool render(double scale, const QString& from, const QString& to) {
  QSvgRenderer svg(from);
  if (!svg.isValid() || scale <= 0) return false;
  QImage image((QSizeF(svg.defaultSize()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  svg.render(&painter);
  painter.end();
  return image.save(to, "PNG");
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication app(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() != 4) {
    qCritical("usage: svg2png SCALE IN.svg OUT.png");
    return 2;
  }
  if (!render(arguments[1].toDouble(), arguments[2], arguments[3])) {
    qCritical() << "svg2png: cannot render" << arguments[2] << "to" << arguments[3];
    return 1;
  }
  return 0;
}
