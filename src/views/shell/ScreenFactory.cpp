// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/shell/ScreenFactory.h"

#include "services/ArtworkCache.h"
#include "views/batch/BatchView.h"
#include "views/converter/ConverterView.h"
#include "views/following/FollowingView.h"
#include "views/library/HistoryView.h"
#include "views/settings/SettingsView.h"

#include <QLabel>

namespace {

// Only a value outside the four destinations (a bad cast) reaches this.
QWidget* placeholder(NavigationItem item, QWidget* parent)
{
    auto* label = new QLabel(Navigation::title(item), parent);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

ScreenFactory::ScreenFactory(const Services& services)
    : m_services(services)
{}

QWidget* ScreenFactory::create(NavigationItem item, QWidget* parent) const
{
    switch (item) {
    case NavigationItem::convert:
        return converter(parent);
    case NavigationItem::batch:
        return batch(parent);
    case NavigationItem::history:
        return library(parent);
    case NavigationItem::following:
        return following(parent);
    case NavigationItem::settings:
        return settings(parent);
    }
    return placeholder(item, parent);
}

QWidget* ScreenFactory::converter(QWidget* parent) const
{
    return new ConverterView(m_services.engine, m_services.dependencies, m_services.history,
                             m_services.player, m_services.batch, m_services.preview,
                             m_services.updater, nullptr, &m_services.following, parent);
}

QWidget* ScreenFactory::batch(QWidget* parent) const
{
    return new BatchView(m_services.batch, &m_services.following, parent);
}

QWidget* ScreenFactory::library(QWidget* parent) const
{
    return new HistoryView(m_services.history, m_services.player, m_services.artwork,
                           m_services.details, &m_services.queue, parent);
}

QWidget* ScreenFactory::following(QWidget* parent) const
{
    return new FollowingView(m_services.following, parent);
}

QWidget* ScreenFactory::settings(QWidget* parent) const
{
    return new SettingsView(m_services.engine, m_services.dependencies, m_services.updater,
                            m_services.player, &m_services.following, &m_services.queue, parent);
}
