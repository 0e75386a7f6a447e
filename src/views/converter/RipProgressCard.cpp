// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/RipProgressCard.h"

#include "models/DisplayTexts.h"
#include "models/DownloadStatus.h"
#include "services/DownloadEngine.h"
#include "views/components/ActivitySpinner.h"
#include "views/components/ElidedLabel.h"
#include "views/components/SlimProgressBar.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Theme;

namespace {

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

RipProgressCard::RipProgressCard(DownloadEngine& engine, QWidget* parent)
    : GlassCard(new QWidget, 12, 12, parent)
    , m_engine(engine)
{
    QWidget* progress = content();
    QVBoxLayout* layout = column(progress, 10);

    // What is being ripped, once the tool has said.
    m_facts = new QWidget(progress);
    QVBoxLayout* facts = column(m_facts, 1);
    m_titleLabel = new ElidedLabel(m_facts);
    m_titleLabel->setFont(Theme::font(13, QFont::Bold));
    facts->addWidget(m_titleLabel);
    m_detailLabel = new ElidedLabel(m_facts);
    m_detailLabel->setFont(Theme::font(11));
    setTextColor(m_detailLabel, secondaryText(palette()));
    facts->addWidget(m_detailLabel);
    m_facts->hide();
    layout->addWidget(m_facts);

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
    layout->addWidget(m_downloadingForm);

    m_convertingForm = new QWidget(progress);
    QHBoxLayout* converting = row(m_convertingForm, 8);
    converting->addWidget(new ActivitySpinner(14, m_convertingForm));
    m_stageLabel = label(QString(), Theme::font(12, QFont::Medium), m_convertingForm);
    setTextColor(m_stageLabel, orange(palette()));
    converting->addWidget(m_stageLabel, 1);
    layout->addWidget(m_convertingForm);

    auto* cancelRow = new QWidget(progress);
    QHBoxLayout* cancelLayout = row(cancelRow, 0);
    cancelLayout->addStretch(1);
    auto* cancelButton = new QPushButton(tr("Cancel Download"), cancelRow);
    cancelButton->setFont(Theme::font(11, QFont::Medium));
    cancelButton->setIcon(Symbols::icon(QStringLiteral("xmark.circle.fill"), red(palette())));
    cancelButton->setStyleSheet(plainButtonSheet(red(palette())));
    cancelButton->setCursor(Qt::PointingHandCursor);
    connect(cancelButton, &QPushButton::clicked, this, [this] { m_engine.cancel(); });
    cancelLayout->addWidget(cancelButton);
    layout->addWidget(cancelRow);

    connect(&m_engine, &DownloadEngine::currentStatusChanged, this, &RipProgressCard::updateStatus);
    connect(&m_engine, &DownloadEngine::currentMetadataChanged, this,
            &RipProgressCard::updateFacts);
    updateStatus();
    updateFacts();
}

QString RipProgressCard::percentText(double progress)
{
    return QString::asprintf("%.1f%%", progress * 100);
}

void RipProgressCard::updateStatus()
{
    const DownloadStatus status = m_engine.currentStatus();
    using Kind = DownloadStatus::Kind;
    const Kind kind = status.kind();
    setVisible(status.isBusy());
    // The facts shown belong to the run that just ended; the next run names its own.
    if (!status.isBusy())
        m_facts->hide();
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
}

void RipProgressCard::updateFacts()
{
    const std::optional<VideoMetadata> metadata = m_engine.currentMetadata();
    if (!metadata || !m_engine.currentStatus().isBusy())
        return;
    m_titleLabel->setText(metadata->title);
    m_detailLabel->setText(metadata->channel + DisplayTexts::kSeparator + metadata->duration);
    m_facts->show();
}
