// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/MissingToolsCard.h"

#include "services/DependencyManager.h"
#include "views/components/ActivitySpinner.h"
#include "views/components/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Theme;

MissingToolsCard::MissingToolsCard(DependencyManager& tools, QWidget* parent)
    : GlassCard(new QWidget, 10, 10, parent)
    , m_tools(tools)
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
    connect(m_installButton, &QPushButton::clicked, this,
            [this] { m_tools.installDependenciesAutomatically(); });
    layout->addWidget(m_installButton);

    for (auto signal :
         {&DependencyManager::isReadyChanged, &DependencyManager::isCheckingChanged,
          &DependencyManager::isInstallingChanged, &DependencyManager::installProgressChanged}) {
        connect(&m_tools, signal, this, &MissingToolsCard::update);
    }
    update();
}

void MissingToolsCard::update()
{
    setVisible(!m_tools.isReady() && !m_tools.isChecking());
    const bool installing = m_tools.isInstalling();
    if (installing) {
        m_detail->setText(m_tools.installProgress());
        setTextColor(m_detail, orange(palette()));
    } else {
        m_detail->setText(
            tr("Veldtone can automatically download and set up yt-dlp & ffmpeg for you."));
        setTextColor(m_detail, secondaryText(palette()));
    }
    m_spinner->setVisible(installing);
    m_installButton->setVisible(!installing);
}
