// SPDX-License-Identifier: GPL-3.0-or-later
// Library figures: start-up load, one add with its save, a whole save, and one search
// keystroke, at 10,000 and 100,000 realistic records.
#include "Bench.h"
#include "models/HistoryTrackJson.h"
#include "models/LibrarySearchIndex.h"
#include "services/HistoryStore.h"

#include <QFile>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QTemporaryDir>
#include <optional>
#include <time.h>

namespace {

const QStringList kWords = {
    u"Love"_qs,  u"Night"_qs,   u"Summer"_qs,    u"Heart"_qs,    u"Dance"_qs,  u"Fire"_qs,
    u"River"_qs, u"Dream"_qs,   u"Golden"_qs,    u"Midnight"_qs, u"Shadow"_qs, u"Light"_qs,
    u"City"_qs,  u"Ocean"_qs,   u"Electric"_qs,  u"Wild"_qs,     u"Blue"_qs,   u"Home"_qs,
    u"Stars"_qs, u"Running"_qs, u"Caf\u00e9"_qs, u"Forever"_qs,  u"Echo"_qs,   u"Storm"_qs};
const QStringList kSuffixes = {u" (Official Video)"_qs, u" (Lyrics)"_qs, u" [Live]"_qs,
                               u" (Audio)"_qs,          QString(),       u" - Remastered 2011"_qs};

QString videoId(QRandomGenerator& random)
{
    static const char16_t kChars[] =
        u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    QString id;
    for (int i = 0; i < 11; ++i)
        id += QChar(kChars[random.bounded(64)]);
    return id;
}

QList<HistoryTrack> realisticTracks(int count)
{
    QRandomGenerator random(42);
    QList<HistoryTrack> tracks;
    tracks.reserve(count);
    for (int i = 0; i < count; ++i) {
        HistoryTrack t;
        t.id = QUuid::createUuid();
        const QString artist =
            kWords[random.bounded(kWords.size())] + u' ' + kWords[random.bounded(kWords.size())];
        QString song;
        for (int w = 1 + random.bounded(4); w > 0; --w)
            song += (song.isEmpty() ? QString() : u" "_qs) + kWords[random.bounded(kWords.size())];
        t.title = artist + u" - " + song + kSuffixes[random.bounded(kSuffixes.size())];
        t.channel = artist + (random.bounded(2) ? u"VEVO"_qs : u" - Topic"_qs);
        t.duration = QStringLiteral("%1:%2")
                         .arg(2 + random.bounded(5))
                         .arg(random.bounded(60), 2, 10, QLatin1Char('0'));
        t.format = AudioFormat::allCases()[random.bounded(5)];
        t.quality = AudioQuality::allCases()[random.bounded(5)];
        t.filePath = QStringLiteral("/home/listener/Music/Veldtone/") + t.title + u'.' +
                     t.format.fileExtension();
        t.fileSize = QStringLiteral("%1.%2 MB").arg(2 + random.bounded(9)).arg(random.bounded(10));
        const QString id = videoId(random);
        t.thumbnailUrl =
            QStringLiteral("https://i.ytimg.com/vi/") + id + QStringLiteral("/maxresdefault.jpg");
        t.completedAt = 700000000.0 + random.generateDouble() * 90000000.0;
        t.youtubeUrl = QStringLiteral("https://www.youtube.com/watch?v=") + id;
        tracks << t;
    }
    return tracks;
}

// A memory line of /proc/self/status ("VmHWM:", "VmRSS:") in MB; no value without /proc.
std::optional<double> statusMb(const QByteArray& key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return std::nullopt;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').first().toDouble() / 1024.0;
    }
    return std::nullopt;
}

void resetPeakRss()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
}

double processCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// Adds name (median wall time of runs) and, with cpu, name_cpu: the median processor time of
// all threads, which says more than wall time on a busy machine.
template <typename F>
void addTiming(std::vector<BenchFigure>& figures, const QString& name, int runs, F&& run,
               bool cpu = false)
{
    std::vector<double> wall;
    std::vector<double> processor;
    for (int i = 0; i < runs; ++i) {
        const double cpuStart = processCpuMs();
        QElapsedTimer timer;
        timer.start();
        run();
        wall.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        processor.push_back(processCpuMs() - cpuStart);
    }
    figures.push_back({name + u"_ms"_qs, benchMedian(wall), u"ms"_qs});
    if (cpu)
        figures.push_back({name + u"_cpu_ms"_qs, benchMedian(processor), u"ms"_qs});
}

std::vector<BenchFigure> libraryFigures(int count, const QString& size)
{
    std::vector<BenchFigure> figures;
    QTemporaryDir dir;
    const QList<HistoryTrack> tracks = realisticTracks(count);
    const QByteArray json = HistoryTrackJson::encode(tracks).value();
    {
        QFile file(dir.filePath(u"history.json"_qs));
        file.open(QIODevice::WriteOnly);
        file.write(json);
    }
    figures.push_back(
        {u"library_file_"_qs + size + u"_mb"_qs, static_cast<double>(json.size()) / 1e6, u"MB"_qs});

    resetPeakRss();
    const std::optional<double> before = statusMb("VmRSS:");
    const auto load = [&] {
        HistoryStore store(dir.path());
        store.waitForLoad();
        if (store.tracks().size() != count)
            qFatal("library did not load");
    };
    // The first load meets fresh memory, as an app start does; later ones reuse freed pages.
    addTiming(figures, u"library_load_"_qs + size + u"_first"_qs, 1, load, true);
    addTiming(figures, u"library_load_"_qs + size, 5, load, true);
    // How far a load raises the peak above what the process held before it.
    if (const std::optional<double> peak = statusMb("VmHWM:"); peak && before) {
        figures.push_back(
            {u"library_load_"_qs + size + u"_peak_extra_mb"_qs, *peak - *before, u"MB"_qs});
    }

    // One add at the top of the library, until its save is on disk; _gui is the part that
    // runs on the GUI thread.
    HistoryStore store(dir.path());
    store.waitForLoad();
    const QList<HistoryTrack> extra = realisticTracks(7);
    int next = 0;
    std::vector<double> guiMs;
    const auto add = [&] {
        HistoryTrack added = extra[next++];
        added.id = QUuid::createUuid();
        added.filePath += u".new"_qs;
        QElapsedTimer gui;
        gui.start();
        store.addTrack(added);
        guiMs.push_back(static_cast<double>(gui.nsecsElapsed()) / 1e6);
        store.waitForSaves();
    };
    addTiming(figures, u"library_add_"_qs + size, 7, add, true);
    figures.push_back({u"library_add_"_qs + size + u"_gui_ms"_qs, benchMedian(guiMs), u"ms"_qs});

    if (count < 100000)
        return figures;

    const auto save = [&] {
        QSaveFile file(dir.filePath(u"copy.json"_qs));
        file.open(QIODevice::WriteOnly);
        file.write(HistoryTrackJson::encode(tracks).value());
        file.commit();
    };
    addTiming(figures, u"library_save_"_qs + size, 5, save, true);

    LibrarySearchIndex index;
    addTiming(figures, u"library_index_build_"_qs + size, 5, [&] { index.rebuild(tracks); });
    qsizetype found = 0;
    addTiming(
        figures, u"library_filter_"_qs + size, 21,
        [&] { found = index.matches(u"love"_qs, u"All"_qs).size(); }, true);
    addTiming(figures, u"library_filter_"_qs + size + u"_format"_qs, 21,
              [&] { found += index.matches(u"night"_qs, u"MP3"_qs).size(); });
    if (found == 0)
        qFatal("search found nothing");
    return figures;
}

BenchRegistration registration("library", [] {
    std::vector<BenchFigure> figures = libraryFigures(10000, u"10k"_qs);
    for (BenchFigure& figure : libraryFigures(100000, u"100k"_qs))
        figures.push_back(std::move(figure));
    return figures;
});

} // namespace
