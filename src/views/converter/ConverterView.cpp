// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/ConverterView.h"

#include "models/DisplayTexts.h"
#include "models/DownloadStatus.h"
#include "models/Links.h"
#include "platform/DesktopServices.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/PlaylistPreview.h"
#include "services/ToolUpdater.h"
#include "views/components/ActivitySpinner.h"
#include "views/components/GlassCard.h"
#include "views/components/GradientButton.h"
#include "views/components/OutputOptionsForm.h"
#include "views/components/RoundedPanel.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"
#include "views/converter/AppBadge.h"
#include "views/converter/MissingToolsCard.h"
#include "views/converter/PlaylistOfferCard.h"
#include "views/converter/RipFailureCard.h"
#include "views/converter/RipProgressCard.h"
#include "views/converter/RipSuccessCard.h"
#include "views/converter/StatusPill.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Theme;

namespace {

const QList<QColor> kStartGradient = {QColor(255, 59, 48), QColor(255, 149, 0)};

} // namespace

ConverterView::ConverterView(DownloadEngine& engine, DependencyManager& tools,
                             HistoryStore& history, AudioPlayerService& player, BatchRunner& batch,
                             PlaylistPreview& preview, ToolUpdater& updater,
                             DesktopServices* desktop, FollowService* following, QWidget* parent)
    : ThemedScreen(Scrolling::scrolls, parent)
    , m_engine(engine)
    , m_tools(tools)
    , m_history(history)
    , m_player(player)
    , m_batch(batch)
    , m_preview(preview)
    , m_following(following)
    , m_updater(updater)
    , m_desktop(desktop ? *desktop : DesktopServices::system())
{
    setAccessibleName(tr("Converter"));
    buildContent();

    // The status pill and the update line; the missing tools card follows the tools itself.
    for (auto signal :
         {&DependencyManager::isReadyChanged, &DependencyManager::ytDlpVersionChanged})
        connect(&m_tools, signal, this, &ConverterView::updateTools);
    for (auto signal : {&ToolUpdater::ytDlpOutOfDateChanged, &ToolUpdater::isUpdatingChanged,
                        &ToolUpdater::messageChanged})
        connect(&m_updater, signal, this, &ConverterView::updateTools);
    // The start button's title names the chosen format and quality.
    connect(&m_engine, &DownloadEngine::selectedFormatChanged, this,
            &ConverterView::updateStartButton);
    connect(&m_engine, &DownloadEngine::selectedQualityChanged, this,
            &ConverterView::updateStartButton);
    connect(&m_engine, &DownloadEngine::currentStatusChanged, this, &ConverterView::updateStatus);
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
    // Each card shows itself for the state it follows, from the moment it is made: hiding a
    // part of a layout that has never been laid out does not reach the measures it caches.
    layout->addWidget(new MissingToolsCard(m_tools, m_updater, content));
    layout->addWidget(buildLinkCard());
    layout->addWidget(new GlassCard(
        new OutputOptionsForm(OutputOptionsForm::Kind::converter, m_engine, m_desktop), 12, 12,
        content));
    layout->addWidget(new RipProgressCard(m_engine, content));
    auto* success = new RipSuccessCard(m_engine, m_history, m_player, m_batch, m_desktop, content);
    connect(success, &RipSuccessCard::navigationRequested, this,
            &ConverterView::navigationRequested);
    layout->addWidget(success);
    auto* failure = new RipFailureCard(m_engine, m_updater, content);
    connect(failure, &RipFailureCard::navigationRequested, this,
            &ConverterView::navigationRequested);
    layout->addWidget(failure);
    auto* offer = new PlaylistOfferCard(m_preview, m_following, content);
    connect(offer, &PlaylistOfferCard::navigationRequested, this,
            &ConverterView::navigationRequested);
    layout->addWidget(offer);
    layout->addWidget(buildActions());
    layout->addStretch(1);
    m_linkField->setText(link);
    // The playlist offered is the one in the field, also when the field comes back empty.
    if (m_preview.link() != link.trimmed())
        m_preview.clear();
    updateTools();
    updateStatus();
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
    titleColumn->addWidget(label(QStringLiteral("Veldtone"), Theme::font(20, QFont::Bold)));
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
        Symbols::icon(QStringLiteral("xmark.circle.fill"), secondaryText(palette())));
    m_clearButton->setToolTip(tr("Clear"));
    m_clearButton->setAccessibleName(tr("Clear"));
    m_clearButton->setStyleSheet(plainButtonSheet(secondaryText(palette())));
    m_clearButton->setCursor(Qt::ArrowCursor);
    connect(m_clearButton, &QToolButton::clicked, this, [this] { m_linkField->clear(); });
    inputRow->addWidget(m_clearButton);

    QPushButton* pasteButton = smallButton(tr("Paste"), QStringLiteral("doc.on.clipboard"), input);
    pasteButton->setFont(Theme::font(11, QFont::Medium));
    connect(pasteButton, &QPushButton::clicked, this, &ConverterView::pasteFromClipboard);
    inputRow->addWidget(pasteButton);
    layout->addWidget(input);

    connect(m_linkField, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_clearButton->setVisible(!text.isEmpty());
        // The playlist offered is the one in the field.
        if (m_preview.link() != text.trimmed())
            m_preview.clear();
        updateStartButton();
    });
    m_clearButton->setVisible(false);
    return new GlassCard(content, 12, 12, this);
}

QWidget* ConverterView::buildActions()
{
    auto* actions = new QWidget(this);
    QHBoxLayout* actionRow = row(actions, 12);
    actionRow->setContentsMargins(0, 4, 0, 0);
    actionRow->addStretch(1);
    m_startButton = new GradientButton(QString(), QStringLiteral("arrow.down.to.line.compact"),
                                       kStartGradient, actions);
    connect(m_startButton, &GradientButton::clicked, this, &ConverterView::startRip);
    actionRow->addWidget(m_startButton);
    m_newRipButton = new QPushButton(tr("New Rip"), actions);
    m_newRipButton->setFont(Theme::font(12));
    connect(m_newRipButton, &QPushButton::clicked, this, [this] {
        m_engine.dismissStatus();
        m_linkField->clear();
    });
    actionRow->addWidget(m_newRipButton);
    actionRow->addStretch(1);
    return actions;
}

void ConverterView::startRip()
{
    // This click is when the screen's choices are kept for the next launch.
    m_engine.savePreferences();
    // A playlist is offered to the batch rather than ripped here.
    const QString link = m_linkField->text().trimmed();
    if (Links::isList(link)) {
        m_preview.list(link);
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

void ConverterView::updateTools()
{
    const bool ready = m_tools.isReady();
    m_pill->setStatus(ready ? tr("Ready (yt-dlp & ffmpeg)") : tr("Checking Tools"),
                      ready ? green(palette()) : orange(palette()));

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
    const DownloadStatus::Kind kind = m_engine.currentStatus().kind();
    m_newRipButton->setVisible(kind == DownloadStatus::Kind::completed ||
                               kind == DownloadStatus::Kind::failed);
    updateStartButton();
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
