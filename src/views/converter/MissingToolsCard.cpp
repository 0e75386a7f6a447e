// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/MissingToolsCard.h"

#include "services/DependencyManager.h"
#include "services/ToolUpdater.h"
#include "views/components/ActivitySpinner.h"
#include "views/components/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Theme;

MissingToolsCard::MissingToolsCard(DependencyManager& tools, ToolUpdater& updater, QWidget* parent)
    : GlassCard(new QWidget, 10, 10, parent)
    , m_tools(tools)
    , m_updater(updater)
{
    QHBoxLayout* layout = row(content(), 10);
    layout->addWidget(
        symbol(QStringLiteral("exclamationmark.triangle.fill"), orange(palette()), 18));

    auto* texts = new QWidget(content());
    QVBoxLayout* textColumn = column(texts, 2);
    textColumn->addWidget(
        label(tr("Tools Missing (yt-dlp or ffmpeg)"), Theme::font(12, QFont::DemiBold)));
    m_detail = label(QString(), Theme::font(11), texts);
    m_detail->setWordWrap(true);
    textColumn->addWidget(m_detail);
    layout->addWidget(texts, 1);

    m_spinner = new ActivitySpinner(16, content());
    layout->addWidget(m_spinner);
    m_installButton = new QPushButton(tr("Install Automatically"), content());
    m_installButton->setFont(Theme::font(11));
    makeProminent(m_installButton, orange(palette()));
    connect(m_installButton, &QPushButton::clicked, &m_updater, &ToolUpdater::installMissing);
    layout->addWidget(m_installButton);

    for (auto signal : {&DependencyManager::isReadyChanged, &DependencyManager::isCheckingChanged})
        connect(&m_tools, signal, this, &MissingToolsCard::update);
    for (auto signal : {&ToolUpdater::isUpdatingChanged, &ToolUpdater::messageChanged})
        connect(&m_updater, signal, this, &MissingToolsCard::update);
    update();
}

void MissingToolsCard::update()
{
    setVisible(!m_tools.isReady() && !m_tools.isChecking());
    const bool installing = m_updater.isUpdating();
    // While installing, the step; after a failed install, why it failed.
    if (installing || !m_updater.message().isEmpty()) {
        m_detail->setText(m_updater.message());
        setTextColor(m_detail, orange(palette()));
    } else {
        m_detail->setText(
            tr("Veldtone can automatically download and set up yt-dlp & ffmpeg for you."));
        setTextColor(m_detail, secondaryText(palette()));
    }
    m_spinner->setVisible(installing);
    m_installButton->setVisible(!installing);
}
