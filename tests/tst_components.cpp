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

QImage render(QWidget& widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
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

    // Clicking, keyboard focus and the screen reader's press all follow the enabled state.
    void buttonEnabling()
    {
        QWidget window;
        auto* button = new GradientButton(u"Start Ripping"_s, u"arrow.down.to.line.compact"_s,
                                          {Qt::red, QColor(255, 149, 0)}, &window);
        window.resize(300, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QSignalSpy clicked(button, &QAbstractButton::clicked);

        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(clicked.size(), 1);

        QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(button);
        QVERIFY(iface);
        QCOMPARE(iface->text(QAccessible::Name), u"Start Ripping"_s);
        QCOMPARE(iface->role(), QAccessible::Button);
        QAccessibleActionInterface* actions = iface->actionInterface();
        QVERIFY(actions);
        QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        actions->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(clicked.size(), 2);

        button->setEnabled(false);
        QTest::mouseClick(button, Qt::LeftButton);
        actions->doAction(QAccessibleActionInterface::pressAction());
        QTest::qWait(50);
        QCOMPARE(clicked.size(), 2);
        QVERIFY(iface->state().disabled);
        button->setFocus();
        QVERIFY(!button->hasFocus());
    }

    // The painted fill shows the caller's colours when enabled and only greys when disabled;
    // the coloured shadow shows below the pill only when enabled.
    void buttonPainting()
    {
        GradientButton button(u"Go"_s, u"play.fill"_s, {QColor(0, 0, 255)});
        button.resize(button.sizeHint());
        const QMargins room = GradientButton::shadowMargins();
        const QPoint fillPoint(room.left() + 6, button.height() / 2);
        const QPoint belowPoint(button.width() / 2, button.height() - room.bottom() + 4);

        QImage image = render(button);
        QCOMPARE(image.pixelColor(fillPoint).rgb(), QColor(0, 0, 255).rgb());
        QVERIFY(qAlpha(image.pixel(belowPoint)) > 0);

        button.setEnabled(false);
        image = render(button);
        const QColor disabled = image.pixelColor(fillPoint);
        QVERIFY(disabled.blue() < 200 && qAbs(disabled.red() - disabled.blue()) < 20);
        QCOMPARE(qAlpha(image.pixel(belowPoint)), 0);
    }
};

QTEST_MAIN(TestComponents)
#include "tst_components.moc"
