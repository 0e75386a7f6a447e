// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ByteCountFormatter.h"

#include <QTest>
#include <limits>

class TestByteCount : public QObject
{
    Q_OBJECT

private slots:
    void formats_data()
    {
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<QString>("text");
        const auto row = [](qint64 bytes, const char16_t* text) {
            QTest::addRow("%lld", static_cast<long long>(bytes))
                << bytes << QString::fromUtf16(text);
        };
        row(0, u"Zero KB");
        row(1, u"1 byte");
        row(1000, u"1 KB");
        row(1500, u"2 KB");
        row(999499, u"999 KB");
        row(999500, u"1 MB");
        row(1500000, u"1.5 MB");
        row(1550000, u"1.6 MB");
        row(999950000, u"1 GB");
        row(1234567890, u"1.23 GB");
        row(1500000000000, u"1.5 TB");
        row(std::numeric_limits<qint64>::max(), u"9.22 EB");
        row(-1500000, u"-1.5 MB");
        row(std::numeric_limits<qint64>::min(), u"-9.22 EB");
    }
    void formats()
    {
        QFETCH(qint64, bytes);
        QFETCH(QString, text);
        QCOMPARE(formatByteCount(bytes), text);
    }
};

QTEST_GUILESS_MAIN(TestByteCount)
#include "tst_bytecount.moc"
