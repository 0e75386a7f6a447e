// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/ConverterView.h"

#include "models/DisplayTexts.h"
#include "models/DownloadStatus.h"
#include "models/Links.h"
#include "models/ToolAdvice.h"
#include "platform/DesktopServices.h"
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "services/ToolUpdater.h"
#include "views/components/ActivitySpinner.h"
#include "views/components/DesktopTexts.h"
#include "views/components/ElidedLabel.h"
#include "views/components/GlassCard.h"
#include "views/components/GradientButton.h"
#include "views/components/OutputOptionsForm.h"
#include "views/components/RoundedPanel.h"
#include "views/components/SlimProgressBar.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"
#include "views/converter/AppBadge.h"
#include "views/converter/StatusPill.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Theme;

namespace {

const QList<QColor> kStartGradient = {QColor(255, 59, 48), QColor(255, 149, 0)};

// A symbol followed by a text, added to a row; returns the text part.
QLabel* symbolText(const QString& symbolName, const QColor& color, int pixelSize, QWidget* owner,
                   QHBoxLayout* layout)
{
    layout->addWidget(symbol(symbolName, color, pixelSize, owner));
    layout->addSpacing(3);
    QLabel* text = label(QString(), font(pixelSize), owner);
    setTextColor(text, color);
    layout->addWidget(text);
    return text;
}

} // namespace

ConverterView::ConverterView(DownloadEngine& engine, DependencyManager& tools,
                             HistoryStore& history, AudioPlayerService& player, BatchRunner& batch,
                             ToolUpdater& updater, DesktopServices* desktop, QWidget* parent)
    : ThemedScreen(Scrolling::scrolls, parent)
    , m_engine(engine)
    , m_tools(tools)
    , m_history(history)
    , m_player(player)
    , m_batch(batch)
    , m_updater(updater)
    , m_desktop(desktop ? *desktop : DesktopServices::system())
{
    setAccessibleName(tr("Converter"));
    buildContent();

    for (auto signal :
         {&DependencyManager::isReadyChanged, &DependencyManager::isCheckingChanged,
          &DependencyManager::isInstallingChanged, &DependencyManager::installProgressChanged}) {
        connect(&m_tools, signal, this, &ConverterView::updateTools);
    }
    for (auto signal : {&ToolUpdater::ytDlpOutOfDateChanged, &ToolUpdater::isUpdatingChanged,
                        &ToolUpdater::messageChanged})
        connect(&m_updater, signal, this, &ConverterView::updateTools);
    // The start button's title names the chosen format and quality.
    connect(&m_engine, &DownloadEngine::selectedFormatChanged, this,
            &ConverterView::updateStartButton);
    connect(&m_engine, &DownloadEngine::selectedQualityChanged, this,
            &ConverterView::updateStartButton);
    connect(&m_engine, &DownloadEngine::currentStatusChanged, this, &ConverterView::updateStatus);
    connect(&m_engine, &DownloadEngine::currentMetadataChanged, this,
            &ConverterView::updateRipFacts);
    connect(&m_history, &HistoryStore::tracksChanged, this, &ConverterView::updatePlayButton);
    connect(&m_batch, &BatchRunner::previewChanged, this, &ConverterView::updatePlaylistOffer);
    connect(&m_player, &AudioPlayerService::isPlayingChanged, this,
            &ConverterView::updatePlayButton);
    connect(&m_player, &AudioPlayerService::currentTrackChanged, this,
            &ConverterView::updatePlayButton);
}

ConverterView::~ConverterView() = default;

void ConverterView::buildContent()
{
    const QString link = m_linkField ? m_linkField->text() : QString();
    QWidget* content = beginContent();
    // Cards keep room around their panels for the shadow; the margins and gaps here are
    // trimmed by that room so the panels sit 20 from the sides and 16 apart.
    const QMargins shadow = GlassCard::shadowMargins();
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(20 - shadow.left(), 16, 20 - shadow.right(), 16 - shadow.bottom());
    layout->setSpacing(0);
    QWidget* header = buildHeader();
    header->setContentsMargins(shadow.left(), 0, shadow.right(), 0);
    layout->addWidget(header);
    m_updateLine = buildUpdateLine();
    m_updateLine->setContentsMargins(shadow.left(), 6, shadow.right(), 0);
    layout->addWidget(m_updateLine);
    layout->addSpacing(16 - shadow.top());
    layout->addWidget(buildMissingToolsCard());
    layout->addWidget(buildLinkCard());
    layout->addWidget(buildConfigurationCard());
    layout->addWidget(buildStatusGroup());
    layout->addStretch(1);
    m_linkField->setText(link);
    // Show the parts for the current state before the scroll area measures them: hiding a
    // part of a layout that has never been laid out does not reach the measures it caches.
    updateTools();
    updateStatus();
    updateRipFacts();
    updatePlaylistOffer();
    finishContent(content);
}

QString ConverterView::inputUrl() const
{
    return m_linkField->text();
}

void ConverterView::setInputUrl(const QString& text)
{
    m_linkField->setText(text);
}

QString ConverterView::rippingTitle(AudioFormat format, AudioQuality quality)
{
    QString choice = format.rawValue().toUpper();
    if (format.supportsBitrate())
        choice += DisplayTexts::kSeparator + quality.shortName();
    return tr("Rip Audio (%1)").arg(choice);
}

QString ConverterView::percentText(double progress)
{
    return QString::asprintf("%.1f%%", progress * 100);
}

void ConverterView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QLinearGradient background(0, 0, 0, height());
    background.setColorAt(0, Theme::windowBackground(palette()));
    background.setColorAt(1, Theme::withOpacity(Theme::controlBackground(palette()), 0.85));
    painter.fillRect(rect(), Theme::windowBackground(palette()));
    painter.fillRect(rect(), background);
}

QWidget* ConverterView::buildHeader()
{
    auto* header = new QWidget(this);
    QHBoxLayout* layout = row(header, 12);
    layout->addWidget(new AppBadge(header));

    auto* titles = new QWidget(header);
    QVBoxLayout* titleColumn = column(titles, 2);
    titleColumn->addWidget(
        label(QStringLiteral("Veldtone"), Theme::font(20, QFont::Bold, Face::rounded)));
    QLabel* tagline =
        label(tr("Rip studio-quality MP3 & audio from YouTube videos"), Theme::font(12), titles);
    setTextColor(tagline, secondaryText(palette()));
    // Wraps rather than pushing the status off a narrow window in a longer language.
    tagline->setWordWrap(true);
    titleColumn->addWidget(tagline);
    layout->addWidget(titles, 1);

    m_pill = new StatusPill(header);
    layout->addWidget(m_pill);
    return header;
}

QWidget* ConverterView::buildUpdateLine()
{
    // Below the status, never in its place: an old yt-dlp still counts as ready.
    auto* line = new QWidget(this);
    QHBoxLayout* layout = row(line, 8);
    layout->addStretch(1);
    m_updateSpinner = new ActivitySpinner(14, line);
    layout->addWidget(m_updateSpinner);
    m_updateText = label(QString(), Theme::font(11, QFont::Medium), line);
    setTextColor(m_updateText, orange(palette()));
    layout->addWidget(m_updateText);
    m_updateButton = smallButton(tr("Update Tools"), QString(), line);
    connect(m_updateButton, &QPushButton::clicked, &m_updater, &ToolUpdater::updateTools);
    layout->addWidget(m_updateButton);
    return line;
}

QWidget* ConverterView::buildMissingToolsCard()
{
    auto* content = new QWidget;
    QHBoxLayout* layout = row(content, 10);
    layout->addWidget(
        symbol(QStringLiteral("exclamationmark.triangle.fill"), orange(palette()), 18));

    auto* texts = new QWidget(content);
    QVBoxLayout* textColumn = column(texts, 2);
    textColumn->addWidget(
        label(tr("Tools Missing (yt-dlp or ffmpeg)"), Theme::font(12, QFont::DemiBold)));
    m_missingToolsDetail = label(QString(), Theme::font(11), texts);
    m_missingToolsDetail->setWordWrap(true);
    textColumn->addWidget(m_missingToolsDetail);
    layout->addWidget(texts, 1);

    m_installSpinner = new ActivitySpinner(16, content);
    layout->addWidget(m_installSpinner);
    m_installButton = new QPushButton(tr("Install Automatically"), content);
    m_installButton->setFont(Theme::font(11));
    makeProminent(m_installButton, orange(palette()));
    connect(m_installButton, &QPushButton::clicked, this,
            [this] { m_tools.installDependenciesAutomatically(); });
    layout->addWidget(m_installButton);

    m_missingToolsCard = new GlassCard(content, 10, 10, this);
    return m_missingToolsCard;
}

QWidget* ConverterView::buildLinkCard()
{
    auto* content = new QWidget;
    QVBoxLayout* layout = column(content, 8);
    layout->addWidget(caption(tr("YouTube Video Link"), this));

    auto* input = new RoundedPanel(QPalette::Base, 0.8, 8, content);
    QHBoxLayout* inputRow = row(input, 8);
    inputRow->setContentsMargins(8, 8, 8, 8);
    inputRow->addWidget(symbol(QStringLiteral("link"), secondaryText(palette()), 13, input));

    m_linkField = new QLineEdit(input);
    m_linkField->setFont(Theme::font(13));
    m_linkField->setAccessibleName(tr("YouTube Video Link"));
    m_linkField->setPlaceholderText(
        tr("https://www.youtube.com/watch?v=dQw4w9WgXcQ or https://youtu.be/dQw4w9WgXcQ"));
    // The rounded panel behind is the field's background.
    makeBorderless(m_linkField);
    inputRow->addWidget(m_linkField, 1);

    m_clearButton = new QToolButton(input);
    m_clearButton->setAutoRaise(true);
    m_clearButton->setIcon(
        Symbols::icon(QStringLiteral("xmark.circle.fill"), secondaryText(palette()), 14));
    m_clearButton->setToolTip(tr("Clear"));
    m_clearButton->setAccessibleName(tr("Clear"));
    m_clearButton->setStyleSheet(plainButtonSheet(secondaryText(palette())));
    m_clearButton->setCursor(Qt::ArrowCursor);
    connect(m_clearButton, &QToolButton::clicked, this, [this] { m_linkField->clear(); });
    inputRow->addWidget(m_clearButton);

    m_pasteButton = smallButton(tr("Paste"), QStringLiteral("doc.on.clipboard"), input);
    m_pasteButton->setFont(Theme::font(11, QFont::Medium));
    connect(m_pasteButton, &QPushButton::clicked, this, &ConverterView::pasteFromClipboard);
    inputRow->addWidget(m_pasteButton);
    layout->addWidget(input);

    connect(m_linkField, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_clearButton->setVisible(!text.isEmpty());
        // The playlist offered is the one in the field.
        if (m_batch.previewLink() != text.trimmed())
            m_batch.clearPreview();
        updateStartButton();
    });
    m_clearButton->setVisible(false);
    return new GlassCard(content, 12, 12, this);
}

QWidget* ConverterView::buildConfigurationCard()
{
    auto* form = new OutputOptionsForm(OutputOptionsForm::Kind::converter, m_engine, m_desktop);
    return new GlassCard(form, 12, 12, this);
}

QWidget* ConverterView::buildStatusGroup()
{
    auto* group = new QWidget(this);
    // The cards' shadow room already keeps them apart from the action row.
    QVBoxLayout* layout = column(group, 0);

    // Progress card: the downloading form or the converting form, then "Cancel Download".
    auto* progress = new QWidget;
    QVBoxLayout* progressLayout = column(progress, 10);

    // What is being ripped, once the tool has said.
    m_ripFacts = new QWidget(progress);
    QVBoxLayout* facts = column(m_ripFacts, 1);
    m_ripTitleLabel = new ElidedLabel(m_ripFacts);
    m_ripTitleLabel->setFont(Theme::font(13, QFont::Bold));
    facts->addWidget(m_ripTitleLabel);
    m_ripDetailLabel = new ElidedLabel(m_ripFacts);
    m_ripDetailLabel->setFont(Theme::font(11));
    setTextColor(m_ripDetailLabel, secondaryText(palette()));
    facts->addWidget(m_ripDetailLabel);
    m_ripFacts->hide();
    progressLayout->addWidget(m_ripFacts);

    m_downloadingForm = new QWidget(progress);
    QVBoxLayout* downloading = column(m_downloadingForm, 6);
    auto* headline = new QWidget(m_downloadingForm);
    QHBoxLayout* headlineRow = row(headline, 6);
    headlineRow->addWidget(new ActivitySpinner(14, headline));
    headlineRow->addWidget(label(tr("Downloading Audio..."), Theme::font(12, QFont::DemiBold)));
    headlineRow->addStretch(1);
    m_percentLabel = label(QString(), Theme::font(12, QFont::Bold, Face::monospaced), headline);
    setTextColor(m_percentLabel, orange(palette()));
    headlineRow->addWidget(m_percentLabel);
    downloading->addWidget(headline);

    m_progressBar = new SlimProgressBar(m_downloadingForm);
    m_progressBar->setRange(0, 1000);
    m_progressBar->setTextVisible(false);
    m_progressBar->setFixedHeight(6);
    m_progressBar->setAccessibleName(tr("Download progress"));
    downloading->addWidget(m_progressBar);

    auto* details = new QWidget(m_downloadingForm);
    QHBoxLayout* detailRow = row(details, 0);
    const QColor dim = secondaryText(palette());
    m_speedLabel = symbolText(QStringLiteral("arrow.down.circle"), dim, 10, details, detailRow);
    detailRow->addStretch(1);
    // The ETA label carries its own trailing space, so hiding it leaves one gap, not two.
    m_etaGroup = new QWidget(details);
    QHBoxLayout* etaRow = row(m_etaGroup, 0);
    m_etaLabel = symbolText(QStringLiteral("clock"), dim, 10, m_etaGroup, etaRow);
    etaRow->addStretch(1);
    detailRow->addWidget(m_etaGroup, 1);
    m_sizeLabel = symbolText(QStringLiteral("internaldrive"), dim, 10, details, detailRow);
    downloading->addWidget(details);
    progressLayout->addWidget(m_downloadingForm);

    m_convertingForm = new QWidget(progress);
    QHBoxLayout* converting = row(m_convertingForm, 8);
    converting->addWidget(new ActivitySpinner(14, m_convertingForm));
    m_stageLabel = label(QString(), Theme::font(12, QFont::Medium), m_convertingForm);
    setTextColor(m_stageLabel, orange(palette()));
    converting->addWidget(m_stageLabel, 1);
    progressLayout->addWidget(m_convertingForm);

    auto* cancelRow = new QWidget(progress);
    QHBoxLayout* cancelLayout = row(cancelRow, 0);
    cancelLayout->addStretch(1);
    m_cancelButton = new QPushButton(tr("Cancel Download"), cancelRow);
    m_cancelButton->setFont(Theme::font(11, QFont::Medium));
    m_cancelButton->setIcon(Symbols::icon(QStringLiteral("xmark.circle.fill"), red(palette()), 13));
    m_cancelButton->setStyleSheet(plainButtonSheet(red(palette())));
    m_cancelButton->setCursor(Qt::PointingHandCursor);
    connect(m_cancelButton, &QPushButton::clicked, this, [this] { m_engine.cancel(); });
    cancelLayout->addWidget(m_cancelButton);
    progressLayout->addWidget(cancelRow);
    m_progressCard = new GlassCard(progress, 12, 12, group);
    layout->addWidget(m_progressCard);

    // Success card.
    auto* success = new QWidget;
    QHBoxLayout* successRow = row(success, 12);
    successRow->addWidget(symbol(QStringLiteral("checkmark.circle.fill"), green(palette()), 24));
    auto* successTexts = new QWidget(success);
    QVBoxLayout* successColumn = column(successTexts, 1);
    successColumn->addWidget(label(tr("Extraction Complete!"), Theme::font(13, QFont::Bold)));
    // One line; a long name is shortened in the middle so its extension stays in view.
    m_fileNameLabel = new ElidedLabel(successTexts);
    m_fileNameLabel->setFont(Theme::font(11));
    setTextColor(m_fileNameLabel, secondaryText(palette()));
    successColumn->addWidget(m_fileNameLabel);
    successRow->addWidget(successTexts, 1);
    m_playButton = new QPushButton(tr("Play"), success);
    m_playButton->setFont(Theme::font(11, QFont::DemiBold));
    makeProminent(m_playButton, green(palette()));
    connect(m_playButton, &QPushButton::clicked, this, &ConverterView::playFinishedTrack);
    successRow->addWidget(m_playButton);
    m_showFileButton = smallButton(DesktopTexts::showInFolder(), QStringLiteral("folder"), success);
    connect(m_showFileButton, &QPushButton::clicked, this, &ConverterView::showFinishedFile);
    successRow->addWidget(m_showFileButton);
    m_queuePlaylistButton =
        smallButton(tr("Queue the whole playlist"), QStringLiteral("music.note.list"), success);
    connect(m_queuePlaylistButton, &QPushButton::clicked, this, [this] {
        m_batch.addPlaylist(Links::playlistOf(m_engine.currentUrl()));
        emit navigationRequested(NavigationItem::batch);
    });
    successRow->addWidget(m_queuePlaylistButton);
    m_successCard = new GlassCard(success, 12, 12, group);
    layout->addWidget(m_successCard);

    // Failure card.
    auto* failure = new QWidget;
    QHBoxLayout* failureRow = row(failure, 10);
    failureRow->addWidget(symbol(QStringLiteral("xmark.octagon.fill"), red(palette()), 20), 0,
                          Qt::AlignVCenter);
    auto* failureTexts = new QWidget(failure);
    QVBoxLayout* failureColumn = column(failureTexts, 2);
    failureColumn->addWidget(label(tr("Extraction Failed"), Theme::font(12, QFont::Bold)));
    m_errorLabel = label(QString(), Theme::font(11), failureTexts);
    m_errorLabel->setWordWrap(true);
    m_errorLabel->setMaximumHeight(m_errorLabel->fontMetrics().lineSpacing() * 3 + 2);
    m_errorLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    setTextColor(m_errorLabel, secondaryText(palette()));
    failureColumn->addWidget(m_errorLabel);
    // One line of advice when the error says what would help, with the way to it.
    m_adviceRow = new QWidget(failureTexts);
    QHBoxLayout* adviceLayout = row(m_adviceRow, 8);
    m_adviceLabel = label(QString(), Theme::font(11, QFont::Medium), m_adviceRow);
    m_adviceLabel->setWordWrap(true);
    setTextColor(m_adviceLabel, orange(palette()));
    adviceLayout->addWidget(m_adviceLabel, 1);
    m_adviceButton = smallButton(QString(), QString(), m_adviceRow);
    connect(m_adviceButton, &QPushButton::clicked, this, [this] {
        if (ToolAdvice::forError(m_engine.currentStatus().error()) == ToolAdvice::Kind::updateTools)
            m_updater.updateTools();
        else
            emit navigationRequested(NavigationItem::settings);
    });
    adviceLayout->addWidget(m_adviceButton);
    failureColumn->addWidget(m_adviceRow);
    failureRow->addWidget(failureTexts, 1);
    m_dismissButton = smallButton(tr("Dismiss"), QString(), failure);
    connect(m_dismissButton, &QPushButton::clicked, this, &ConverterView::dismiss);
    failureRow->addWidget(m_dismissButton);
    m_failureCard = new GlassCard(failure, 12, 12, group);
    layout->addWidget(m_failureCard);

    // Playlist card: a playlist link is listed, then offered to the batch.
    auto* playlist = new QWidget;
    QHBoxLayout* playlistRow = row(playlist, 10);
    playlistRow->addWidget(symbol(QStringLiteral("music.note.list"), accent(palette()), 20));
    m_playlistSpinner = new ActivitySpinner(14, playlist);
    playlistRow->addWidget(m_playlistSpinner);
    m_playlistText = label(QString(), Theme::font(12, QFont::Medium), playlist);
    m_playlistText->setWordWrap(true);
    playlistRow->addWidget(m_playlistText, 1);
    m_ripPlaylistButton =
        smallButton(QString(), QStringLiteral("arrow.down.circle.fill"), playlist);
    makeProminent(m_ripPlaylistButton, orange(palette()));
    connect(m_ripPlaylistButton, &QPushButton::clicked, this, [this] {
        m_batch.ripPreview();
        emit navigationRequested(NavigationItem::batch);
    });
    playlistRow->addWidget(m_ripPlaylistButton);
    m_playlistCard = new GlassCard(playlist, 12, 12, group);
    layout->addWidget(m_playlistCard);

    // Action row.
    auto* actions = new QWidget(group);
    QHBoxLayout* actionRow = row(actions, 12);
    actionRow->setContentsMargins(0, 4, 0, 0);
    actionRow->addStretch(1);
    m_startButton = new GradientButton(QString(), QStringLiteral("arrow.down.to.line.compact"),
                                       kStartGradient, actions);
    connect(m_startButton, &GradientButton::clicked, this, &ConverterView::startRip);
    actionRow->addWidget(m_startButton);
    m_newRipButton = new QPushButton(tr("New Rip"), actions);
    m_newRipButton->setFont(Theme::font(12));
    connect(m_newRipButton, &QPushButton::clicked, this, &ConverterView::newRip);
    actionRow->addWidget(m_newRipButton);
    actionRow->addStretch(1);
    layout->addWidget(actions);
    return group;
}

void ConverterView::startRip()
{
    // This click is when the screen's choices are kept for the next launch.
    m_engine.savePreferences();
    // A playlist is offered to the batch rather than ripped here.
    const QString link = m_linkField->text().trimmed();
    if (Links::isList(link)) {
        m_batch.previewPlaylist(link);
        return;
    }
    // The engine trims and checks the link itself.
    m_engine.startExtraction(m_linkField->text());
}

void ConverterView::pasteFromClipboard()
{
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    if (!mime || !mime->hasText())
        return;
    m_linkField->setText(mime->text().trimmed());
}

void ConverterView::playFinishedTrack()
{
    if (const auto record = matchingRecord())
        m_player.play(*record);
}

void ConverterView::showFinishedFile()
{
    const DownloadStatus status = m_engine.currentStatus();
    if (status.kind() == DownloadStatus::Kind::completed)
        m_desktop.revealFile(status.filePath());
}

void ConverterView::newRip()
{
    m_engine.dismissStatus();
    m_linkField->clear();
}

void ConverterView::dismiss()
{
    m_engine.dismissStatus();
}

void ConverterView::updateTools()
{
    const bool ready = m_tools.isReady();
    m_pill->setStatus(ready ? tr("Ready (yt-dlp & ffmpeg)") : tr("Checking Tools"),
                      ready ? green(palette()) : orange(palette()));

    m_missingToolsCard->setVisible(!ready && !m_tools.isChecking());
    const bool installing = m_tools.isInstalling();
    if (installing) {
        m_missingToolsDetail->setText(m_tools.installProgress());
        setTextColor(m_missingToolsDetail, orange(palette()));
    } else {
        m_missingToolsDetail->setText(
            tr("Veldtone can automatically download and set up yt-dlp & ffmpeg for you."));
        setTextColor(m_missingToolsDetail, secondaryText(palette()));
    }
    m_installSpinner->setVisible(installing);
    m_installButton->setVisible(!installing);

    const bool updating = m_updater.isUpdating();
    m_updateLine->setVisible(ready && (updating || m_updater.isYtDlpOutOfDate()));
    m_updateSpinner->setVisible(updating);
    m_updateButton->setVisible(!updating);
    m_updateText->setText(
        updating ? m_updater.message()
                 : tr("yt-dlp %1 is out of date").arg(m_tools.ytDlpVersion().value_or(QString())));
}

void ConverterView::updateStatus()
{
    const DownloadStatus status = m_engine.currentStatus();
    using Kind = DownloadStatus::Kind;
    const Kind kind = status.kind();

    m_progressCard->setVisible(status.isBusy());
    // The facts shown belong to the run that just ended; the next run names its own.
    if (!status.isBusy())
        m_ripFacts->hide();
    m_downloadingForm->setVisible(kind == Kind::downloading);
    m_convertingForm->setVisible(kind == Kind::converting);
    if (kind == Kind::downloading) {
        m_percentLabel->setText(percentText(status.progress()));
        m_progressBar->setValue(qBound(0, qRound(status.progress() * 1000), 1000));
        m_speedLabel->setText(status.speed());
        // An unknown ETA is left out rather than shown as "--".
        m_etaGroup->setVisible(status.eta() != DisplayTexts::kUnknown);
        m_etaLabel->setText(tr("ETA: %1").arg(status.eta()));
        m_sizeLabel->setText(status.totalSize());
    } else if (kind == Kind::converting) {
        m_stageLabel->setText(status.stage());
    }

    m_successCard->setVisible(kind == Kind::completed);
    if (kind == Kind::completed) {
        // A page with several videos makes several files: the first is named, the rest counted.
        const int more = m_engine.lastRipMoreCount();
        const QString name = QFileInfo(status.filePath()).fileName();
        m_fileNameLabel->setText(
            more > 0 ? QString(name + u' ' + DownloadEngine::moreTracksText(more)) : name);
    }

    m_failureCard->setVisible(kind == Kind::failed);
    const ToolAdvice::Kind adviceKind =
        kind == Kind::failed ? ToolAdvice::forError(status.error()) : ToolAdvice::Kind::none;
    const QString advice = ToolAdvice::text(adviceKind);
    m_adviceButton->setText(adviceKind == ToolAdvice::Kind::updateTools ? tr("Update Tools")
                                                                        : tr("Open Settings"));
    if (kind == Kind::failed)
        m_errorLabel->setText(status.error());
    m_adviceLabel->setText(advice);
    m_adviceRow->setVisible(!advice.isEmpty());

    m_newRipButton->setVisible(kind == Kind::completed || kind == Kind::failed);
    m_queuePlaylistButton->setVisible(kind == Kind::completed &&
                                      !Links::playlistOf(m_engine.currentUrl()).isEmpty());
    updatePlayButton();
    updateStartButton();
}

void ConverterView::updateRipFacts()
{
    const std::optional<VideoMetadata> metadata = m_engine.currentMetadata();
    if (!metadata || !m_engine.currentStatus().isBusy())
        return;
    m_ripTitleLabel->setText(metadata->title);
    m_ripDetailLabel->setText(metadata->channel + DisplayTexts::kSeparator + metadata->duration);
    m_ripFacts->show();
}

void ConverterView::updatePlaylistOffer()
{
    const BatchRunner& batch = m_batch;
    const bool listing = batch.isPreviewListing();
    const bool listed = !listing && batch.previewError().isEmpty();
    m_playlistCard->setVisible(!batch.previewLink().isEmpty());
    m_playlistSpinner->setVisible(listing);
    m_playlistText->setText(listing  ? BatchRunner::expandingText(batch.previewCount())
                            : listed ? tr("This link is a playlist.")
                                     : batch.previewError());
    m_ripPlaylistButton->setVisible(listed);
    m_ripPlaylistButton->setText(tr("Rip all %1 tracks in Batch").arg(batch.previewCount()));
}

std::optional<HistoryTrack> ConverterView::matchingRecord() const
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

void ConverterView::updatePlayButton()
{
    const std::optional<HistoryTrack> record = matchingRecord();
    m_playButton->setVisible(record.has_value());
    if (!record)
        return;
    const AudioPlayerService& player = m_player;
    const auto current = player.currentTrack();
    const bool playingThis = player.isPlaying() && current && current->filePath == record->filePath;
    const QString symbolName =
        playingThis ? QStringLiteral("pause.fill") : QStringLiteral("play.fill");
    m_playButton->setIcon(Symbols::icon(symbolName, Qt::white, 13));
    // The symbol alone tells play from pause; say it in words for a screen reader.
    m_playButton->setAccessibleDescription(playingThis ? tr("Playing; press to pause")
                                                       : tr("Press to play"));
}

void ConverterView::updateStartButton()
{
    const bool busy = m_engine.currentStatus().isBusy();
    const QString title = busy
                              ? tr("Extracting Audio...")
                              : rippingTitle(m_engine.selectedFormat(), m_engine.selectedQuality());
    m_startButton->setText(title);
    m_startButton->setAccessibleName(title);
    m_startButton->setIconName(busy ? QStringLiteral("waveform")
                                    : QStringLiteral("arrow.down.to.line.compact"));
    m_startButton->setEnabled(!busy && !m_linkField->text().trimmed().isEmpty());
}
