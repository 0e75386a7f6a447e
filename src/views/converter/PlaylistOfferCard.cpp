// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/converter/PlaylistOfferCard.h"

#include "services/BatchRunner.h"
#include "services/FollowService.h"
#include "services/PlaylistPreview.h"
#include "views/components/ActivitySpinner.h"
#include "views/components/Theme.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Theme;

PlaylistOfferCard::PlaylistOfferCard(PlaylistPreview& preview, FollowService* following,
                                     QWidget* parent)
    : GlassCard(new QWidget, 12, 12, parent)
    , m_preview(preview)
    , m_following(following)
{
    QWidget* playlist = content();
    QHBoxLayout* layout = row(playlist, 10);
    layout->addWidget(symbol(QStringLiteral("music.note.list"), accent(palette()), 20));
    m_spinner = new ActivitySpinner(14, playlist);
    layout->addWidget(m_spinner);
    m_text = label(QString(), Theme::font(12, QFont::Medium), playlist);
    m_text->setWordWrap(true);
    layout->addWidget(m_text, 1);
    m_albumBox = new QCheckBox(tr("Rip as album"), playlist);
    m_albumBox->setFont(Theme::font(11));
    layout->addWidget(m_albumBox);
    m_ripButton = smallButton(QString(), QStringLiteral("arrow.down.circle.fill"), playlist);
    makeProminent(m_ripButton, orange(palette()));
    connect(m_ripButton, &QPushButton::clicked, this, [this] {
        m_preview.ripAll(m_albumBox->isChecked());
        emit navigationRequested(NavigationItem::batch);
    });
    layout->addWidget(m_ripButton);
    // Its new uploads, from now on, rather than (or besides) what it holds now.
    m_followButton =
        smallButton(tr("Follow"), QStringLiteral("dot.radiowaves.left.and.right"), playlist);
    connect(m_followButton, &QPushButton::clicked, this, [this] {
        if (m_following)
            m_following->follow(m_preview.link(), 0, m_albumBox->isChecked());
        emit navigationRequested(NavigationItem::following);
    });
    layout->addWidget(m_followButton);
    m_cancelButton = smallButton(tr("Cancel"), QString(), playlist);
    m_cancelButton->setAccessibleName(tr("Cancel Listing"));
    connect(m_cancelButton, &QPushButton::clicked, &m_preview, &PlaylistPreview::clear);
    layout->addWidget(m_cancelButton);

    connect(&m_preview, &PlaylistPreview::changed, this, &PlaylistOfferCard::update);
    update();
}

void PlaylistOfferCard::update()
{
    const bool listing = m_preview.isListing();
    const bool listed = !listing && m_preview.error().isEmpty();
    setVisible(!m_preview.link().isEmpty());
    m_spinner->setVisible(listing);
    m_text->setText(listing  ? BatchRunner::expandingText(m_preview.count())
                    : listed ? tr("This link is a playlist.")
                             : m_preview.error());
    m_ripButton->setVisible(listed);
    m_cancelButton->setVisible(listing);
    m_followButton->setVisible(listed && m_following);
    m_albumBox->setVisible(listed);
    m_ripButton->setText(tr("Rip all %n tracks in Batch", nullptr, m_preview.count()));
}
