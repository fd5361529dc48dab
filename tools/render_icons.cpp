// Draws the icons of a list as pictures: render_icons LIST THEMES OUT.
// THEMES holds the icon themes "breeze" and "breeze-dark"; OUT gets light/NAME_SIZE.png and
// dark/NAME_SIZE.png.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <cstdio>

namespace {

struct Theme {
  const char* folder;
  const char* output;
};
constexpr Theme kThemes[] = {{"breeze", "light"}, {"breeze-dark", "dark"}};

/// A picture is drawn from the drawing of its own grid where there is one, so that lines stay on
/// whole pixels: 24 is 22 with a margin, and the large ones are twice a small one.
struct Size {
  int pixels;
  int margin;
  const char* grids[3];  ///< folders of drawings, the better one first
};
constexpr Size kSizes[] = {{16, 0, {"16", "22", "32"}},
                           {24, 1, {"22", "16", "32"}},
                           {32, 0, {"32", "16", "22"}},
                           {48, 2, {"22", "16", "32"}},
                           {64, 0, {"32", "16", "22"}}};

constexpr const char* kKinds[] = {"actions", "status", "devices", "applets", "places"};

int Fail(const QString& text) {
  std::fprintf(stderr, "render_icons: %s\n", text.toLocal8Bit().constData());
  return 1;
}

/// The path of a drawing, empty when the theme has none.
QString FindDrawing(const QString& theme, const QString& name, const Size& size) {
  for (const char* grid : size.grids)
    for (const char* kind : kKinds) {
      const QString path = theme + "/" + kind + "/" + grid + "/" + name + ".svg";
      if (QFile::exists(path)) return path;
    }
  return {};
}

/// Writes the colours of the theme's style classes where they are used: the renderer knows no
/// "currentColor" of a class.
QByteArray ResolveColours(const QByteArray& svg) {
  QString text = QString::fromUtf8(svg);
  QRegularExpression rule("\\.(ColorScheme-\\w+)\\s*\\{\\s*color:\\s*(#[0-9a-fA-F]+)");
  QRegularExpressionMatchIterator rules = rule.globalMatch(text);
  QMap<QString, QString> colours;
  while (rules.hasNext()) {
    const QRegularExpressionMatch match = rules.next();
    colours[match.captured(1)] = match.captured(2);
  }
  const QRegularExpression element("<[^>]*class=\"(ColorScheme-\\w+)\"[^>]*>");
  QString resolved;
  int end = 0;
  QRegularExpressionMatchIterator elements = element.globalMatch(text);
  while (elements.hasNext()) {
    const QRegularExpressionMatch match = elements.next();
    resolved += text.mid(end, match.capturedStart() - end);
    resolved += match.captured().replace("currentColor", colours.value(match.captured(1)));
    end = match.capturedEnd();
  }
  return (resolved + text.mid(end)).toUtf8();
}

/// An empty text means success.
QString Render(const QString& drawing, const Size& size, const QString& path) {
  QFile file(drawing);
  if (!file.open(QIODevice::ReadOnly)) return drawing + ": " + file.errorString();
  QSvgRenderer renderer(ResolveColours(file.readAll()));
  if (!renderer.isValid()) return drawing + ": it can't be drawn";
  QImage image(size.pixels, size.pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const double inner = size.pixels - 2.0 * size.margin;
  renderer.render(&painter, QRectF(size.margin, size.margin, inner, inner));
  painter.end();
  return image.save(path, "PNG") ? QString() : path + ": it can't be written";
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc != 4) return Fail("usage: render_icons LIST THEMES OUT");
  QFile list(argv[1]);
  if (!list.open(QIODevice::ReadOnly)) return Fail(list.fileName() + ": " + list.errorString());
  while (!list.atEnd()) {
    const QString line = QString::fromUtf8(list.readLine()).trimmed();
    if (line.isEmpty() || line.startsWith('#')) continue;
    const QString name = line.section(' ', 0, 0);
    for (const Theme& theme : kThemes) {
      const QString folder = QString(argv[3]) + "/" + theme.output;
      QDir().mkpath(folder);
      for (const Size& size : kSizes) {
        const QString drawing =
            FindDrawing(QString(argv[2]) + "/" + theme.folder, line.section(' ', 1), size);
        if (drawing.isEmpty()) return Fail(name + ": the theme has no drawing " + line);
        const QString problem =
            Render(drawing, size, QString("%1/%2_%3.png").arg(folder, name).arg(size.pixels));
        if (!problem.isEmpty()) return Fail(problem);
      }
    }
  }
}
