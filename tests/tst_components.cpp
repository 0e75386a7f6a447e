// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/GradientButton.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Counts pixels that are not fully transparent.
int inkedPixels(const QImage& image)
{
    int count = 0;
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < argb.height(); ++y)
        for (int x = 0; x < argb.width(); ++x)
            count += qAlpha(argb.pixel(x, y)) > 40 ? 1 : 0;
    return count;
}

} // namespace

class TestComponents : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setPalette(Theme::palette(Theme::Scheme::light)); }

    // Every symbol of the table, and an unknown or empty name, draws one glyph of the icon
    // font: a ligature the font lacks would be spelled out letter by letter, far wider than 1 em.
    void symbolsResolve()
    {
        QVERIFY2(Symbols::fontAvailable(), "the Material Icons font is not installed");
        const QStringList names = Symbols::knownNames();
        for (const char* used : {"waveform.badge.plus", "speaker.slash.fill", "xmark.seal.fill",
                                 "arrow.down.to.line.compact", "line.3.horizontal.decrease.circle"})
            QVERIFY2(names.contains(QLatin1String(used)), used);
        const QFontMetricsF metrics(Symbols::font(32));
        for (const QString& name : names + QStringList{u"no.such.symbol"_s, QString()}) {
            const qreal width = metrics.horizontalAdvance(Symbols::glyphName(name));
            QVERIFY2(width > 16 && width <= 40, qPrintable(name));
            QVERIFY2(inkedPixels(Symbols::pixmap(name, Qt::black, 32).toImage()) > 30,
                     qPrintable(name));
        }
    }
};

QTEST_MAIN(TestComponents)
#include "tst_components.moc"
