// SPDX-License-Identifier: GPL-3.0-or-later
// Writes every symbol the screens use as an SVG outline, from the Material Icons font
// (Debian's fonts-material-design-icons-iconfont, Apache-2.0): the program then draws them
// without loading the font. Usage: veldtone-symbols FONT.ttf OUTPUT_FOLDER
#include "views/components/Symbols.h"

#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainterPath>
#include <QTextStream>

namespace {

constexpr qreal kSide = 24;

// The glyph as the font draws it centred in a 24-pixel square, in SVG path syntax.
QString pathData(const QFont& font, const QString& glyph)
{
    const QFontMetricsF metrics(font);
    const qreal x = (kSide - metrics.horizontalAdvance(glyph)) / 2;
    const qreal baseline = (kSide - metrics.height()) / 2 + metrics.ascent();
    QPainterPath path;
    path.addText(QPointF(x, baseline), font, glyph);
    // A name the font has no ligature for comes out spelled, letter by letter.
    if (path.boundingRect().width() > kSide + 1)
        return {};
    QString data;
    QTextStream out(&data);
    out.setRealNumberPrecision(4);
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        if (e.isMoveTo()) {
            out << 'M' << e.x << ' ' << e.y;
        } else if (e.isLineTo()) {
            out << 'L' << e.x << ' ' << e.y;
        } else if (e.isCurveTo()) {
            const QPainterPath::Element c2 = path.elementAt(i + 1);
            const QPainterPath::Element end = path.elementAt(i + 2);
            out << 'C' << e.x << ' ' << e.y << ' ' << c2.x << ' ' << c2.y << ' ' << end.x << ' '
                << end.y;
            i += 2;
        }
    }
    return data;
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        QTextStream(stderr) << "usage: veldtone-symbols FONT.ttf OUTPUT_FOLDER\n";
        return 2;
    }
    const QStringList families =
        QFontDatabase::applicationFontFamilies(QFontDatabase::addApplicationFont(args.at(1)));
    if (families.isEmpty()) {
        QTextStream(stderr) << "cannot read " << args.at(1) << '\n';
        return 1;
    }
    QFont font(families.constFirst());
    font.setPixelSize(int(kSide));
    font.setStyleStrategy(QFont::NoFontMerging);
    QDir().mkpath(args.at(2));
    for (const QString& glyph : Symbols::glyphNames()) {
        const QString data = pathData(font, glyph);
        if (data.isEmpty()) {
            QTextStream(stderr) << "the font has no glyph " << glyph << '\n';
            return 1;
        }
        QFile file(args.at(2) + u'/' + glyph + QStringLiteral(".svg"));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            QTextStream(stderr) << "cannot write " << file.fileName() << '\n';
            return 1;
        }
        QTextStream(&file) << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">"
                           << "<path fill-rule=\"nonzero\" d=\"" << data
                           << "\"/></svg>\n";
    }
    return 0;
}
