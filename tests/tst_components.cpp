// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/GradientButton.h"
#include "views/components/LineBreaker.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QApplication>
#include <QHBoxLayout>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// Counts pixels that are not fully transparent.
// Pixels drawn at more than faint coverage; with a colour, only those of that colour.
int inkedPixels(const QImage& image, const QColor& color = {})
{
    int count = 0;
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < argb.height(); ++y) {
        for (int x = 0; x < argb.width(); ++x) {
            const QRgb p = argb.pixel(x, y);
            const bool matches = !color.isValid() || (std::abs(qRed(p) - color.red()) < 8 &&
                                                      std::abs(qGreen(p) - color.green()) < 8 &&
                                                      std::abs(qBlue(p) - color.blue()) < 8);
            count += qAlpha(p) > 40 && matches ? 1 : 0;
        }
    }
    return count;
}

// WCAG's contrast ratio of two opaque colours, 1 to 21.
double contrast(const QColor& a, const QColor& b)
{
    const auto luminance = [](const QColor& colour) {
        const auto channel = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF()) +
               0.0722 * channel(colour.blueF());
    };
    const double lighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

class TestComponents : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setPalette(Theme::palette(Theme::Scheme::light)); }

    // Every symbol of the table, and an unknown or empty name, draws its outline in the colour
    // asked for; no two glyphs share one outline, so a missing file cannot hide behind the
    // fallback.
    void symbolsResolve()
    {
        const QStringList names = Symbols::knownNames();
        for (const char* used : {"waveform.badge.plus", "speaker.slash.fill", "xmark.seal.fill",
                                 "arrow.down.to.line.compact", "line.3.horizontal.decrease.circle"})
            QVERIFY2(names.contains(QLatin1String(used)), used);
        QHash<QByteArray, QString> drawn;
        for (const QString& name : names + QStringList{u"no.such.symbol"_s, QString()}) {
            const QImage image = Symbols::pixmap(name, QColor(0, 0, 255), 32).toImage();
            QVERIFY2(inkedPixels(image) > 30, qPrintable(name));
            QCOMPARE(inkedPixels(image, Qt::blue), inkedPixels(image));
            const QByteArray look(reinterpret_cast<const char*>(image.constBits()),
                                  image.sizeInBytes());
            const QString glyph = Symbols::glyphName(name);
            QVERIFY2(drawn.value(look, glyph) == glyph, qPrintable(name));
            drawn.insert(look, glyph);
        }
    }

    void textContrast()
    {
        for (const Theme::Scheme scheme : {Theme::Scheme::light, Theme::Scheme::dark}) {
            const QPalette palette = Theme::palette(scheme);
            for (const QColor& text :
                 {Theme::primaryText(palette), Theme::secondaryText(palette)}) {
                for (const QPalette::ColorRole ground :
                     {QPalette::Window, QPalette::Base, QPalette::AlternateBase}) {
                    const double ratio = contrast(text, palette.color(ground));
                    QVERIFY2(ratio >= 4.5, qPrintable(u"%1 on %2: %3"_s.arg(text.name())
                                                          .arg(palette.color(ground).name())
                                                          .arg(ratio)));
                }
            }
        }
    }

    // A line too narrow for its text and its buttons puts the buttons under it, at their full
    // width, and takes them back when it widens; a longer title is measured again.
    void buttonsWrapBelowLongTexts()
    {
        QWidget owner;
        auto* lines = new QVBoxLayout(&owner);
        auto* line = new QHBoxLayout;
        lines->addLayout(line);
        auto* text = new QLabel(u"Fehlgeschlagene Titel dieses Stapels"_s);
        line->addWidget(text);
        auto* group = new QWidget;
        QPushButton* button = new QPushButton(u"Wiederholen"_s, group);
        Theme::row(group, 8)->addWidget(button);
        new LineBreaker(&owner, line, lines, group);
        const int both = text->sizeHint().width() + button->sizeHint().width() + 60;
        owner.setFixedWidth(both);
        owner.show();
        QVERIFY(QTest::qWaitForWindowExposed(&owner));
        const auto onItsLine = [&] { return group->geometry().top() == text->geometry().top(); };
        QTRY_VERIFY(onItsLine());
        button->setText(u"Fehlgeschlagene wiederholen"_s);
        QTRY_VERIFY(!onItsLine());
        QCOMPARE(button->width(), button->sizeHint().width());
        owner.setFixedWidth(both + 200);
        QTRY_VERIFY(onItsLine());
    }
};

QTEST_MAIN(TestComponents)
#include "tst_components.moc"
