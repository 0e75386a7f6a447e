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
};

QTEST_GUILESS_MAIN(TestModels)
#include "tst_models.moc"
