// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/RipSuccessCard.h"

#include "models/DownloadStatus.h"
#include "models/Links.h"
#include "platform/DesktopServices.h"
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "views/components/DesktopTexts.h"
#include "views/components/ElidedLabel.h"
#include "views/components/LineBreaker.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Theme;

RipSuccessCard::RipSuccessCard(DownloadEngine& engine, HistoryStore& history,
                               AudioPlayerService& player, BatchRunner& batch,
                               DesktopServices& desktop, QWidget* parent)
    : GlassCard(new QWidget, 12, 12, parent)
    , m_engine(engine)
    , m_history(history)
    , m_player(player)
{
    QWidget* success = content();
    const auto [lines, layout] = Theme::lines(success, {}, 8, 12);
    layout->addWidget(symbol(QStringLiteral("checkmark.circle.fill"), green(palette()), 24));
    auto* texts = new QWidget(success);
    QVBoxLayout* textColumn = column(texts, 1);
    textColumn->addWidget(label(tr("Extraction Complete!"), Theme::font(13, QFont::Bold)));
    // One line; a long name is shortened in the middle so its extension stays in view.
    m_fileNameLabel = new ElidedLabel(texts);
    m_fileNameLabel->setFont(Theme::font(11));
    setTextColor(m_fileNameLabel, secondaryText(palette()));
    textColumn->addWidget(m_fileNameLabel);
    layout->addWidget(texts, 1);
    auto* actions = new QWidget(success);
    new LineBreaker(success, layout, lines, actions);
    QHBoxLayout* buttons = row(actions, 12);
    success = actions;

    m_playButton = new QPushButton(tr("Play"), success);
    m_playButton->setFont(Theme::font(11, QFont::DemiBold));
    makeProminent(m_playButton, green(palette()));
    connect(m_playButton, &QPushButton::clicked, this, [this] {
        if (const auto record = matchingRecord())
            m_player.play(*record);
    });
    buttons->addWidget(m_playButton);

    QPushButton* showFile =
        smallButton(DesktopTexts::showInFolder(), QStringLiteral("folder"), success);
    connect(showFile, &QPushButton::clicked, this, [this, &desktop] {
        const DownloadStatus status = m_engine.currentStatus();
        if (status.kind() == DownloadStatus::Kind::completed)
            desktop.revealFile(status.filePath());
    });
    buttons->addWidget(showFile);

    m_queuePlaylistButton =
        smallButton(tr("Queue the whole playlist"), QStringLiteral("music.note.list"), success);
    connect(m_queuePlaylistButton, &QPushButton::clicked, this, [this, &batch] {
        batch.addPlaylist(Links::playlistOf(m_engine.currentUrl()));
        emit navigationRequested(NavigationItem::batch);
    });
    buttons->addWidget(m_queuePlaylistButton);

    connect(&m_engine, &DownloadEngine::currentStatusChanged, this, &RipSuccessCard::updateStatus);
    connect(&m_history, &HistoryStore::tracksChanged, this, &RipSuccessCard::updatePlayButton);
    connect(&m_player, &AudioPlayerService::isPlayingChanged, this,
            &RipSuccessCard::updatePlayButton);
    connect(&m_player, &AudioPlayerService::currentTrackChanged, this,
            &RipSuccessCard::updatePlayButton);
    updateStatus();
}

void RipSuccessCard::updateStatus()
{
    const DownloadStatus status = m_engine.currentStatus();
    const bool completed = status.kind() == DownloadStatus::Kind::completed;
    setVisible(completed);
    if (completed) {
        const QString summary = m_engine.lastRipSummary();
        m_fileNameLabel->setText(summary.isEmpty() ? QFileInfo(status.filePath()).fileName()
                                                   : summary);
    }
    m_queuePlaylistButton->setVisible(completed &&
                                      !Links::playlistOf(m_engine.currentUrl()).isEmpty());
    updatePlayButton();
}

std::optional<HistoryTrack> RipSuccessCard::matchingRecord() const
{
    const DownloadStatus status = m_engine.currentStatus();
    if (status.kind() != DownloadStatus::Kind::completed)
        return std::nullopt;
    for (const HistoryTrack& track : m_history.tracks()) {
        if (track.filePath == status.filePath())
            return track;
    }
    return std::nullopt;
}

void RipSuccessCard::updatePlayButton()
{
    const std::optional<HistoryTrack> record = matchingRecord();
    m_playButton->setVisible(record.has_value());
    if (!record)
        return;
    const auto current = m_player.currentTrack();
    const bool playingThis =
        m_player.isPlaying() && current && current->filePath == record->filePath;
    const QString symbolName =
        playingThis ? QStringLiteral("pause.fill") : QStringLiteral("play.fill");
    m_playButton->setIcon(Symbols::icon(symbolName, Qt::white));
    // The symbol alone tells play from pause; say it in words for a screen reader.
    m_playButton->setAccessibleDescription(playingThis ? tr("Playing; press to pause")
                                                       : tr("Press to play"));
}
