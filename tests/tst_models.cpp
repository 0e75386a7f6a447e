// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/ToolAdvice.h"
#include "models/VideoMetadata.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestModels : public QObject
{
    Q_OBJECT

private slots:
    void formattedDuration_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << qint64(0) << u"0:00"_s;
        QTest::newRow("61") << qint64(61) << u"1:01"_s;
        QTest::newRow("3599") << qint64(3599) << u"59:59"_s;
        QTest::newRow("3600") << qint64(3600) << u"1:00:00"_s;
        QTest::newRow("36000") << qint64(36000) << u"10:00:00"_s;
    }
    void formattedDuration()
    {
        QFETCH(qint64, seconds);
        QFETCH(QString, text);
        QCOMPARE(VideoMetadata::formattedDuration(seconds), text);
    }

    void advice_data()
    {
        QTest::addColumn<QString>("error");
        QTest::addColumn<ToolAdvice::Kind>("kind");
        using Kind = ToolAdvice::Kind;
        QTest::newRow("format") << u"[youtube] x: Requested format is not available."_s
                                << Kind::updateTools;
        QTest::newRow("any case") << u"WARNING: NO SUPPORTED JAVASCRIPT RUNTIME could be found"_s
                                  << Kind::updateTools;
        QTest::newRow("nsig") << u"nsig extraction failed: Some formats may be missing"_s
                              << Kind::updateTools;
        QTest::newRow("curly apostrophe")
            << u"Sign in to confirm you\u2019re not a bot. Use --cookies"_s << Kind::useCookies;
        QTest::newRow("straight apostrophe") << u"you're not a bot"_s << Kind::useCookies;
        QTest::newRow("age") << u"This video is age-restricted"_s << Kind::useCookies;
        QTest::newRow("other") << u"HTTP Error 404: Not Found"_s << Kind::none;
    }
    void advice()
    {
        QFETCH(QString, error);
        QFETCH(ToolAdvice::Kind, kind);
        QCOMPARE(ToolAdvice::forError(error), kind);
        QCOMPARE(ToolAdvice::text(kind).isEmpty(), kind == ToolAdvice::Kind::none);
    }
};

QTEST_GUILESS_MAIN(TestModels)
#include "tst_models.moc"
