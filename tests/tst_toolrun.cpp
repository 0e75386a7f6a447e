// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/ToolRun.h"
#include "support/EngineFixture.h"
#include "support/TestSupport.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A stand-in tool: a shell script in dir.
ToolRun::Command script(const QTemporaryDir& dir, const QByteArray& body)
{
    ToolRun::Command command;
    command.program = TestSupport::writeScript(dir.filePath(u"tool"_s), "#!/bin/sh\n" + body);
    return command;
}

struct Finished
{
    QStringList lines;
    std::optional<ToolRun::Result> result;
};

// Starts run and records what it hands out.
std::shared_ptr<Finished> follow(ToolRun& run)
{
    auto seen = std::make_shared<Finished>();
    QObject::connect(&run, &ToolRun::lineRead, &run,
                     [seen](QByteArrayView line) { seen->lines << QString::fromUtf8(line); });
    QObject::connect(&run, &ToolRun::finished, &run,
                     [seen](const ToolRun::Result& result) { seen->result = result; });
    run.start();
    return seen;
}

bool noneLeft(const QString& marker)
{
    return QTest::qWaitFor([&] { return EngineFixture::processesMentioning(marker).isEmpty(); },
                           5000);
}

} // namespace

// The one runner of child processes: lines, the error stream, the outcomes, and the tool's
// whole process group ended however the run ends.
class TestToolRun : public QObject
{
    Q_OBJECT

private slots:
    void linesAndErrors()
    {
        QTemporaryDir dir;
        ToolRun run(script(dir, "printf 'one\\ntw'; sleep 0.2; printf 'o\\r\\nlast'\n"
                                "printf 'WARNING: a\\nERROR: first\\nERROR: second\\n' >&2\n"
                                "exit 3\n"));
        const auto seen = follow(run);
        QTRY_VERIFY(seen->result.has_value());
        QCOMPARE(seen->lines, (QStringList{u"one"_s, u"two"_s, QString(), u"last"_s}));
        QCOMPARE(seen->result->outcome, ToolRun::Outcome::exited);
        QCOMPARE(seen->result->exitCode, 3);
        QVERIFY(!seen->result->succeeded());
        QCOMPARE(seen->result->errorText(), u"first"_s);

        // Without an "ERROR:" line the end of the stream speaks; text that is not UTF-8 says
        // nothing.
        ToolRun::Result result;
        result.errorTail = "\x80\x80tail end\n";
        QCOMPARE(result.errorText(), u"tail end\n"_s);
        result.firstErrorLine = "ERROR: \xff\xfe";
        QCOMPARE(result.errorText(), std::nullopt);
    }

    // A tool that floods both streams without a line end keeps the runner's memory bounded:
    // the endless line is dropped whole, the error stream keeps only its tail and first error.
    void floodStaysBounded()
    {
        QTemporaryDir dir;
        ToolRun run(script(dir, "head -c 100000000 /dev/zero | tr '\\0' x\nprintf '\\nafter\\n'\n"
                                "printf 'ERROR: early\\n' >&2\n"
                                "head -c 30000000 /dev/zero | tr '\\0' e >&2\n"));
        const auto seen = follow(run);
        QTRY_VERIFY_WITH_TIMEOUT(seen->result.has_value(), 60000);
        QCOMPARE(seen->lines, QStringList{u"after"_s});
        QCOMPARE(seen->result->errorTail.size(), ToolRun::kErrorTailBytes);
        QCOMPARE(seen->result->firstErrorLine, "ERROR: early"_ba);

        // Output kept whole stops at its limit.
        ToolRun::Command whole = script(dir, "head -c 5000000 /dev/zero\n");
        whole.wholeOutputLimit = 1000;
        const ToolRun::Result cut = ToolRun::runToEnd(whole, 30000);
        QVERIFY(cut.succeeded());
        QVERIFY(cut.outputCut);
        QCOMPARE(cut.output.size(), 1000);
    }

    // However a run is ended, early, silent or dropped, its whole group goes, a child that
    // ignores the polite signal too.
    void endsTheWholeGroup_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("silence") << u"silence"_s;
        QTest::newRow("cancel") << u"cancel"_s;
        QTest::newRow("destroyed") << u"destroyed"_s;
        QTest::newRow("blocking run's time limit") << u"blocking"_s;
    }
    void endsTheWholeGroup()
    {
        QFETCH(QString, how);
        QTemporaryDir dir;
        const QString marker = dir.path();
        // A child of its own, told apart from any other test's by its length.
        const QString child =
            u"sleep %1"_s.arg(86400 + QRandomGenerator::global()->bounded(100000));
        ToolRun::Command command = script(dir, "(trap '' TERM; exec " + child.toUtf8() +
                                                   ") &\ntrap '' TERM\necho started\n"
                                                   "while :; do sleep 0.1; done\n");
        command.silenceLimitMs = how == u"silence" ? 500 : 0;
        auto run = std::make_unique<ToolRun>(command);
        if (how == u"blocking") {
            QCOMPARE(ToolRun::runToEnd(command, 500).outcome, ToolRun::Outcome::timedOut);
        } else {
            const auto seen = follow(*run);
            QTRY_COMPARE(seen->lines, QStringList{u"started"_s});
            if (how == u"cancel")
                run->cancel();
            if (how == u"destroyed")
                run.reset();
            else
                QTRY_COMPARE_WITH_TIMEOUT(seen->result.value_or(ToolRun::Result()).outcome,
                                          how == u"cancel" ? ToolRun::Outcome::cancelled
                                                           : ToolRun::Outcome::timedOut,
                                          10000);
        }
        QVERIFY(noneLeft(marker));
        QVERIFY(EngineFixture::processesMentioning(child).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestToolRun)
#include "tst_toolrun.moc"
