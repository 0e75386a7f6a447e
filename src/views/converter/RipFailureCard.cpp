// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/RipFailureCard.h"

#include "models/DownloadStatus.h"
#include "models/ToolAdvice.h"
#include "services/DownloadEngine.h"
#include "services/ToolUpdater.h"
#include "views/components/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Theme;

RipFailureCard::RipFailureCard(DownloadEngine& engine, ToolUpdater& updater, QWidget* parent)
    : GlassCard(new QWidget, 12, 12, parent)
    , m_engine(engine)
{
    QWidget* failure = content();
    QHBoxLayout* layout = row(failure, 10);
    layout->addWidget(symbol(QStringLiteral("xmark.octagon.fill"), red(palette()), 20), 0,
                      Qt::AlignVCenter);
    auto* texts = new QWidget(failure);
    QVBoxLayout* textColumn = column(texts, 2);
    textColumn->addWidget(label(tr("Extraction Failed"), Theme::font(12, QFont::Bold)));
    m_errorLabel = label(QString(), Theme::font(11), texts);
    m_errorLabel->setWordWrap(true);
    m_errorLabel->setMaximumHeight(m_errorLabel->fontMetrics().lineSpacing() * 3 + 2);
    m_errorLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    setTextColor(m_errorLabel, secondaryText(palette()));
    textColumn->addWidget(m_errorLabel);

    m_adviceRow = new QWidget(texts);
    QHBoxLayout* adviceLayout = row(m_adviceRow, 8);
    m_adviceLabel = label(QString(), Theme::font(11, QFont::Medium), m_adviceRow);
    m_adviceLabel->setWordWrap(true);
    setTextColor(m_adviceLabel, orange(palette()));
    adviceLayout->addWidget(m_adviceLabel, 1);
    m_adviceButton = smallButton(QString(), QString(), m_adviceRow);
    connect(m_adviceButton, &QPushButton::clicked, this, [this, &updater] {
        if (ToolAdvice::forError(m_engine.currentStatus().error()) == ToolAdvice::Kind::updateTools)
            updater.updateTools();
        else
            emit navigationRequested(NavigationItem::settings);
    });
    adviceLayout->addWidget(m_adviceButton);
    textColumn->addWidget(m_adviceRow);
    layout->addWidget(texts, 1);

    QPushButton* dismiss = smallButton(tr("Dismiss"), QString(), failure);
    connect(dismiss, &QPushButton::clicked, this, [this] { m_engine.dismissStatus(); });
    layout->addWidget(dismiss);

    connect(&m_engine, &DownloadEngine::currentStatusChanged, this, &RipFailureCard::updateStatus);
    updateStatus();
}

void RipFailureCard::updateStatus()
{
    const DownloadStatus status = m_engine.currentStatus();
    const bool failed = status.kind() == DownloadStatus::Kind::failed;
    setVisible(failed);
    const ToolAdvice::Kind adviceKind =
        failed ? ToolAdvice::forError(status.error()) : ToolAdvice::Kind::none;
    const QString advice = ToolAdvice::text(adviceKind);
    m_adviceButton->setText(adviceKind == ToolAdvice::Kind::updateTools ? tr("Update Tools")
                                                                        : tr("Open Settings"));
    if (failed)
        m_errorLabel->setText(status.error());
    m_adviceLabel->setText(advice);
    m_adviceRow->setVisible(!advice.isEmpty());
}
