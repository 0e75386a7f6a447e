// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Translations.h"
#include "support/ScreenFixture.h"
#include "views/batch/BatchQueueModel.h"
#include "views/shell/ContentView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/NavigationItem.h"
#include "views/shell/ScreenFactory.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanupTestCase() { Translations::install(QLocale(u"en_US"_s)); }

    // The user's first language we ship wins; a region we lack reads its language.
    void chosenFromLocale()
    {
        for (const auto& [locale, language] : {std::pair{"de_AT", "de"},
                                               {"fr_CA", "fr"},
                                               {"es_MX", "es"},
                                               {"pt_BR", "pt_BR"},
                                               {"pt_PT", "pt_BR"},
                                               {"en_GB", ""},
                                               {"ja_JP", ""}})
            QCOMPARE(Translations::languageFor(QLocale(QLatin1StringView(locale))),
                     QLatin1StringView(language));
    }

    // Every screen comes up in the language. Samples: the sidebar's Library, the converter's
    // Paste, the batch title, the settings title; then a queue status and Qt's own Cancel.
    void screensSpeakTheLanguage_data()
    {
        QTest::addColumn<QString>("samples");
        QTest::newRow("de") << u"Bibliothek|Einfügen|Stapel-Audio-Ripper|Einstellungen|Wartet|"
                               u"Abbrechen"_s;
        QTest::newRow("fr") << u"Bibliothèque|Coller|Extraction audio par lot|Préférences|"
                               u"En attente|Annuler"_s;
        QTest::newRow("es") << u"Biblioteca|Pegar|Extracción de audio por lotes|Preferencias|"
                               u"En espera|Cancelar"_s;
        QTest::newRow("pt_BR") << u"Biblioteca|Colar|Extração de áudio em lote|Preferências|"
                                  u"Aguardando|Cancelar"_s;
    }
    void screensSpeakTheLanguage()
    {
        const QString language = QString::fromLatin1(QTest::currentDataTag());
        QCOMPARE(Translations::install(QLocale(language)), language);
        ScreenFixture::Environment env;
        ScreenFactory factory(env.services());
        MainWindow window(env.services(), factory);
        QStringList shown;
        for (NavigationItem item : Navigation::allCases()) {
            window.contentView()->setSelectedTab(item);
            for (const QLabel* label : window.findChildren<QLabel*>())
                shown << label->text();
            for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
                shown << button->text();
        }
        QFETCH(QString, samples);
        const QStringList expected = samples.split(u'|');
        for (const QString& text : expected.first(4))
            QVERIFY2(shown.contains(text), qPrintable(text));
        QVERIFY(!shown.contains(u"Paste"_s));
        QCOMPARE(BatchQueueModel::statusText(DownloadStatus::idle()), expected.at(4));
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), expected.at(5));
    }

    // Every shipped entry is translated and keeps the source's placeholders.
    void noUnfinishedEntries()
    {
        const QDir folder(qEnvironmentVariable("VELDTONE_SOURCE_DIR") + u"/src/translations"_s);
        const QStringList files = folder.entryList({u"veldtone_*.ts"_s});
        QCOMPARE(files.size(), Translations::shippedLanguages().size());
        static const QRegularExpression placeholder(u"%(\\d|n)"_s);
        for (const QString& name : files) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QXmlStreamReader xml(&file);
            QString source;
            while (!xml.atEnd()) {
                if (xml.readNext() != QXmlStreamReader::StartElement)
                    continue;
                if (xml.name() == u"source") {
                    source = xml.readElementText();
                } else if (xml.name() == u"translation") {
                    const QString where = name + u": "_s + source;
                    // "unfinished", "obsolete" and "vanished" are all not shipped as they are.
                    QVERIFY2(xml.attributes().value(u"type"_s).isEmpty(), qPrintable(where));
                    // A plural's forms come as one text.
                    const QString text =
                        xml.readElementText(QXmlStreamReader::IncludeChildElements);
                    QVERIFY2(!text.isEmpty(), qPrintable(where));
                    for (const auto& match : placeholder.globalMatch(source))
                        QVERIFY2(text.contains(match.captured()), qPrintable(where));
                }
            }
            QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        }
    }
};

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
